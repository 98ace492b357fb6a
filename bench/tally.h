/// @file
/// A check number made of a document.
#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

/// Takes in what a document holds, in whatever order its attributes are, and makes one number of
/// it. White space counts for nothing, nor does an element `r`, which only holds others: what is
/// kept of them differs between the libraries.
class tally_t {
public:
    void element(std::string_view name) {
        if (name != "r") {
            add(1, name, {});
        }
    }
    void attribute(std::string_view name, std::string_view value) { add(2, name, value); }
    void text(std::string_view text);

    /// At most 2 to the 48th, so that a double holds it.
    double number() const { return static_cast<double>(sum & 0xffffffffffff); }

private:
    void add(std::uint64_t kind, std::string_view name, std::string_view value);

    std::uint64_t sum = 0;
};

/// The number of a document that was written.
/// @throws std::runtime_error when it is not well formed
double tally_of(std::string_view xml);

} // namespace bench

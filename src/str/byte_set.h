/// @file
/// A set of bytes with a look-up that does not depend on the size of the set.
#pragma once

#include <bitset>
#include <string>

namespace ko::str {

/// The bytes that occur in a text.
class byte_set_t {
public:
    explicit byte_set_t(const std::string& bytes) {
        for (const char c : bytes) {
            members.set(static_cast<unsigned char>(c));
        }
    }

    bool has(char c) const { return members[static_cast<unsigned char>(c)]; }

    /// The first position from `pos` on of a byte in the set; the length of `text` without one.
    std::size_t find_in(const std::string& text, std::size_t pos) const {
        while (pos < text.size() && !has(text[pos])) {
            ++pos;
        }
        return pos;
    }

    /// The first position from `pos` on of a byte outside the set; the length of `text` without
    /// one.
    std::size_t find_not_in(const std::string& text, std::size_t pos) const {
        while (pos < text.size() && has(text[pos])) {
            ++pos;
        }
        return pos;
    }

private:
    std::bitset<256> members;
};

} // namespace ko::str

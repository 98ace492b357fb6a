/// @file
/// The C++ samples of the documents, as `extract.awk` registers them.
#pragma once

#include <vector>

namespace docs {

/// A C++ sample.
struct program_t {
    const char* page;
    unsigned line; ///< of the block that it starts in
    void (*run)();
};

/// All of them. Each registers itself before main.
std::vector<program_t>& programs();

/// Registers one.
struct registered_t {
    registered_t(const char* page, unsigned line, void (*run)()) {
        programs().push_back({page, line, run});
    }
};

} // namespace docs

/// @file
/// The lines of diagnosis that the library writes to standard output.
#pragma once

#include <iostream>

namespace ko {

/// Writes the pieces as one line. What it tells of is on its way to the caller and must arrive
/// unchanged, so a line that cannot be written is left out.
template <class... P> void diagnose(const P&... pieces) noexcept {
    try {
        (std::cout << ... << pieces) << std::endl;
    } catch (...) {
        // The host may have made its standard output throw.
    }
}

} // namespace ko

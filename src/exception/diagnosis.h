/// @file
/// The lines of diagnosis that the library writes to standard output.
#pragma once

#include <iostream>

#include "exception/uncancelled.h"

namespace ko {

/// Writes the pieces as one line. What it tells of is on its way to the caller and must arrive
/// unchanged, so a line that cannot be written is left out. A cancellation of the thread waits.
template <class... P> void diagnose(const P&... pieces) noexcept {
    const uncancelled_t uncancelled;
    try {
        (std::cout << ... << pieces) << std::endl;
    } catch (...) {
        // The host may have made its standard output throw.
    }
}

} // namespace ko

/// @file
/// Marks in the binary that tell which modules it was made of.
#pragma once

namespace ko::alg {

/// A text that the binary carries; it does nothing else.
struct spewer_t {
    const char* text;
};

extern const spewer_t header_spew; ///< marks the beginning of the module
extern const spewer_t footer_spew; ///< marks its end

} // namespace ko::alg

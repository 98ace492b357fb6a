/// @file
/// Texts that hosts pass as pointers.
#pragma once

#include <string>

#include "exception/exception.h"

namespace ko::alg {

/// The text behind a pointer of a host's.
/// @throws ko::exception_t it is null
inline std::string checked(const char* text) {
    if (text == nullptr) {
        throw exception_t(std::string("algebra_t -- null text"));
    }
    return text;
}

} // namespace ko::alg

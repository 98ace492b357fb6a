/// @file
/// The version of the library, at compile time and at run time.
#pragma once

#include "export.h"

/// @name The version this header belongs to
/// The build reads it from here; the shared object's name carries the major number.
/// @{
#define KO_VERSION_MAJOR 1        ///< a larger one: programs have to be compiled anew
#define KO_VERSION_MINOR 0        ///< a larger one: something was added
#define KO_VERSION_PATCH 0        ///< a larger one: something was mended
#define KO_VERSION_STRING "1.0.0" ///< all three, with points between them
/// @}

namespace ko {

/// The version of the library that runs, as "major.minor.patch".
/// @return a constant string that lives as long as the library is loaded
KO_API const char* version();

} // namespace ko

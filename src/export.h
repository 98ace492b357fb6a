/// @file
/// Symbol visibility. Everything in libkobase.so is hidden but what carries KO_API.
#pragma once

#define KO_API __attribute__((visibility("default")))

namespace ko {

/// Befriended by the public classes so that a test can pin down where their members lie.
struct layout_t;

} // namespace ko

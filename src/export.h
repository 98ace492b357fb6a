/// @file
/// Symbol visibility. Everything in libkobase.so is hidden but what carries KO_API.
#pragma once

/// What a public class or function is declared with.
#define KO_API __attribute__((visibility("default")))

/// Hides the implementation class of a public one, which would else be visible with it.
#define KO_LOCAL __attribute__((visibility("hidden")))

namespace ko {

/// Befriended by the public classes so that a test can pin down where their members lie.
struct layout_t;

} // namespace ko

/// @file
/// What a document may ask a preprocessor to do.
///
/// The levels of nesting lie on the heap, a few hundred bytes each, so that the limits bound
/// memory and time of a document that brings itself in again and again; they spare the call stack
/// nothing.
#pragma once

#include <cstddef>

namespace ko::xpp {

/// Levels of "insert" inside what an "insert" brought in.
constexpr unsigned insert_depth_max = 10000;
/// Levels of "include" inside an included file. Without a cache every level keeps a document.
constexpr unsigned include_depth_max = 200;
/// Levels of "plugin" inside what a plug-in generated.
constexpr unsigned plugin_depth_max = 200;

/// The limits of a preprocessor: a plain record. 0 stands for no limit.
struct limits_t {
    std::size_t elements = 0;             ///< elements made in one `process`
    std::size_t passes = 0;               ///< passes of all loops in one `process`
    unsigned include = include_depth_max; ///< levels of "include" in each other
    unsigned insert = insert_depth_max;   ///< levels of "insert" in each other
    unsigned plugin = plugin_depth_max;   ///< levels of "plugin" in each other
};

} // namespace ko::xpp

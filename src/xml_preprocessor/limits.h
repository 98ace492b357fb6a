/// @file
/// How deep a document may ask directives to nest.
///
/// The levels lie on the heap, a few hundred bytes each, so that the limits bound memory and time
/// of a document that brings itself in again and again; they spare the call stack nothing.
#pragma once

namespace ko::xpp {

/// Levels of "insert" inside what an "insert" brought in.
constexpr unsigned insert_depth_max = 10000;
/// Levels of "include" inside an included file. Without a cache every level keeps a document.
constexpr unsigned include_depth_max = 200;
/// Levels of "plugin" inside what a plug-in generated.
constexpr unsigned plugin_depth_max = 200;

} // namespace ko::xpp

/// @file
/// The texts in a C++ source.
#pragma once

#include <string>
#include <vector>

namespace docs {

/// The string literals of a file as the compiler sees them: neighbours joined, escapes of line
/// ends, quotes and backslashes undone. Those of #include lines and comments are left out, and so
/// are the texts that a tool shows for --help, which stand in a statement that describes options.
std::vector<std::string> literals(const std::string& path);

} // namespace docs

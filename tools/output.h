/// @file
/// Where the tools write to.
#pragma once

#include <string>

namespace tool {

/// Writes a file as a whole: to a new file beside it, which then takes its place. A failure
/// leaves what was there. What is no regular file, such as a device, is written as it is.
/// @throws ko::exception_t "error opening file %s" or "error writing file %s"
void file_write(const std::string& file, const std::string& text);

/// Writes to a file, or to standard output where it is "-" or empty.
/// @throws ko::exception_t as `file_write`; "error writing standard output"
void text_write(const std::string& file, const std::string& text);

} // namespace tool

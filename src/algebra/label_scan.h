/// @file
/// Scanners for the heads of function definitions.
#pragma once

#include <string>
#include <string_view>

namespace ko::alg {

/// Takes a name from the start of `text`, white space before it included.
/// @return false, with `text` unchanged and `label` empty, when no name stands there
bool valid_label_get(std::string_view& text, std::string& label);

/// Takes the character `c` from the start of `text`, white space before it included.
/// @return false, with `text` unchanged, when something else or nothing stands there
bool char_get(std::string_view& text, char c);

} // namespace ko::alg

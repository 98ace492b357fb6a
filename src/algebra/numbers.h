/// @file
/// Conversion of number literals.
#pragma once

#include <string_view>

namespace ko::alg {

/// Reads the prefix of `text` that is an integer, as "%i" does on the target: decimal, octal
/// after "0", hexadecimal after "0x" or "0X"; too large a number becomes 2147483647.
/// @return false when there is no digit
bool int_convert(std::string_view text, int& value);

/// Reads the prefix of `text` that is a float in decimal notation, rounded once; too large a
/// number becomes infinity, too small a one 0.
/// @return false when there is no number
bool float_convert(std::string_view text, float& value);

} // namespace ko::alg

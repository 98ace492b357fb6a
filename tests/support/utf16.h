/// @file
/// Text in UTF-16.
#pragma once

#include <string>

namespace test {

/// ISO-8859-1 text as UTF-16, with a byte order mark.
inline std::string utf16(const std::string& latin1, bool big_endian) {
    std::string out = big_endian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : latin1) {
        out += big_endian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return out;
}

} // namespace test

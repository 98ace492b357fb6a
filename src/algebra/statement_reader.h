/// @file
/// The statement reader: takes the first statement out of a text.
#pragma once

#include <string>

namespace ko::alg {

/// One statement, without comments and line breaks.
struct statement_t {
    std::string text;
    bool substitute = true; ///< whether macros are replaced in it
};

/// Reads the first statement of `text`, up to a ";", the end or a byte 255.
/// @throws ko::exception_t "unexpected EOF encountered" inside a string or a comment
statement_t statement_read(const std::string& text);

} // namespace ko::alg

/// @file
/// The statement reader: takes the first statement out of a text.
#pragma once

#include <string>

namespace ko::alg {

/// Reads the first statement of `text`, up to a ";", the end or a byte 255.
/// @param statement receives it without comments and line breaks
/// @return whether macros are replaced in it
/// @throws ko::exception_t "unexpected EOF encountered" inside a string or a comment
bool statement_read(const std::string& text, std::string& statement);

} // namespace ko::alg

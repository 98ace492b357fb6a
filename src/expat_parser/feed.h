/// @file
/// Handing a text of any length to expat, whose lengths are an `int`.
#pragma once

#include <cstddef>
#include <string_view>

struct XML_ParserStruct;

namespace ko::xml {

/// The longest text that expat is given in one call. It is less than an `int` can hold because
/// expat adds what it kept of the call before.
constexpr std::size_t feed_limit = std::size_t{1} << 30;

/// Gives a whole document to expat, in pieces of at most `limit` bytes; the last one is final.
/// @return false when expat reports an error, after which it is given nothing more
bool feed(XML_ParserStruct* parser, std::string_view text, std::size_t limit);

} // namespace ko::xml

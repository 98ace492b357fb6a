#include "expat_parser/feed.h"

#include <expat.h>

namespace ko::xml {

namespace {

bool feed_piece(XML_Parser parser, std::string_view piece, bool is_final) {
    const int size = static_cast<int>(piece.size());
    return XML_Parse(parser, piece.data(), size, is_final ? 1 : 0) != XML_STATUS_ERROR;
}

} // namespace

bool feed(XML_ParserStruct* parser, std::string_view text, std::size_t limit) {
    while (text.size() > limit) {
        if (!feed_piece(parser, text.substr(0, limit), false)) {
            return false;
        }
        text.remove_prefix(limit);
    }
    return feed_piece(parser, text, true);
}

} // namespace ko::xml

#include "lxml/lxml.h"

#include "str/ascii.h"

namespace ko::lxml {

namespace {

void encode_char(char c, std::string& out) {
    switch (c) {
    case '"':
        out += "&quot;";
        return;
    case '&':
        out += "&amp;";
        return;
    case '<':
        out += "&lt;";
        return;
    case '>':
        out += "&gt;";
        return;
    default:
        break;
    }
    if (ascii::is_print(c)) {
        out += c;
    } else {
        out += "&#" + std::to_string(static_cast<unsigned char>(c)) + ";";
    }
}

} // namespace

std::string xml_encode(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char* p = text.c_str(); *p != '\0'; ++p) {
        encode_char(*p, out);
    }
    return out;
}

} // namespace ko::lxml

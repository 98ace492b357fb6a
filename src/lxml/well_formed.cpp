#include "lxml/well_formed.h"

#include <algorithm>

#include "expat_parser/expat_parser.h"
#include "expat_parser/limits.h"
#include "str/ascii.h"

namespace ko::lxml {

namespace {

using byte_t = unsigned char;

bool is_within(byte_t c, byte_t first, byte_t last) {
    return c >= first && c <= last;
}

bool is_control(byte_t c) {
    return c < ' ' && c != '\t' && c != '\n' && c != '\r';
}

/// What a first byte tells of the character of several bytes that it begins.
struct lead_t {
    std::size_t length; ///< 0 when no character begins with the byte
    byte_t second_first;
    byte_t second_last;
};

lead_t lead_of(byte_t c) {
    switch (c) {
    case 0xE0:
        return {3, 0xA0, 0xBF};
    case 0xED:
        return {3, 0x80, 0x9F};
    case 0xF0:
        return {4, 0x90, 0xBF};
    case 0xF4:
        return {4, 0x80, 0x8F};
    default:
        break;
    }
    const std::size_t length = is_within(c, 0xC2, 0xDF)   ? 2
                               : is_within(c, 0xE1, 0xEF) ? 3
                               : is_within(c, 0xF1, 0xF3) ? 4
                                                          : 0;
    return {length, 0x80, 0xBF};
}

/// The length of the character of several bytes at `p`; 0 when it is none of XML.
std::size_t wide_length(const byte_t* p, std::size_t left) {
    const lead_t lead = lead_of(*p);
    if (lead.length == 0 || left < lead.length ||
        !is_within(p[1], lead.second_first, lead.second_last)) {
        return 0;
    }
    const auto continues = [](byte_t c) {
        return is_within(c, 0x80, 0xBF);
    };
    const bool is_none = *p == 0xEF && p[1] == 0xBF && p[2] >= 0xBE;
    return !is_none && std::all_of(p + 2, p + lead.length, continues) ? lead.length : 0;
}

bool is_ascii_name_part(char c) {
    return ascii::is_alpha(c) || ascii::is_digit(c) || c == '_' || c == '-' || c == '.';
}

bool is_ascii(char c) {
    return static_cast<byte_t>(c) < 0x80;
}

/// Reads one tag and tells whether its name is the expected one.
class name_reader_t : public xml::expat_parser_t {
public:
    explicit name_reader_t(const std::string& name) : expat_parser_t(false), expected(name) {}

    void start_element(const std::string& name, const attribute_map_t&) override {
        is_read = name == expected;
    }

    bool run() {
        try {
            parse_buffer("<" + expected + "/>");
        } catch (const errorcode_t& e) {
            if (e.code_get() != errorcode::xml_parse_error) {
                throw;
            }
            return false;
        }
        return is_read;
    }

private:
    const std::string& expected;
    bool is_read = false;
};

} // namespace

bool is_xml_text(std::string_view text) {
    const auto* p = reinterpret_cast<const byte_t*>(text.data());
    const byte_t* const end = p + text.size();
    while (p != end) {
        const std::size_t length =
            *p < 0x80 ? std::size_t(!is_control(*p)) : wide_length(p, std::size_t(end - p));
        if (length == 0) {
            return false;
        }
        p += length;
    }
    return true;
}

bool is_xml_name(const std::string& text) {
    const auto is_possible = [](char c) {
        return is_ascii_name_part(c) || !is_ascii(c);
    };
    if (text.empty() || !std::all_of(text.begin(), text.end(), is_possible)) {
        return false;
    }
    if (std::all_of(text.begin(), text.end(), is_ascii)) {
        return ascii::is_alpha(text[0]) || text[0] == '_';
    }
    return is_xml_text(text) && name_reader_t(text).run();
}

bool is_namespace_name(const std::string& text) {
    return !text.empty() && text.size() <= xml::namespace_name_max &&
           text != "http://www.w3.org/2000/xmlns/" && is_xml_text(text) &&
           text.find('|') == std::string::npos && text[0] != '"';
}

} // namespace ko::lxml

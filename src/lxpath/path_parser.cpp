#include "lxpath/path_parser.h"

#include <algorithm>

#include "exception/exception.h"

namespace ko::lxml {

// clang-format off
const unsigned char acceptable[256] = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, // .
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, // 0-9
    0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, // A-O
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 1, // P-Z, _
    0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, // a-o
    1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, // p-z
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
};
// clang-format on

namespace {

void require_text(const char* p) {
    if (p == nullptr) {
        throw exception_t(std::string("path is null"));
    }
}

/// Reads a double-quoted text.
void copy_quoted(const char*& p, std::string& out) {
    assert_char(p, '"');
    const char* const begin = p;
    while (*p != '"' && *p != '\0') {
        ++p;
    }
    out.assign(begin, p);
    assert_char(p, '"');
}

/// One part of a name, in quotes where it needs them.
std::string part_text(const std::string& part, bool quoted) {
    const auto is_acceptable = [](char c) {
        return acceptable[static_cast<unsigned char>(c)] != 0;
    };
    quoted = quoted || !std::all_of(part.begin(), part.end(), is_acceptable);
    return quoted ? "\"" + part + "\"" : part;
}

std::string name_text(const xname_t& name) {
    const std::string kind = name.kind ? "@" : "";
    if (name.ns.empty()) {
        return kind + part_text(name.name, name.quoted);
    }
    return kind + part_text(name.ns, name.quoted) + ":" + part_text(name.name, false);
}

} // namespace

// The zero at the end is never stepped over, so that nothing behind it can be read.
bool check_char(const char*& p, char c) {
    require_text(p);
    if (*p != c) {
        return false;
    }
    p += c != '\0';
    return true;
}

void assert_char(const char*& p, char c) {
    if (!check_char(p, c)) {
        throw exception_t("parse error : expecting %c, got %c", c, *p);
    }
}

bool peek_char(const char*& p, char c) {
    require_text(p);
    return *p == c;
}

void copy_str(const char*& p, std::string& out) {
    if (peek_char(p, '"')) {
        copy_quoted(p, out);
        return;
    }
    const char* const begin = p;
    while (acceptable[static_cast<unsigned char>(*p)] != 0) {
        ++p;
    }
    out.assign(begin, p);
}

path_parser_t::path_parser_t(const char* text) : p(text) {
    require_text(text);
}

// The recursion is limited by filter_depth_max. NOLINTBEGIN(misc-no-recursion)
void path_parser_t::path(xpath_t& out) {
    out.steps.clear();
    while (check_char(p, '/')) {
    }
    do {
        out.steps.push_back(std::make_unique<xnode_t>());
        step(*out.steps.back());
    } while (check_char(p, '/'));
}

void path_parser_t::step(xnode_t& out) {
    name_test(out.name);
    filter(out.filter);
}

void path_parser_t::name_test(xname_t& out) {
    out.kind = check_char(p, '@');
    out.quoted = peek_char(p, '"');
    out.ns.clear();
    copy_str(p, out.name);
    if (check_char(p, ':')) {
        out.ns.swap(out.name);
        copy_str(p, out.name);
    }
}

void path_parser_t::filter(xfilter_t& out) {
    out.predicate.reset();
    out.value.clear();
    if (!check_char(p, '[')) {
        return;
    }
    if (depth == filter_depth_max) {
        throw exception_t("path filters nested more than %u levels deep", filter_depth_max);
    }
    ++depth;
    filter_body(out);
    --depth;
}

void path_parser_t::filter_body(xfilter_t& out) {
    out.predicate = std::make_unique<xpath_t>();
    path(*out.predicate);
    if (check_char(p, '=')) {
        copy_quoted(p, out.value);
    }
    assert_char(p, ']');
}

std::string path_text(const xpath_t& path) {
    std::string text;
    for (const auto& step : path.steps) {
        text += (text.empty() ? "" : "/") + name_text(step->name);
        const xfilter_t& filter = step->filter;
        if (filter.predicate != nullptr) {
            const std::string value = filter.value.empty() ? "" : "=\"" + filter.value + "\"";
            text += "[" + path_text(*filter.predicate) + value + "]";
        }
    }
    return text;
}
// NOLINTEND(misc-no-recursion)

const char* xname_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.name_test(*this);
    return parser.position_get();
}

const char* xfilter_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.filter(*this);
    return parser.position_get();
}

const char* xnode_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.step(*this);
    return parser.position_get();
}

const char* xpath_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.path(*this);
    return parser.position_get();
}

void xpath_t::parse(const char* s) {
    const char* end = _parse(s);
    assert_char(end, '\0');
}

} // namespace ko::lxml

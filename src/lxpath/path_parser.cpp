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
std::string_view quoted_text(const char*& p) {
    assert_char(p, '"');
    const char* const begin = p;
    while (*p != '"' && *p != '\0') {
        ++p;
    }
    const std::string_view text(begin, static_cast<std::size_t>(p - begin));
    assert_char(p, '"');
    return text;
}

std::string_view part_of_name(const char*& p) {
    if (*p == '"') {
        return quoted_text(p);
    }
    const char* const begin = p;
    while (acceptable[static_cast<unsigned char>(*p)] != 0) {
        ++p;
    }
    return {begin, static_cast<std::size_t>(p - begin)};
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
    require_text(p);
    out = part_of_name(p);
}

path_parser_t::path_parser_t(const char* text, flat_path_t& out) : p(text), steps(out) {
    require_text(text);
}

std::size_t path_parser_t::add() {
    steps.emplace_back();
    return steps.size() - 1;
}

/// Consumes `c`, which is not zero, when it is next.
bool path_parser_t::take(char c) {
    if (*p != c) {
        return false;
    }
    ++p;
    return true;
}

// The recursion is limited by filter_depth_max. NOLINTBEGIN(misc-no-recursion)
std::size_t path_parser_t::path() {
    while (take('/')) {
    }
    const std::size_t first = step();
    for (std::size_t last = first; take('/');) {
        const std::size_t next = step();
        steps[last].next = next;
        last = next;
    }
    return first;
}

std::size_t path_parser_t::step() {
    const std::size_t number = name_test();
    read_filter(number);
    return number;
}

std::size_t path_parser_t::filter() {
    const std::size_t number = add();
    read_filter(number);
    return number;
}

std::size_t path_parser_t::name_test() {
    const std::size_t number = add();
    flat_step_t& out = steps.back();
    out.kind = take('@');
    out.quoted = *p == '"';
    out.name = part_of_name(p);
    if (take(':')) {
        out.ns = out.name;
        out.name = part_of_name(p);
    }
    return number;
}

void path_parser_t::read_filter(std::size_t number) {
    if (!take('[')) {
        return;
    }
    if (depth == filter_depth_max) {
        throw exception_t("path filters nested more than %u levels deep", filter_depth_max);
    }
    ++depth;
    const std::size_t predicate = path();
    flat_step_t& out = steps[number];
    out.is_filtered = true;
    out.predicate = predicate;
    if (take('=')) {
        out.value = quoted_text(p);
    }
    assert_char(p, ']');
    --depth;
}

namespace {

void build(xname_t& out, const flat_step_t& step) {
    out.kind = step.kind;
    out.quoted = step.quoted;
    out.name = step.name;
    out.ns = step.ns;
}

void build(xpath_t& out, const flat_path_t& steps, std::size_t first);

void build(xfilter_t& out, const flat_path_t& steps, std::size_t number) {
    const flat_step_t& step = steps[number];
    out.predicate.reset();
    out.value = step.value;
    if (step.is_filtered) {
        out.predicate = std::make_unique<xpath_t>();
        build(*out.predicate, steps, step.predicate);
    }
}

void build(xnode_t& out, const flat_path_t& steps, std::size_t number) {
    build(out.name, steps[number]);
    build(out.filter, steps, number);
}

void build(xpath_t& out, const flat_path_t& steps, std::size_t first) {
    out.steps.clear();
    for (std::size_t i = first; i != flat_step_t::none; i = steps[i].next) {
        out.steps.push_back(std::make_unique<xnode_t>());
        build(*out.steps.back(), steps, i);
    }
}

/// Reads a part of a path by a function of the reader. @return the position after it
template <class P>
const char* read(P& out, const char* text, std::size_t (path_parser_t::*rule)()) {
    flat_memory_t memory;
    flat_path_t steps(memory.get());
    path_parser_t parser(text, steps);
    const std::size_t first = (parser.*rule)();
    build(out, steps, first);
    return parser.position_get();
}

} // namespace

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
    flat_memory_t memory;
    flat_path_t steps(memory.get());
    path_parser_t parser(s, steps);
    build(*this, steps[parser.name_test()]);
    return parser.position_get();
}

const char* xfilter_t::_parse(const char* s) {
    return read(*this, s, &path_parser_t::filter);
}

const char* xnode_t::_parse(const char* s) {
    return read(*this, s, &path_parser_t::step);
}

const char* xpath_t::_parse(const char* s) {
    return read(*this, s, &path_parser_t::path);
}

void xpath_t::parse(const char* s) {
    const char* end = _parse(s);
    assert_char(end, '\0');
}

} // namespace ko::lxml

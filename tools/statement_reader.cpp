#include "statement_reader.h"

namespace tool {

namespace {

bool is_white(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::vector<statement_t> statement_reader_t::add(const std::string& part) {
    std::vector<statement_t> out;
    for (const char c : part) {
        step(c, out);
        line += c == '\n' ? 1 : 0;
    }
    return out;
}

std::vector<statement_t> statement_reader_t::finish() {
    if (state == state_t::slash) {
        keep('/');
    } else if (is_in_comment()) {
        line = comment_line;
        keep('/');
        keep('*');
    }
    std::vector<statement_t> out;
    end(out);
    state = state_t::plain;
    return out;
}

void statement_reader_t::step(char c, std::vector<statement_t>& out) {
    switch (state) {
    case state_t::plain:
        plain(c, out);
        break;
    case state_t::slash:
        slash(c, out);
        break;
    case state_t::quoted:
        if (c == '\n' && line_end == line_end_t::ends) {
            end(out);
            state = state_t::plain;
        } else {
            keep(c);
            state = c == quote ? state_t::plain : state_t::quoted;
        }
        break;
    case state_t::line_comment:
        if (c == '\n') {
            state = state_t::plain;
            line_break(out);
        }
        break;
    case state_t::comment:
        state = c == '*' ? state_t::star : state_t::comment;
        break;
    case state_t::star:
        state = c == '/' ? state_t::plain : state_t::behind_star;
        break;
    case state_t::behind_star:
        state = c == '*' ? state_t::star : state_t::comment;
        break;
    }
}

void statement_reader_t::plain(char c, std::vector<statement_t>& out) {
    if (c == '\n') {
        line_break(out);
    } else if (c == ';') {
        end(out);
    } else if (c == '/') {
        state = state_t::slash;
    } else {
        if (c == '"' || c == '\'') {
            quote = c;
            state = state_t::quoted;
        }
        keep(c);
    }
}

void statement_reader_t::slash(char c, std::vector<statement_t>& out) {
    state = state_t::plain;
    if (c == '/') {
        state = state_t::line_comment;
    } else if (c == '*') {
        state = state_t::comment;
        comment_line = line;
    } else {
        keep('/');
        if (c == '\n' && line_end == line_end_t::ends) {
            end(out);
        } else {
            keep(c);
        }
    }
}

void statement_reader_t::line_break(std::vector<statement_t>& out) {
    if (line_end == line_end_t::ends) {
        end(out);
    }
}

void statement_reader_t::keep(char c) {
    if (!current.text.empty() || !is_white(c)) {
        if (current.text.empty()) {
            current.line = line;
        }
        current.text += c;
    }
}

void statement_reader_t::end(std::vector<statement_t>& out) {
    while (!current.text.empty() && is_white(current.text.back())) {
        current.text.pop_back();
    }
    if (!current.text.empty()) {
        out.push_back(current);
    }
    current = {"", 0};
}

} // namespace tool

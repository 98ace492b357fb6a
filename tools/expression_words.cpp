#include "expression_words.h"

namespace tool {

namespace {

bool is_word_char(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// The first byte from `start` on that is no part of a word; a number takes its point along.
std::size_t word_end(const std::string& text, std::size_t start, bool number) {
    std::size_t end = start;
    while (end < text.size() && (is_word_char(text[end]) || (number && text[end] == '.'))) {
        ++end;
    }
    return end;
}

word_use_t use_of(const std::string& text, std::size_t end) {
    const std::size_t next = text.find_first_not_of(" \t\r\n", end);
    if (next == std::string::npos) {
        return word_use_t::read;
    }
    if (text[next] == '(') {
        return word_use_t::call;
    }
    const bool comparison = text.compare(next, 2, "==") == 0;
    return text[next] == '=' && !comparison ? word_use_t::set : word_use_t::read;
}

/// Where a comment ends that begins at `start`; `start` when none does.
std::size_t comment_end(const std::string& text, std::size_t start) {
    if (text.compare(start, 2, "//") == 0) {
        return text.find('\n', start);
    }
    if (text.compare(start, 2, "/*") == 0) {
        const std::size_t end = text.find("*/", start + 2);
        return end == std::string::npos ? end : end + 2;
    }
    return start;
}

} // namespace

std::vector<word_t> expression_words(const std::string& expression) {
    std::vector<word_t> words;
    char quote = 0;
    for (std::size_t i = 0; i < expression.size();) {
        const char c = expression[i];
        if (is_word_char(c)) {
            const std::size_t end = word_end(expression, i, quote == 0 && is_digit(c));
            if (!is_digit(c)) {
                words.push_back({expression.substr(i, end - i),
                                 quote != 0 ? word_use_t::quoted : use_of(expression, end), i});
            }
            i = end;
        } else if (const std::size_t end = quote == 0 ? comment_end(expression, i) : i;
                   end != i) {
            i = end;
        } else {
            if (c == quote) {
                quote = 0;
            } else if (quote == 0 && (c == '"' || c == '\'')) {
                quote = c;
            }
            ++i;
        }
    }
    return words;
}

} // namespace tool

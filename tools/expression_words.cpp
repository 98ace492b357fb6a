#include "expression_words.h"

#include <algorithm>

namespace tool {

namespace {

enum class kind_t { name, number, string, open, close, other };

/// A token, more or less: operators of two characters are two of them.
struct piece_t {
    kind_t kind;
    std::size_t start;
    std::size_t end;
};

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_word_char(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c) || c == '_';
}

/// The first byte from `start` on that is no part of a word; a number takes its point along.
std::size_t word_end(const std::string& text, std::size_t start, bool number) {
    std::size_t end = start;
    while (end < text.size() && (is_word_char(text[end]) || (number && text[end] == '.'))) {
        ++end;
    }
    return end;
}

/// Where a comment ends that begins at `start`; `start` when none does.
std::size_t comment_end(const std::string& text, std::size_t start) {
    if (text.compare(start, 2, "//") == 0) {
        return std::min(text.find('\n', start), text.size());
    }
    if (text.compare(start, 2, "/*") == 0) {
        const std::size_t end = text.find("*/", start + 2);
        return end == std::string::npos ? text.size() : end + 2;
    }
    return start;
}

piece_t piece_at(const std::string& text, std::size_t start) {
    const char c = text[start];
    if (is_word_char(c)) {
        return {is_digit(c) ? kind_t::number : kind_t::name, start,
                word_end(text, start, is_digit(c))};
    }
    if (c == '"' || c == '\'') {
        return {kind_t::string, start, std::min(text.find(c, start + 1), text.size() - 1) + 1};
    }
    return {c == '(' ? kind_t::open : (c == ')' ? kind_t::close : kind_t::other), start,
            start + 1};
}

std::vector<piece_t> pieces_of(const std::string& text) {
    const std::string blanks = " \t\r\n\v\f";
    std::vector<piece_t> pieces;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t behind_comment = comment_end(text, i);
        if (behind_comment != i) {
            i = behind_comment;
        } else if (blanks.find(text[i]) != std::string::npos) {
            ++i;
        } else {
            pieces.push_back(piece_at(text, i));
            i = pieces.back().end;
        }
    }
    return pieces;
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

/// Adds the words in a string.
void quoted_words_add(const std::string& text, const piece_t& string,
                      std::vector<word_t>& words) {
    for (std::size_t i = string.start; i < string.end;) {
        const std::size_t end = std::max(word_end(text, i, false), i + 1);
        if (is_word_char(text[i]) && !is_digit(text[i])) {
            words.push_back({text.substr(i, end - i), word_use_t::quoted, i});
        }
        i = end;
    }
}

bool is_operand(kind_t kind) {
    return kind == kind_t::name || kind == kind_t::number || kind == kind_t::string;
}

} // namespace

std::vector<word_t> expression_words(const std::string& expression) {
    std::vector<word_t> words;
    for (const piece_t& piece : pieces_of(expression)) {
        if (piece.kind == kind_t::name) {
            words.push_back({expression.substr(piece.start, piece.end - piece.start),
                             use_of(expression, piece.end), piece.start});
        } else if (piece.kind == kind_t::string) {
            quoted_words_add(expression, piece, words);
        }
    }
    return words;
}

std::size_t misfit_find(const std::string& expression,
                        const std::vector<std::string>& functions) {
    const auto is_function = [&](const piece_t& piece) {
        return std::binary_search(functions.begin(), functions.end(),
                                  expression.substr(piece.start, piece.end - piece.start));
    };
    std::size_t open = 0;
    piece_t last{kind_t::other, 0, 0};
    for (const piece_t& piece : pieces_of(expression)) {
        const bool behind_operand = is_operand(last.kind) || last.kind == kind_t::close;
        const bool call = piece.kind == kind_t::open && last.kind == kind_t::name;
        if (call && !is_function(last)) {
            return last.start;
        }
        if ((piece.kind == kind_t::close && open == 0) ||
            (behind_operand && !call && (is_operand(piece.kind) || piece.kind == kind_t::open))) {
            return piece.start;
        }
        open += piece.kind == kind_t::open ? 1U : 0U;
        open -= piece.kind == kind_t::close ? 1U : 0U;
        last = piece;
    }
    return std::string::npos;
}

} // namespace tool

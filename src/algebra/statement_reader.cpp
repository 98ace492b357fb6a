#include "algebra/statement_reader.h"

#include "algebra/words.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// The characters that are not just copied.
constexpr character_table_t specials(";\xFF\n\'\"/");

/// Reads one statement; lives as long as that takes.
class statement_reader_t {
public:
    statement_reader_t(const std::string& source, std::string& target)
        : text(source), statement(target) {}

    bool read();

private:
    bool at_end() const { return position == text.size(); }

    /// The next character of a string or a comment, which must not be open at the end.
    char next() {
        if (at_end()) {
            fail();
        }
        return text[position++];
    }

    [[noreturn]] static void fail() {
        throw exception_t(std::string("unexpected EOF encountered"));
    }
    bool copy_plain();
    void quoted(char quote);
    void slash();
    void line_comment();
    void block_comment();

    const std::string& text;
    std::string& statement;
    std::size_t position = 0;
    bool substitute = true;
};

bool statement_reader_t::read() {
    statement.clear();
    statement.reserve(text.size() + 1); // the lexer appends a blank
    while (copy_plain()) {
        const char c = text[position++];
        switch (c) {
        case ';':
        case '\xFF': // callers rely on it (quirk "byte 255")
            return substitute;
        case '\n':
            break;
        case '/':
            slash();
            break;
        default:
            quoted(c);
        }
    }
    return substitute;
}

/// Copies what needs no look.
/// @return false at the end of the text
bool statement_reader_t::copy_plain() {
    const char* const begin = text.data() + position;
    const char* const text_end = text.data() + text.size();
    const char* end = begin;
    while (end != text_end && !specials.has(*end)) {
        ++end;
    }
    const auto size = static_cast<std::size_t>(end - begin);
    statement.append(begin, size);
    position += size;
    return end != text_end;
}

void statement_reader_t::quoted(char quote) {
    const std::size_t end = text.find(quote, position);
    if (end == std::string::npos) {
        fail();
    }
    statement.append(text, position - 1, end + 2 - position);
    position = end + 1;
}

void statement_reader_t::slash() {
    if (at_end()) {
        // A text that ends in "/" goes without macro substitution; callers rely on it (quirk
        // "slash at the end").
        statement += '/';
        substitute = false;
        return;
    }
    const char c = text[position++];
    if (c == '/') {
        line_comment();
    } else if (c == '*') {
        block_comment();
    } else {
        statement.append(text, position - 2, 2);
    }
}

void statement_reader_t::line_comment() {
    while (next() != '\n') {
    }
}

/// The character after a "*" that no "/" follows is skipped unseen, so "**/" does not end a
/// comment; callers rely on it (quirk "star and slash").
void statement_reader_t::block_comment() {
    for (;;) {
        while (next() != '*') {
        }
        do {
            if (next() == '/') {
                return;
            }
        } while (next() == '*');
    }
}

} // namespace

bool statement_read(const std::string& text, std::string& statement) {
    return statement_reader_t(text, statement).read();
}

} // namespace ko::alg

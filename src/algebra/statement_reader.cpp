#include "algebra/statement_reader.h"

#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Reads one statement; lives as long as that takes.
class statement_reader_t {
public:
    explicit statement_reader_t(const std::string& source) : text(source) {}

    statement_t read();

private:
    bool at_end() const { return position == text.size(); }

    /// The next character of a string or a comment, which must not be open at the end.
    char next() {
        if (at_end()) {
            throw exception_t("unexpected EOF encountered");
        }
        return text[position++];
    }

    void quoted(char quote);
    void slash();
    void line_comment();
    void block_comment();

    const std::string& text;
    std::size_t position = 0;
    statement_t statement;
};

statement_t statement_reader_t::read() {
    while (!at_end()) {
        const char c = text[position++];
        switch (c) {
        case ';':
        case '\xFF': // ends a statement as the end of the text does; callers rely on it
            return statement;
        case '\n':
            break;
        case '\'':
        case '"':
            quoted(c);
            break;
        case '/':
            slash();
            break;
        default:
            statement.text += c;
        }
    }
    return statement;
}

void statement_reader_t::quoted(char quote) {
    statement.text += quote;
    char c = 0;
    do {
        c = next();
        statement.text += c;
    } while (c != quote);
}

void statement_reader_t::slash() {
    if (at_end()) {
        // A text that ends in "/" goes without macro substitution; callers rely on it.
        statement.text += '/';
        statement.substitute = false;
        return;
    }
    const char c = text[position++];
    if (c == '/') {
        line_comment();
    } else if (c == '*') {
        block_comment();
    } else {
        statement.text += '/';
        statement.text += c;
    }
}

void statement_reader_t::line_comment() {
    while (next() != '\n') {
    }
}

/// The character after a "*" that no "/" follows is skipped unseen, so "**/" does not end a
/// comment; callers rely on it.
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

statement_t statement_read(const std::string& text) {
    return statement_reader_t(text).read();
}

} // namespace ko::alg

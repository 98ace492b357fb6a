#include "algebra/reference/lexer.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace test::reference {

namespace {

/// Operators, longest first, with their strengths.
const std::vector<std::pair<std::string, int>> operators = {
    {"||", -9}, {"&&", -8}, {"==", -4}, {"!=", -4}, {"<=", -3}, {"<<", -2}, {">=", -3},
    {">>", -2}, {"*", 0},   {"/", 0},   {"%", 0},   {"-", -1},  {"+", -1},  {"|", -7},
    {"&", -5},  {"=", -11}, {"!", 2},   {"<", -3},  {">", -3},  {"?", -10}, {",", -13}};

/// The position after the next `c`.
std::size_t after(const std::string& text, char c, std::size_t from) {
    const std::size_t found = text.find(c, from);
    if (found == std::string::npos) {
        throw error_t("unexpected EOF encountered");
    }
    return found + 1;
}

/// The position after a block comment: a "*" that is not followed by "/" hides the character
/// after it.
std::size_t after_comment(const std::string& text, std::size_t from) {
    std::size_t at = after(text, '*', from);
    while (at < text.size() && text[at] != '/') {
        at += text.substr(at + 1, 1) == "*" ? 2 : after(text, '*', at + 2) - at;
    }
    return after(text, '/', at);
}

} // namespace

std::string statement_of(const std::string& text) {
    std::string line;
    std::size_t at = 0;
    while (at < text.size() && text[at] != ';') {
        const std::size_t begin = at;
        const std::string two = text.substr(at, 2);
        if (two == "//" || two == "/*") {
            at = two == "//" ? after(text, '\n', at + 2) : after_comment(text, at + 2);
            continue;
        }
        const char c = text[at];
        at = c == '"' || c == '\'' ? after(text, c, at + 1) : at + (c == '/' ? 2 : 1);
        line += c == '\n' ? "" : text.substr(begin, at - begin);
    }
    return line;
}

namespace {

using calls_t = std::set<std::string>;

/// Characters of a statement become nodes.
struct lexer_t {
    const calls_t& calls;
    std::string line;
    std::size_t at = 0;
    bool operand_before = false; ///< a sign here is a binary operator
    nodes_t nodes;

    char next() const { return line[at]; }

    node_t& add(kind_t kind, const std::string& text, int strength = -15) {
        nodes.push_back(std::make_shared<node_t>());
        node_t& node = *nodes.back();
        node.kind = kind;
        node.text = text;
        node.strength = strength;
        node.unbound = strength > -15;
        return node;
    }

    template <class P> std::string run(P belongs) {
        const std::size_t begin = at;
        while (belongs(static_cast<unsigned char>(next()))) {
            ++at;
        }
        return line.substr(begin, at - begin);
    }

    void string() {
        const std::size_t end = line.find(next(), at + 1);
        if (end == std::string::npos) {
            throw error_t("algebra_t::nextc_get() - unexpected end-of-line");
        }
        add(kind_t::value, "").value = of_text(line.substr(at + 1, end - at - 1));
        at = end + 1;
    }

    void name() {
        const std::string text = run([](int c) { return std::isalnum(c) != 0 || c == '_'; });
        const bool is_call = calls.count(text) != 0;
        add(is_call ? kind_t::call : kind_t::name, text, is_call ? 3 : -15);
    }

    static bool digit(int c) { return c >= '0' && c <= '9'; }

    void integer(const std::string& text) {
        const long long whole = std::strtoll(text.c_str(), nullptr, 0);
        const long long largest = std::numeric_limits<int>::max();
        add(kind_t::value, text).value = of_int(whole > largest ? largest : whole);
    }

    void number() {
        std::string text = next() == '0' ? line.substr(at++, 1) : run(digit);
        if (next() == '.') {
            text += line[at++];
            text += run(digit);
            if (next() == 'e' || next() == 'E') {
                text += line[at++];
                text += next() == '-' ? std::string(1, line[at++]) : "";
                text += run(digit);
            }
            add(kind_t::value, text).value = of_float(std::strtof(text.c_str(), nullptr));
            return;
        }
        if (text == "0" && next() == ':') {
            throw parse_error_t("algebra_t::unknown() - unidentified character ':'");
        }
        if (text == "0" && (next() == 'x' || next() == 'X' || digit(next()))) {
            const bool hexadecimal = next() == 'x';
            text += line[at++];
            text += run([hexadecimal](int c) {
                return hexadecimal ? std::isxdigit(c) != 0 : c >= '0' && c <= '7';
            });
        }
        integer(text);
    }

    void operation() {
        for (const auto& [text, strength] : operators) {
            if (line.compare(at, text.size(), text) != 0) {
                continue;
            }
            at += text.size();
            const bool sign = (text == "-" || text == "+") && !operand_before;
            const kind_t kind = sign || text == "!" ? kind_t::unary
                                : text == "?"       ? kind_t::condition
                                : text == "="       ? kind_t::assignment
                                : text == ","       ? kind_t::comma
                                                    : kind_t::binary;
            add(kind, text, sign ? 2 : strength);
            return;
        }
        throw parse_error_t(std::string("algebra_t::unknown() - unidentified character '") +
                            next() + "'");
    }

    void read() {
        while (at < line.size()) {
            const auto c = static_cast<unsigned char>(next());
            if (std::isspace(c) != 0) {
                ++at;
                continue;
            }
            if (std::strchr("():", c) != nullptr) {
                add(kind_t::blank, std::string(1, line[at++]));
            } else if (c == '\'' || c == '"') {
                string();
            } else if (digit(c)) {
                number();
            } else if (std::isalpha(c) != 0 || c == '_') {
                name();
            } else {
                operation();
            }
            const node_t& last = *nodes.back();
            operand_before = last.kind == kind_t::value || last.kind == kind_t::name ||
                             last.kind == kind_t::call || last.text == ")";
        }
    }
};

} // namespace

nodes_t nodes_of(const std::string& line, const std::set<std::string>& calls) {
    lexer_t lexer{calls, line + " ", 0, false, {}};
    lexer.read();
    return lexer.nodes;
}

} // namespace test::reference

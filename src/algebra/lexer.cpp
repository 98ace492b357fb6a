#include "algebra/lexer.h"

#include <new>

#include "algebra/limits.h"
#include "algebra/numbers.h"
#include "algebra/words.h"
#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

/// Lexes one line; lives as long as that takes.
class lexer_t {
public:
    lexer_t(syntax_t& target, const lexer_settings_t& lexer_settings, std::string& error)
        : syntax(target), settings(lexer_settings), parse_error(error), line(target.text) {}

    bool run();

private:
    /// What the last token was: it tells unary from binary "+" and "-".
    enum class previous_e { none, open, close, separator, operand, operation };

    bool token();
    bool mark(item_e kind, previous_e previous);
    bool comma();
    bool sign();
    bool assignment();
    bool operation();
    bool operation_add(operator_id_t id, std::size_t length, previous_e previous);
    bool quoted();
    bool name();
    bool call_add(item_t& item, std::string_view text);
    bool zero();
    bool number();
    bool fraction(std::size_t begin);
    bool integer_add(std::size_t begin);
    bool float_add(std::size_t begin);

    bool fail(std::string message);
    bool fail_unidentified(char c);
    item_t& append(item_e kind, std::size_t begin, previous_e previous);
    void take_while(const character_table_t& members);

    syntax_t& syntax;
    const lexer_settings_t& settings;
    std::string& parse_error;
    const std::string& line;
    std::size_t position = 0;
    previous_e last = previous_e::none;
};

bool lexer_t::run() {
    std::size_t watched = tokens_unwatched_max;
    for (;;) {
        while (position < line.size() && ascii::is_space(line[position])) {
            ++position;
        }
        if (position == line.size()) {
            return true;
        }
        if (syntax.items.size() >= watched && settings.budget != nullptr) {
            settings.budget->watch();
            watched = syntax.items.size() + tokens_unwatched_max;
        }
        if (!token()) {
            return false;
        }
    }
}

bool lexer_t::token() {
    const char c = line[position];
    switch (c) {
    case '(':
        return mark(item_e::open, previous_e::open);
    case ')':
        return mark(item_e::close, previous_e::close);
    case ':':
        return mark(item_e::colon, previous_e::separator);
    case '\'':
    case '"':
        return quoted();
    case '-':
    case '+':
        return sign();
    case '=':
        return assignment();
    case ',':
        return comma();
    case '?':
        return operation_add(choice_id, 1, previous_e::operation);
    case '0':
        return zero();
    default:
        break;
    }
    if (ascii::is_digit(c)) {
        return number();
    }
    return ascii::is_alpha(c) || c == '_' ? name() : operation();
}

item_t& lexer_t::append(item_e kind, std::size_t begin, previous_e previous) {
    syntax.items.emplace_back();
    item_t& item = syntax.items.back();
    item.kind = kind;
    item.text_begin = static_cast<place_t>(begin);
    item.text_size = static_cast<place_t>(position - begin);
    last = previous;
    return item;
}

void lexer_t::take_while(const character_table_t& members) {
    while (members.has(line[position])) {
        ++position; // the blank at the end of the line is in no table
    }
}

bool lexer_t::mark(item_e kind, previous_e previous) {
    ++position;
    append(kind, position - 1, previous);
    return true;
}

bool lexer_t::comma() {
    if (settings.numeric_only) {
        ++position; // callers rely on it (quirk "numeric mode: commas")
        return true;
    }
    return operation_add(comma_id, 1, previous_e::separator);
}

bool lexer_t::operation_add(operator_id_t id, std::size_t length, previous_e previous) {
    position += length;
    append(item_e::operation, position - length, previous).operation = id;
    return true;
}

bool lexer_t::sign() {
    const bool is_infix = last == previous_e::close || last == previous_e::operand;
    return is_infix ? operation()
                    : operation_add(prefix_find(line[position]), 1, previous_e::operation);
}

bool lexer_t::assignment() {
    const char next = line[position + 1];
    if (next != '=' && settings.numeric_only) {
        return fail("algebra_t::unknown() - parse error at '=" + std::string(1, next) + "'");
    }
    return next == '=' ? operation() : operation_add(assign_id, 1, previous_e::operation);
}

/// An operator of one or two characters, the longer one if there is one.
bool lexer_t::operation() {
    const char c = line[position];
    std::size_t length = 0;
    operator_id_t id = infix_find(c, line[position + 1], length);
    if (id == operators_end) {
        id = prefix_find(c);
    }
    return id == operators_end ? fail_unidentified(c)
                               : operation_add(id, length, previous_e::operation);
}

bool lexer_t::quoted() {
    const std::size_t begin = position + 1;
    const std::size_t end = line.find(line[position], begin);
    if (end == std::string::npos) {
        throw exception_t("algebra_t::nextc_get() - unexpected end-of-line");
    }
    position = end;
    append(item_e::text, begin, previous_e::operand);
    ++position;
    return true;
}

bool lexer_t::name() {
    if (settings.numeric_only) {
        ++position; // callers rely on it (quirk "numeric mode: names")
        return true;
    }
    const std::size_t begin = position;
    take_while(label_legals);
    item_t& item = append(item_e::name, begin, previous_e::operand);
    return call_add(item, std::string_view(line).substr(begin, position - begin));
}

/// Makes a name a call when there is a function of that name.
bool lexer_t::call_add(item_t& item, std::string_view text) {
    const function_table_t* const table = settings.functions;
    callee_t callee;
    if (table != nullptr) {
        callee.host = table->host_find(text);
    }
    if (callee.host == nullptr) {
        callee.builtin = builtin_find(text);
    }
    if (callee.is_script()) {
        const function_t* const script = table == nullptr ? nullptr : table->script_find(text);
        if (script == nullptr) {
            return true;
        }
        item.takes_nothing = script->parameters.empty();
        if (settings.keeps_scripts) {
            callee.scripts = table->scripts_get();
        }
    }
    syntax.callees.push_back(std::move(callee));
    item.callee = static_cast<std::uint32_t>(syntax.callees.size() - 1);
    item.kind = item_e::call;
    return true;
}

bool lexer_t::fail(std::string message) {
    parse_error = std::move(message);
    syntax.unread = position;
    return false;
}

bool lexer_t::fail_unidentified(char c) {
    return fail("algebra_t::unknown() - unidentified character '" + std::string(1, c) + "'");
}

bool lexer_t::number() {
    const std::size_t begin = position;
    take_while(decimal_legals);
    return line[position] == '.' ? fraction(begin) : integer_add(begin);
}

bool lexer_t::zero() {
    const std::size_t begin = position++;
    const char next = line[position];
    if (next == '.') {
        return fraction(begin);
    }
    if (next == ':') {
        return fail_unidentified(next); // callers rely on it (quirk "zero and colon")
    }
    if (next == 'x') {
        ++position;
        take_while(hex_legals);
    } else if (next == 'X' || ascii::is_digit(next)) {
        // "0X" is read as an octal number, which ends before a letter; callers rely on it (quirk
        // "upper-case X").
        ++position;
        take_while(octal_legals);
    }
    return integer_add(begin);
}

/// From the point of a float on.
bool lexer_t::fraction(std::size_t begin) {
    ++position;
    take_while(decimal_legals);
    if (line[position] == 'e' || line[position] == 'E') {
        ++position;
        if (line[position] == '-') { // callers rely on "+" being none (quirk "exponent sign")
            ++position;
        }
        take_while(decimal_legals);
    }
    return float_add(begin);
}

bool lexer_t::integer_add(std::size_t begin) {
    int value = 0;
    int_convert(std::string_view(line).substr(begin, position - begin), value);
    append(item_e::integer, begin, previous_e::operand).integer = value;
    return true;
}

bool lexer_t::float_add(std::size_t begin) {
    float value = 0;
    float_convert(std::string_view(line).substr(begin, position - begin), value);
    append(item_e::real, begin, previous_e::operand).real = value;
    return true;
}

} // namespace

bool line_lex(syntax_t& syntax, const lexer_settings_t& settings, std::string& error) {
    if (syntax.text.size() >= no_place - 1) {
        throw std::bad_alloc(); // places in the text have 32 bits
    }
    syntax.text += ' ';
    return lexer_t(syntax, settings, error).run();
}

} // namespace ko::alg

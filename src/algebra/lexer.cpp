#include "algebra/lexer.h"

#include <algorithm>
#include <utility>

#include "algebra/character_tables.h"
#include "algebra/function_tokens.h"
#include "algebra/operand_tokens.h"
#include "algebra/operator_tokens.h"
#include "algebra/structure_tokens.h"
#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::alg {

lexer_t::lexer_t(std::string& source, const lexer_settings_t& lexer_settings, list_t& target,
                 std::string& error)
    : settings(lexer_settings), tokens(target), parse_error(error), line(source) {
    line += ' ';
}

bool lexer_t::run() {
    while (state != nullptr) {
        if (!(this->*state)()) {
            return false;
        }
    }
    return true;
}

bool lexer_t::nextc_test() const {
    return position < line.size();
}

void lexer_t::nextc_get() {
    if (!nextc_test()) {
        throw exception_t("algebra_t::nextc_get() - unexpected end-of-line");
    }
    current = line[position++];
}

void lexer_t::nextc_putback() {
    if (position == 0) {
        throw exception_t("algebra_t::nextc_putback() - put back too many characters");
    }
    --position;
    if (position != 0) {
        current = line[position - 1];
    }
}

template <class T> void lexer_t::take_while(const T& members) {
    const std::size_t begin = position;
    while (nextc_test() && members.has(line[position])) {
        ++position;
    }
    buffer.append(line, begin, position - begin);
}

bool lexer_t::unknown() {
    while (nextc_test() && ascii::is_space(line[position])) {
        ++position;
    }
    if (!nextc_test()) {
        state = nullptr;
        return true;
    }
    nextc_get();
    return dispatch();
}

bool lexer_t::dispatch() {
    switch (current) {
    case '(':
        return blank(previous_e::open);
    case ')':
        return blank(previous_e::close);
    case ':':
        return blank(previous_e::separator);
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
        return append(std::make_unique<conditional_assignment_t>(), previous_e::operation);
    case '0':
        return zero();
    default:
        break;
    }
    if (ascii::is_digit(current)) {
        return number();
    }
    return ascii::is_alpha(current) || current == '_' ? name() : operation();
}

bool lexer_t::blank(previous_e kind) {
    return append(std::make_unique<blank_token_t>(std::string(1, current)), kind);
}

bool lexer_t::comma() {
    // In numeric-only mode a comma leaves no trace; callers rely on it.
    return settings.numeric_only ||
           append(std::make_unique<sequencer_t>(), previous_e::separator);
}

bool lexer_t::sign() {
    const bool is_binary =
        previous_kind == previous_e::close || previous_kind == previous_e::operand;
    return is_binary ? operation()
                     : append(std::make_unique<unary_t>(
                                  *unary_kind_find(std::string_view(&current, 1))),
                              previous_e::operation);
}

bool lexer_t::assignment() {
    nextc_get();
    if (current == '=') {
        return append(std::make_unique<binary_t>(*binary_kind_find("==")), previous_e::operation);
    }
    if (settings.numeric_only) {
        return fail("algebra_t::unknown() - parse error at '=" + std::string(1, current) + "'");
    }
    nextc_putback();
    return append(std::make_unique<assign_t>(), previous_e::operation);
}

/// An operator of one or two characters, the longer one if there is one.
bool lexer_t::operation() {
    nextc_get();
    const std::string_view pair(line.data() + position - 2, 2);
    const binary_kind_t* kind = binary_kind_find(pair);
    if (kind == nullptr) {
        nextc_putback();
        kind = binary_kind_find(pair.substr(0, 1));
    }
    if (kind != nullptr) {
        return append(std::make_unique<binary_t>(*kind), previous_e::operation);
    }
    if (current == '!') {
        return append(std::make_unique<unary_t>(*unary_kind_find("!")), previous_e::operation);
    }
    return fail_unidentified();
}

bool lexer_t::quoted() {
    buffer.clear();
    quote = current;
    state = &lexer_t::string_literal;
    return true;
}

bool lexer_t::string_literal() {
    const std::size_t begin = position;
    position = std::min(line.find(quote, begin), line.size());
    buffer.append(line, begin, position - begin);
    nextc_get();
    state = &lexer_t::unknown;
    return convert_string();
}

bool lexer_t::convert_string() {
    return append(std::make_unique<string_t>(buffer), previous_e::operand);
}

bool lexer_t::name() {
    if (settings.numeric_only) {
        return true; // a name is skipped letter by letter; callers rely on it
    }
    buffer.assign(1, current);
    state = &lexer_t::label;
    return true;
}

bool lexer_t::label() {
    take_while(label_legals);
    state = &lexer_t::unknown;
    function_prototype_t prototype;
    if (settings.functions.external_find(buffer, prototype)) {
        return append(std::make_unique<external_function_t>(prototype), previous_e::operand);
    }
    const std::shared_ptr<script_table_t>& scripts = settings.functions.scripts_get();
    if (scripts->find(buffer) != nullptr) {
        return append(std::make_unique<internal_function_t>(buffer, scripts),
                      previous_e::operand);
    }
    return append(std::make_unique<label_t>(buffer), previous_e::operand);
}

bool lexer_t::fail(const std::string& message) {
    parse_error = message;
    return false;
}

bool lexer_t::fail_unidentified() {
    return fail("algebra_t::unknown() - unidentified character '" + std::string(1, current) +
                "'");
}

bool lexer_t::append(std::unique_ptr<token_t> token, previous_e kind) {
    tokens.push_back(token.get());
    static_cast<void>(token.release());
    previous_kind = kind;
    return true;
}

bool lexer_t::number() {
    buffer.assign(1, current);
    state = &lexer_t::floatint;
    return true;
}

bool lexer_t::zero() {
    buffer.assign(1, current);
    nextc_get();
    if (current == '.') {
        buffer += current;
        state = &lexer_t::floatstate;
        return true;
    }
    if (current == ':') {
        return fail_unidentified(); // "0:" alone is refused; callers rely on it
    }
    const bool has_prefix = current == 'x' || current == 'X' || ascii::is_digit(current);
    nextc_putback();
    if (has_prefix) {
        state = &lexer_t::hexoctal;
        return true;
    }
    return append(std::make_unique<int_t>(buffer, 0), previous_e::operand);
}

bool lexer_t::floatint() {
    take_while(decimal_legals);
    nextc_get();
    if (current == '.') {
        buffer += current;
        state = &lexer_t::floatstate;
        return true;
    }
    state = &lexer_t::unknown;
    return convert_int();
}

bool lexer_t::floatstate() {
    take_while(decimal_legals);
    nextc_get();
    if (current != 'e' && current != 'E') {
        state = &lexer_t::unknown;
        return convert_float();
    }
    buffer += current;
    state = &lexer_t::exponent;
    nextc_get();
    if (current == '-') {
        buffer += current;
    } else {
        nextc_putback(); // "+" is no sign of an exponent; callers rely on it
    }
    return true;
}

bool lexer_t::exponent() {
    take_while(decimal_legals);
    nextc_get();
    state = &lexer_t::unknown;
    return convert_float();
}

bool lexer_t::hexoctal() {
    nextc_get();
    buffer += current;
    // "0X" is read as an octal number, which ends before a letter; callers rely on it.
    state = current == 'x' ? &lexer_t::hex : &lexer_t::octal;
    return true;
}

bool lexer_t::hex() {
    take_while(hex_legals);
    nextc_get();
    state = &lexer_t::unknown;
    return convert_int();
}

bool lexer_t::octal() {
    take_while(octal_legals);
    nextc_get();
    state = &lexer_t::unknown;
    return convert_int();
}

bool lexer_t::convert_int() {
    nextc_putback();
    int value = 0;
    if (!int_convert(buffer, value)) {
        return fail("algebra_t::unknown() -- bad integer format, '" + buffer + "'");
    }
    return append(std::make_unique<int_t>(buffer, value), previous_e::operand);
}

bool lexer_t::convert_float() {
    nextc_putback();
    float value = 0;
    if (!float_convert(buffer, value)) {
        return fail("algebra_t::unknown() -- bad float format, '" + buffer + "'");
    }
    return append(std::make_unique<float_t>(buffer, value), previous_e::operand);
}

} // namespace ko::alg

#include "algebra/lexer.h"

#include <array>
#include <cstring>
#include <new>
#include <utility>

#include "algebra/numbers.h"
#include "algebra/words.h"
#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

/// What a token can begin with.
enum class start_e : unsigned char {
    other, ///< operators, and what begins nothing
    space,
    letter,
    digit,
    zero,
    quote,
    open,
    close,
    colon,
    comma,
    sign,
    equal,
    question
};

} // namespace

/// The kind of start that each character is.
class start_table_t {
public:
    constexpr explicit start_table_t(bool numeric_only) : table() {
        enter("\t\n\v\f\r ", start_e::space);
        enter("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", start_e::letter);
        enter("123456789", start_e::digit);
        enter("0", start_e::zero);
        enter("\'\"", start_e::quote);
        enter("(", start_e::open);
        enter(")", start_e::close);
        enter(":", start_e::colon);
        enter(",", start_e::comma);
        enter("+-", start_e::sign);
        enter("=", start_e::equal);
        enter("?", start_e::question);
        if (numeric_only) {
            // A comma leaves no trace then, and a name is skipped letter by letter; callers rely
            // on it (quirks "numeric mode: commas", "numeric mode: names").
            enter(",abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", start_e::space);
        }
    }
    constexpr start_e operator[](char c) const { return table[static_cast<unsigned char>(c)]; }

private:
    constexpr void enter(std::string_view characters, start_e start) {
        for (const char c : characters) {
            table[static_cast<unsigned char>(c)] = start;
        }
    }

    std::array<start_e, 256> table;
};

namespace {

constexpr start_table_t all_starts(false);
constexpr start_table_t numeric_starts(true);

/// Digits of a whole number that cannot exceed its 32 bits.
constexpr std::size_t integer_digits_safe = 9;
/// Digits of a number that a float always holds, and the powers of ten that it holds. The
/// quotient of two floats is rounded once, as the number itself would be.
constexpr std::size_t real_digits_safe = 7;
constexpr float powers_of_ten[] = {1.0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F, 1e6F, 1e7F};

} // namespace

lexer_t::lexer_t(const std::string& text, const lexer_settings_t& lexer_settings)
    : settings(lexer_settings), starts(settings.numeric_only ? numeric_starts : all_starts),
      line(text.c_str()), size(text.size()) {
    if (size >= no_place - 1) {
        throw std::bad_alloc();
    }
}

bool lexer_t::next() {
    while (starts[line[position]] == start_e::space) {
        ++position;
    }
    if (position >= size) {
        return false;
    }
    if (--unwatched == 0) {
        unwatched = tokens_unwatched_max;
        if (settings.budget != nullptr) {
            settings.budget->watch();
        }
    }
    return token();
}

bool lexer_t::token() {
    switch (starts[line[position]]) {
    case start_e::letter:
        return name();
    case start_e::digit:
        return number();
    case start_e::zero:
        return zero();
    case start_e::quote:
        return quoted();
    case start_e::open:
        return mark(item_e::open, previous_e::open);
    case start_e::close:
        return mark(item_e::close, previous_e::close);
    case start_e::colon:
        return mark(item_e::colon, previous_e::separator);
    case start_e::comma:
        return operation_made(comma_id, 1, previous_e::separator);
    case start_e::sign:
        return sign();
    case start_e::equal:
        return assignment();
    case start_e::question:
        return operation_made(choice_id, 1, previous_e::operation);
    default:
        return operation();
    }
}

/// Makes the token that reaches from `begin` to the position.
inline bool lexer_t::made(item_e kind, std::size_t begin, previous_e previous) {
    lexeme.kind = kind;
    lexeme.begin = static_cast<place_t>(begin);
    lexeme.size = static_cast<place_t>(position - begin);
    last = previous;
    return true;
}

bool lexer_t::mark(item_e kind, previous_e previous) {
    ++position;
    return made(kind, position - 1, previous);
}

inline bool lexer_t::operation_made(operator_id_t id, std::size_t length, previous_e previous) {
    position += length;
    lexeme.operation = id;
    return made(item_e::operation, position - length, previous);
}

bool lexer_t::sign() {
    const bool is_infix = last == previous_e::close || last == previous_e::operand;
    return is_infix ? operation()
                    : operation_made(prefix_find(line[position]), 1, previous_e::operation);
}

bool lexer_t::assignment() {
    const char next = line[position + 1];
    if (next != '=' && settings.numeric_only) {
        return fail("algebra_t::unknown() - parse error at '=" + std::string(1, next) + "'");
    }
    return next == '=' ? operation() : operation_made(assign_id, 1, previous_e::operation);
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
                               : operation_made(id, length, previous_e::operation);
}

bool lexer_t::quoted() {
    const std::size_t begin = position + 1;
    const void* const end = std::memchr(line + begin, line[position], size - begin);
    if (end == nullptr) {
        throw exception_t("algebra_t::nextc_get() - unexpected end-of-line");
    }
    position = static_cast<std::size_t>(static_cast<const char*>(end) - line);
    made(item_e::text, begin, previous_e::operand);
    ++position;
    return true;
}

bool lexer_t::name() {
    const std::size_t begin = position;
    do {
        ++position;
    } while (label_legals.has(line[position]));
    const bool is_call = callee_find({line + begin, position - begin});
    return made(is_call ? item_e::call : item_e::name, begin, previous_e::operand);
}

/// Looks for a function of that name.
inline bool lexer_t::callee_find(std::string_view name) {
    const function_table_t* const table = settings.functions;
    if (table != nullptr && table->has_hosts()) {
        callee.host = table->host_find(name);
    }
    callee.builtin = callee.host == nullptr ? builtin_find(name) : nullptr;
    lexeme.takes_nothing = false;
    if (!callee.is_script()) {
        return true;
    }
    const function_t* const script = table == nullptr ? nullptr : table->script_find(name);
    if (script == nullptr) {
        return false;
    }
    lexeme.takes_nothing = script->parameters.empty();
    if (settings.keeps_scripts) {
        callee.scripts = table->scripts_get();
    }
    return true;
}

bool lexer_t::fail(std::string message) {
    error = std::move(message);
    return false;
}

bool lexer_t::fail_unidentified(char c) {
    return fail("algebra_t::unknown() - unidentified character '" + std::string(1, c) + "'");
}

bool lexer_t::number() {
    const std::size_t begin = position;
    unsigned value = 0; // overflows where the digits are too many for it to count
    for (; decimal_legals.has(line[position]); ++position) {
        value = 10 * value + static_cast<unsigned>(line[position] - '0');
    }
    if (line[position] == '.') {
        return fraction(begin, position - begin, value);
    }
    if (position - begin > integer_digits_safe) {
        return integer_made(begin);
    }
    lexeme.integer = static_cast<int>(value);
    return made(item_e::integer, begin, previous_e::operand);
}

bool lexer_t::zero() {
    const std::size_t begin = position++;
    const char next = line[position];
    if (next == '.') {
        return fraction(begin, 1, 0);
    }
    if (next == ':') {
        return fail_unidentified(next); // callers rely on it (quirk "zero and colon")
    }
    if (next == 'x') {
        do {
            ++position;
        } while (hex_legals.has(line[position]));
    } else if (next == 'X' || ascii::is_digit(next)) {
        // "0X" is read as an octal number, which ends before a letter; callers rely on it (quirk
        // "upper-case X").
        do {
            ++position;
        } while (octal_legals.has(line[position]));
    }
    return integer_made(begin);
}

/// From the point of a float on.
/// @param value of the digits before it
bool lexer_t::fraction(std::size_t begin, std::size_t digits, unsigned value) {
    const std::size_t point = position++;
    for (; decimal_legals.has(line[position]); ++position) {
        value = 10 * value + static_cast<unsigned>(line[position] - '0');
    }
    const std::size_t behind = position - point - 1;
    if (line[position] == 'e' || line[position] == 'E') {
        ++position;
        if (line[position] == '-') { // callers rely on "+" being none (quirk "exponent sign")
            ++position;
        }
        while (decimal_legals.has(line[position])) {
            ++position;
        }
    } else if (digits + behind <= real_digits_safe) {
        lexeme.real = static_cast<float>(value) / powers_of_ten[behind];
        return made(item_e::real, begin, previous_e::operand);
    }
    return real_made(begin);
}

bool lexer_t::integer_made(std::size_t begin) {
    int value = 0;
    int_convert({line + begin, position - begin}, value);
    lexeme.integer = value;
    return made(item_e::integer, begin, previous_e::operand);
}

bool lexer_t::real_made(std::size_t begin) {
    float value = 0;
    float_convert({line + begin, position - begin}, value);
    lexeme.real = value;
    return made(item_e::real, begin, previous_e::operand);
}

namespace {

/// Appends the token that has just been read.
void item_add(syntax_t& syntax, lexer_t& lexer) {
    const lexeme_t& lexeme = lexer.lexeme;
    item_t item;
    item.kind = lexeme.kind;
    item.text_begin = lexeme.begin;
    item.text_size = lexeme.size;
    if (lexeme.kind == item_e::operation) {
        item.operation = lexeme.operation;
    } else if (lexeme.kind == item_e::integer) {
        item.integer = lexeme.integer;
    } else if (lexeme.kind == item_e::real) {
        item.real = lexeme.real;
    } else if (lexeme.kind == item_e::call) {
        item.takes_nothing = lexeme.takes_nothing;
        item.callee = static_cast<std::uint32_t>(syntax.callees.size());
        syntax.callees.push_back(std::exchange(lexer.callee, callee_t()));
    }
    syntax.items.push_back(item);
}

} // namespace

bool line_lex(syntax_t& syntax, const lexer_settings_t& settings, std::string& error) {
    syntax.text += ' ';
    lexer_t lexer(syntax.text, settings);
    while (lexer.next()) {
        item_add(syntax, lexer);
    }
    if (lexer.error.empty()) {
        return true;
    }
    error = std::move(lexer.error);
    syntax.unread = lexer.position_get();
    return false;
}

} // namespace ko::alg

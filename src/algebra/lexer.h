/// @file
/// The lexer: turns a line of expression text into a row of tokens.
///
/// It is a plain loop: the character at hand tells the kind of token, and a function of that kind
/// takes its run of characters. Whatever stands behind the end of the line belongs to no number,
/// name or operator, so that no function has to ask for the end but that of strings. Nothing is
/// copied: a token refers to its part of the line.
#pragma once

#include <string>
#include <string_view>

#include "algebra/budget.h"
#include "algebra/limits.h"
#include "algebra/syntax.h"

namespace ko::alg {

/// What an evaluator lets the lexer and the parser know.
struct lexer_settings_t {
    const function_table_t* functions = nullptr; ///< names in these become calls; may be null
    bool numeric_only = false;                   ///< names and commas are skipped, "=" is refused
    /// Whether calls of script functions keep the table that they were parsed with.
    bool keeps_scripts = false;
    const budget_t* budget = nullptr; ///< watched on the way; may be null
};

/// A token of a line.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): a union has one member at a time
struct lexeme_t {
    item_e kind = item_e::open;
    operator_id_t operation = operators_end; ///< of an operation
    bool takes_nothing = false;              ///< of a call: binds without arguments
    place_t begin = 0;                       ///< in the line
    place_t size = 0;
    union {
        int integer = 0;
        float real;
    };
};

class start_table_t;

/// Reads the tokens of one line, one after the other.
class lexer_t {
public:
    /// @param text the line; it and the settings must outlive the lexer
    /// @throws std::bad_alloc places in the line need more than 32 bits
    lexer_t(const std::string& text, const lexer_settings_t& lexer_settings);

    /// Reads a token.
    /// @return false at the end of the line and on a failure
    /// @throws ko::exception_t a string literal is not closed
    bool next();

    /// The token read last, and what it calls if it is a call.
    lexeme_t lexeme{};
    callee_t callee;
    /// The message of a failure; empty without one.
    std::string error;

    /// Where the next token is looked for.
    std::size_t position_get() const { return position; }
    std::string_view text_of(const lexeme_t& token) const {
        return {line + token.begin, token.size};
    }

private:
    /// What the last token was: it tells unary from binary "+" and "-".
    enum class previous_e { none, open, close, separator, operand, operation };

    bool token();
    bool made(item_e kind, std::size_t begin, previous_e previous);
    bool mark(item_e kind, previous_e previous);
    bool sign();
    bool assignment();
    bool operation();
    bool operation_made(operator_id_t id, std::size_t length, previous_e previous);
    bool quoted();
    bool name();
    bool callee_find(std::string_view name);
    bool zero();
    bool number();
    bool fraction(std::size_t begin, std::size_t digits, unsigned value);
    bool integer_made(std::size_t begin);
    bool real_made(std::size_t begin);

    bool fail(std::string message);
    bool fail_unidentified(char c);

    const lexer_settings_t& settings;
    const start_table_t& starts;
    const char* const line; ///< ends with a character that is in no table
    const std::size_t size;
    std::size_t position = 0;
    std::size_t unwatched = tokens_unwatched_max;
    previous_e last = previous_e::none;
};

/// Appends a blank to the text of `syntax` and fills in the items of that line.
///
/// On a failure and after an exception the items made so far are there.
/// @return false with the message in `error`
/// @throws ko::exception_t a string literal is not closed
bool line_lex(syntax_t& syntax, const lexer_settings_t& settings, std::string& error);

} // namespace ko::alg

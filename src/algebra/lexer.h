/// @file
/// The lexer: turns a line of expression text into a list of tokens.
///
/// It is a state machine. A state takes one token, or one part of it, from the line and names the
/// next state. A blank that is appended to the line ends every number and name, so that a state
/// may read the character after its last one and put it back.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "algebra/function_table.h"
#include "algebra/token.h"

namespace ko::alg {

/// What an evaluator lets the lexer and the parser know.
struct lexer_settings_t {
    const function_table_t& functions; ///< names in these become calls
    bool numeric_only;                 ///< names and commas are skipped, "=" is refused
};

/// Reads the prefix of `text` that is an integer, as "%i" does on the target: decimal, octal
/// after "0", hexadecimal after "0x" or "0X"; too large a number becomes 2147483647.
/// @return false when there is no digit
bool int_convert(const std::string& text, int& value);

/// Reads the prefix of `text` that is a float in decimal notation, rounded once; too large a
/// number becomes infinity, too small a one 0.
/// @return false when there is no number
bool float_convert(const std::string& text, float& value);

/// Lexes one line.
///
/// It refers to the line, the list and the error text, which belong to the caller. On a failure
/// and after an exception the tokens made so far are in the list.
class lexer_t {
public:
    /// Appends a blank to `source`.
    lexer_t(std::string& source, const lexer_settings_t& lexer_settings, list_t& target,
            std::string& error);

    /// Appends the tokens of the line to the list.
    /// @return false with the message in the error text
    /// @throws ko::exception_t a string literal is not closed
    bool run();

private:
    friend struct lexer_probe_t;

    /// What the last token was: it tells unary from binary "+" and "-".
    enum class previous_e { none, open, close, separator, operand, operation };

    bool nextc_test() const;
    void nextc_get();
    void nextc_putback();

    bool unknown();
    bool string_literal();
    bool label();
    bool floatint();
    bool floatstate();
    bool exponent();
    bool hexoctal();
    bool hex();
    bool octal();

    bool convert_int();
    bool convert_float();
    bool convert_string();

    bool dispatch();
    bool zero();
    bool number();
    bool name();
    bool comma();
    bool operation();
    bool sign();
    bool assignment();
    bool blank(previous_e kind);
    bool quoted();

    bool fail(const std::string& message);
    bool fail_unidentified();
    bool append(std::unique_ptr<token_t> token, previous_e kind);
    /// Appends the characters from the current position on that are in `members` to the buffer.
    template <class T> void take_while(const T& members);

    const lexer_settings_t& settings;
    list_t& tokens;
    std::string& parse_error;
    std::string& line;
    std::size_t position = 0;
    char current = 0;
    std::string buffer; ///< text of the token that is being read
    char quote = '"';
    previous_e previous_kind = previous_e::none;
    bool (lexer_t::*state)() = &lexer_t::unknown; ///< null at the end of the line
};

} // namespace ko::alg

/// @file
/// The lexer: turns a line of expression text into a row of tokens.
///
/// It is a plain loop: the character at hand tells the kind of token, and a function of that kind
/// takes its run of characters. A blank that is appended to the line ends every number and name,
/// so that no function has to ask for the end of the line but that of strings. Nothing is copied:
/// a token refers to its part of the line.
#pragma once

#include <string>
#include <string_view>

#include "algebra/budget.h"
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

/// Appends a blank to the text of `syntax` and fills in the items of that line.
///
/// On a failure and after an exception the items made so far are there.
/// @return false with the message in `error`
/// @throws ko::exception_t a string literal is not closed
bool line_lex(syntax_t& syntax, const lexer_settings_t& settings, std::string& error);

} // namespace ko::alg

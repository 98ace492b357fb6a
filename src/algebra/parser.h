/// @file
/// The parser: binds a list of tokens into one tree, in place.
///
/// A token binds by taking its neighbours out of the list. The order is fixed before the first
/// one binds: the deepest parenthesis first, within it the strongest token, among equals the
/// leftmost. Binding changes neither the depth nor the strength of a token that is still unbound,
/// so one sort gives the order in which repeated searches for the greatest token would find them.
#pragma once

#include <string>

#include "algebra/lexer.h"
#include "algebra/token.h"

namespace ko::alg {

/// Lexes and binds a line.
/// @param line gets a blank appended
/// @param tokens receives the tokens: the root alone on success
/// @param error receives the message of a failure
/// @return true on success
/// @throws ko::exception_t a string literal is not closed
bool line_parse(std::string& line, const lexer_settings_t& settings, list_t& tokens,
                std::string& error);

} // namespace ko::alg

/// @file
/// The parser: binds the tokens of a line into one tree, in place.
///
/// A token binds by taking its neighbours out of the chain of tokens. The order is fixed before
/// the first one binds: the deepest parenthesis first, within it the strongest token, among
/// equals the leftmost. Binding changes neither the depth nor the strength of a token that is
/// still unbound, so one sort gives the order in which repeated searches for the greatest token
/// would find them. Strengths are few and depths no more than parentheses, so the sort counts
/// instead of comparing: its cost grows with the length of the line alone.
#pragma once

#include <string>
#include <vector>

#include "algebra/lexer.h"
#include "algebra/syntax.h"

namespace ko::alg {

/// Memory for the order of binding, which a caller may keep from one line to the next.
struct parser_room_t {
    std::vector<place_t> order;
    std::vector<place_t> sorted;
    std::vector<place_t> counts;
};

/// Lexes and binds a line.
/// @param syntax its text is the line and gets a blank appended; receives the tokens: the root
///        alone on success, else what the failure left, side by side
/// @param error receives the message of a failure
/// @param failed receives the place of the item that failed to bind, if that is what failed
/// @return true on success
/// @throws ko::exception_t a string literal is not closed
bool line_parse(syntax_t& syntax, const lexer_settings_t& settings, parser_room_t& room,
                std::string& error, place_t& failed);

/// @name Messages of calls, the "%s" of which stays as it is
/// @{
const char* message_of_missing_arguments(const callee_t& callee);
const char* message_of_unbound_arguments(const callee_t& callee);
/// @}
/// The message of an operand that is missing or, where `is_missing` is false, unbound.
std::string message_of_operand(const operator_t& row, unsigned operand, bool is_missing);

/// Whether a call takes the token behind it as its arguments. A function that may go without
/// arguments takes a group in parentheses only. For script functions, their parameters tell.
enum class taking_e { nothing, arguments, group_only };
taking_e taking_of(const callee_t& callee);

} // namespace ko::alg

#include "algebra/parser.h"

#include <algorithm>
#include <vector>

namespace ko::alg {

namespace {

using position_t = std::list<token_t*>::iterator;

bool is_mark(const token_t& token, char mark) {
    return token.text.size() == 1 && token.text.front() == mark;
}

position_t remove(list_t& tokens, position_t position) {
    delete *position;
    return tokens.erase(position);
}

/// Gives every token its depth and removes parentheses and colons.
/// @return false when the parentheses do not match in number
bool depths_set(list_t& tokens) {
    int depth = 0;
    for (position_t position = tokens.begin(); position != tokens.end();) {
        token_t& token = **position;
        const bool opens = is_mark(token, '(');
        const bool closes = is_mark(token, ')');
        if (token.is_string() || !(opens || closes || is_mark(token, ':'))) {
            token.depth = depth;
            ++position;
            continue;
        }
        depth += (opens ? 1 : 0) - (closes ? 1 : 0);
        position = remove(tokens, position);
    }
    return depth == 0;
}

/// String literals "," go too; callers rely on it.
void commas_remove(list_t& tokens) {
    for (position_t position = tokens.begin(); position != tokens.end();) {
        position = is_mark(**position, ',') ? remove(tokens, position) : std::next(position);
    }
}

std::vector<position_t> binding_order(list_t& tokens) {
    std::vector<position_t> order;
    for (position_t position = tokens.begin(); position != tokens.end(); ++position) {
        if ((*position)->unbound != 0) {
            order.push_back(position);
        }
    }
    std::stable_sort(order.begin(), order.end(),
                     [](position_t a, position_t b) { return **a > **b; });
    return order;
}

bool bind(list_t& tokens, std::string& error) {
    for (position_t position : binding_order(tokens)) {
        if (!(*position)->construct(tokens, position, error)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool line_parse(std::string& line, const lexer_settings_t& settings, list_t& tokens,
                std::string& error) {
    if (!lexer_t(line, settings, tokens, error).run()) {
        return false;
    }
    if (!depths_set(tokens)) {
        error = "unmatched parenthesis";
        return false;
    }
    if (settings.numeric_only) {
        commas_remove(tokens);
    }
    if (!bind(tokens, error)) {
        return false;
    }
    if (tokens.size() != 1) {
        error = "syntax error in " + line + " -- not enough operators";
        return false;
    }
    return true;
}

} // namespace ko::alg

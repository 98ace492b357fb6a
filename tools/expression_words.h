/// @file
/// The names in the text of an expression, and where its tokens do not fit together.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

/// What an expression does with a name.
enum class word_use_t {
    read,  ///< the value of a variable
    set,   ///< the left side of "="
    call,  ///< a function
    quoted ///< stands in a string, which "defined", "assign" and the like may take as a name
};

struct word_t {
    std::string name;
    word_use_t use;
    std::size_t offset; ///< of its first byte in the expression
};

/// The names of an expression, in order. It need not parse.
std::vector<word_t> expression_words(const std::string& expression);

/// The byte of the first token that does not fit to what stands before it: a parenthesis that is
/// closed without being open, an operand right behind another one, or a call of what is no
/// function; `npos` when there is none.
/// @param functions what can be called, in ascending order
std::size_t misfit_find(const std::string& expression, const std::vector<std::string>& functions);

} // namespace tool

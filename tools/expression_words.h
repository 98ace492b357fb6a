/// @file
/// The names in the text of an expression.
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

} // namespace tool

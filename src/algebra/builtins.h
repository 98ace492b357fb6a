/// @file
/// The built-in functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "algebra/function.h"
#include "algebra/grammar.h"
#include "algebra/number.h"
#include "algebra/variables.h"

namespace ko::alg {

/// What a built-in function gets.
struct builtin_call_t {
    result_t* arguments;
    const variables_t& variables;
    const output_t& output;
};

/// Largest number of arguments of a built-in function.
constexpr int builtin_arguments_max = 3;

/// A built-in function; constant data.
struct builtin_t {
    std::string_view name;
    /// The quick way for floats alone, which may give any of the floats that are not numbers;
    /// null where the next one is. A function of one argument leaves the other one alone.
    float (*of_reals)(float a, float b);
    /// The quick way for numbers, which makes a float of floats; may be null.
    number_t (*of_numbers)(number_t a, number_t b);
    /// The general way; null where the machine does the work.
    result_t (*apply)(const builtin_call_t& call);
    int count; ///< of arguments
    opcode_e opcode = opcode_e::builtin;
    bool changes = false; ///< whether it may change variables
};

/// The table.
extern const builtin_t builtins[];

/// Length of the shortest name.
constexpr std::size_t builtin_name_min = 3;

/// Looks a name up that is long enough to be one.
const builtin_t* builtin_search(std::string_view name);

/// @return the built-in function of that name, or null
inline const builtin_t* builtin_find(std::string_view name) {
    return name.size() < builtin_name_min ? nullptr : builtin_search(name);
}

/// Appends the names of the built-in functions.
void builtin_names_get(std::vector<std::string>& out);

/// The text of an argument that must be a string.
/// @throws ko::exception_t `message` when it is none
const std::string& text_argument(const result_t& argument, const char* message);

} // namespace ko::alg

/// @file
/// Variables that are set from outside of a document: "NAME=VALUE".
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "algebra/algebra.h"

namespace tool {

/// How the text behind "=" is read.
enum class value_form_t {
    guessed,   ///< a number where printing it gives the same characters back, else a text
    text,      ///< as it is
    expression ///< evaluated
};

/// A variable and its value as they were written.
struct definition_t {
    std::string name;
    std::string value;
    value_form_t form = value_form_t::guessed;
};

/// A definition that cannot be used; `what()` says why.
class definition_error_t : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Splits a text at its first "=".
/// @throws definition_error_t no "=", or before it something that no expression can read: what is
///         no name, or the name of a function of `algebra`
definition_t definition_read(const std::string& text, value_form_t form);

/// The value of a definition.
/// @param algebra evaluates expressions
/// @throws ko::exception_t an expression that fails
ko::alg::result_t definition_value(ko::alg::algebra_t& algebra, const definition_t& definition);

/// Whether a guessed value is a number.
bool is_number(const std::string& value);
/// Whether a value looks like a number, whatever it is taken as: "12", "007", "1.10".
bool looks_like_number(const std::string& value);

/// Whether a text can name a variable: letters, digits and "_", no digit first, no function.
bool is_variable_name(const std::string& text);
/// Whether a built-in function has that name.
bool is_function_name(const std::string& text);
/// The names of the built-in functions, sorted.
const std::vector<std::string>& function_names();

} // namespace tool

/// @file
/// The evaluator as a calculator: statements in, values out.
#pragma once

#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "statement_reader.h"

namespace tool {

/// Evaluates statements and shows the value of each, or what is wrong with it.
///
/// Values go to standard output, messages to standard error.
class calculator_t {
public:
    ko::alg::algebra_t& algebra_get() { return algebra; }

    /// Evaluates statements up to the first that fails.
    /// @param place stands before a message: "file:" with the line behind it, or nothing
    /// @return whether all succeeded
    /// @throws ko::exception_t when standard output cannot be written
    bool evaluate(const std::vector<statement_t>& statements, const std::string& place);

    /// Carries out a word that is a command for the calculator itself: "help", "vars",
    /// "functions", "macros". @return false when it is none, or a variable of that name is set
    bool command(const std::string& word);

    /// The names that begin with a text: variables, functions, macros and commands.
    std::vector<std::string> names_starting(const std::string& start) const;

private:
    ko::alg::algebra_t algebra;
};

} // namespace tool

/// @file
/// The expressions of a configuration.
///
/// An expression in a loop is evaluated again and again, and parsing it takes longer than
/// evaluating it. So the programs of the last texts are kept by text. A program depends on the
/// functions and macros of the evaluator: its environment. That changes only through
/// `algebra_get`, and when it has changed, all programs are dropped. What is kept is bounded in
/// number and size, and is dropped as a whole where a new text finds no room. While a kept
/// program runs, nothing is kept or dropped: a host function may evaluate meanwhile. The text of
/// an attribute stays where it is from pass to pass, so that its program is looked for first
/// where the last text of that address had its own; whether it is the same text is seen from its
/// bytes.
///
/// A number is not parsed: it is its own value, as long as no host has changed the evaluator.
/// Lists of numbers are assigned without parsing, too, once a number has been assigned to the
/// same name by the evaluator: the name then is that of a variable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "algebra/algebra.h"
#include "algebra/identity.h"
#include "algebra/variables.h"

namespace ko::xpp {

/// A variable that is assigned to again and again, and its place, which is found once.
struct assigned_t {
    std::string name;
    alg::cell_t* cell = nullptr;
    std::uint64_t generation = 0; ///< of the variables when `cell` was found
    alg::family_ptr_t family;     ///< that the generation belongs to
};

/// The name that an expression of the form "name = ..." assigns to; empty for others.
std::string assigned_name(const std::string& expression);

/// Evaluates expressions with one evaluator.
class expressions_t {
public:
    /// Evaluates an expression.
    /// @throws ko::exception_t what the evaluator reports
    alg::result_t evaluate(const std::string& text);

    /// Evaluates "name = piece", which is not kept: a piece seldom comes again.
    /// @throws ko::exception_t what the evaluator reports
    void assign(const std::string& name, const std::string& piece);

    /// Assigns a number.
    void assign(assigned_t& variable, int value);

    /// Evaluates an expression as `algebra_t::evaluate_safe` does, line of diagnosis included.
    /// @param value receives the text of the value
    /// @param message receives why there is none
    /// @return whether there is one
    bool evaluate_safe(const std::string& text, std::string& value, std::string& message);

    /// The evaluator, to assign variables and to read them.
    alg::algebra_t& variables_get() { return algebra; }
    /// The evaluator, for whatever its host does to it.
    alg::algebra_t& algebra_get();

private:
    using environment_t = std::array<std::uint64_t, 4>;

    /// A kept program.
    struct recent_t {
        const std::string* text = nullptr;
        const alg::list_t* program = nullptr;
    };

    alg::result_t run(const alg::list_t& program);
    void environment_check();
    void programs_drop();
    const alg::list_t* program_find(const std::string& text);
    const alg::list_t* program_make(const std::string& text, alg::list_t& own);
    const alg::list_t* program_keep(const std::string& text);

    alg::algebra_t algebra;
    std::unordered_map<std::string, alg::list_t> programs;
    std::array<recent_t, 64> recent; ///< by the addresses of texts
    std::size_t kept_bytes = 0;      ///< length of all texts in `programs`
    assigned_t number;               ///< a variable that numbers can be assigned to
    unsigned running = 0;            ///< evaluations in progress
    bool shared = false;             ///< whether a host may change the evaluator
    environment_t environment = {};  ///< that `programs` were parsed in
    alg::family_ptr_t family;        ///< of the environment; null before it was looked at
};

} // namespace ko::xpp

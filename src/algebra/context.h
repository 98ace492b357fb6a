/// @file
/// What a running program may touch of its evaluator.
///
/// The rooms below the facade know an evaluator as its context. The two doors upwards are at the
/// end: from an `algebra_t` to its context, and to a copy that a host function can be given.
#pragma once

#include <memory>
#include <string>

#include "algebra/budget.h"
#include "algebra/builtins.h"
#include "algebra/function_table.h"
#include "algebra/identity.h"
#include "algebra/macro_table.h"
#include "algebra/nesting.h"
#include "algebra/unit.h"
#include "algebra/variables.h"

namespace ko::alg {

class algebra_t;
class machine_t;

/// The state of an evaluator.
struct context_t {
    explicit context_t(algebra_t& evaluator);
    /// A copy of all but the numeric-only flag and the parse error, for another evaluator.
    context_t(algebra_t& evaluator, const context_t& other);
    context_t(const context_t&) = delete;
    context_t& operator=(const context_t&) = delete;
    ~context_t();

    /// What translates and runs programs here. Made when there is first something to do.
    machine_t& machine_get() { return machine == nullptr ? machine_make() : *machine; }
    /// The value of a variable.
    /// @throws ko::exception_t there is none, and the resolver knows none
    result_t variable_get(const std::string& name) const;
    /// Asks the resolver. @return false where it does not know the name, or there is none
    bool resolve(const std::string& name, result_t& value) const;
    /// True while the host's resolver or output runs for an evaluation that this evaluator takes
    /// part in.
    bool is_lent() const { return lent || (drawn != nullptr && drawn->lent); }
    /// True while an evaluation goes on that this evaluator takes part in.
    bool is_in_use() const { return lent || drawn != nullptr; }
    /// Writes a line of diagnosis to the output. What it tells of is on its way to the caller,
    /// so a line that cannot be written is left out.
    void line_write(const std::string& line) const noexcept;

    algebra_t* owner;    ///< moves with the state
    family_ptr_t family; ///< of the tables; never null
    variables_t variables;
    macro_table_t macros;
    function_table_t functions;
    bool numeric_only = false;
    std::string parse_error;
    resolver_t resolver;
    output_t output;

    unit_ptr_t program; ///< the evaluator's own; null when there is none
    nesting_t nesting;
    budget_t budget;
    budget_t* drawn = nullptr; ///< the budget of the evaluation that runs; null when none does
    mutable bool lent = false; ///< to a callback of the host, while no evaluation runs

private:
    machine_t& machine_make();

    std::unique_ptr<machine_t> machine; ///< null until it is first used
};

/// The time during which a callback of the host runs that is not given the evaluator, and must
/// not use it: a program may be in the middle of an instruction.
class lending_t {
public:
    explicit lending_t(const context_t& context);
    lending_t(const lending_t&) = delete;
    lending_t& operator=(const lending_t&) = delete;
    ~lending_t();

private:
    bool& lent;
    const bool before;
};

/// The context of an evaluator.
context_t& context_of(algebra_t& algebra);

/// An evaluator with the functions, macros and settings of `source`, and without variables.
std::shared_ptr<algebra_t> evaluator_like(const context_t& source);

} // namespace ko::alg

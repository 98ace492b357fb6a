/// @file
/// The calculator: the quick way through programs that need nothing but numbers, beside the
/// machine, which takes any program.
///
/// A program that runs again gets a calculation: its code once more, with three addresses to a
/// step instead of a stack. The addresses are registers: the literals first, then the variables,
/// which are all read when the calculation begins, then what it computes. A leaf costs no step.
///
/// A calculation changes nothing that anyone can see, so it may give up anywhere: at a text, an
/// unknown variable, a division by zero, a limit. The machine then runs the program from its
/// beginning, as though nothing had been tried. Whatever is rare or fails is left to the machine.
///
/// Where the variables are floats and nothing else can come of them, a second loop does the steps
/// without a look at types. What is not a number is not looked for on the way either: all that is
/// made of it is none, but what a function chooses and what is compared, for which it is all the
/// same which one it is. So the value tells, and then the first loop begins anew.
///
/// A script function can be called whose body is a calculation and names nothing but its
/// parameters: it gets registers of its own in the window.
#pragma once

#include <cstdint>
#include <vector>

#include "algebra/budget.h"
#include "algebra/calculation.h"
#include "algebra/function_table.h"
#include "algebra/macro_table.h"
#include "algebra/nesting.h"
#include "algebra/unit.h"
#include "algebra/variables.h"

namespace ko::alg {

/// What a calculation reads of the state of an evaluator, which owns it all.
struct calculator_state_t {
    const family_ptr_t& family;
    const variables_t& variables;
    const function_table_t& functions;
    const macro_table_t& macros;
    const nesting_t& nesting;
    const budget_t& budget;
    budget_t* const& drawn; ///< the budget of an evaluation that runs; null when none does
};

/// Runs the calculations of one evaluator. Used by one thread.
class calculator_t {
public:
    explicit calculator_t(const calculator_state_t& state) : base(state) {}

    /// Computes the value of a program, outside of any other evaluation.
    /// @param bodies identity of the collection of bodies that links of calls must lead to
    /// @return false when it has given up, for now or for good
    bool run(unit_t& unit, std::uint64_t bodies, number_t& value) {
        if (unit.rest != 0) {
            --unit.rest;
            return false;
        }
        return is_outermost() && try_run(unit, bodies, value);
    }
    /// The same with floats alone, for a unit that is quick.
    /// @return the value; not a number where it has given up, for now
    float run_reals(unit_t& unit) const;

private:
    using step_t = calculation_t::step_t;

    /// A program that runs, or goes on when a body has its value.
    struct activation_t {
        unit_t* unit;
        const step_t* at;
        number_t* registers;
    };

    bool is_outermost() const { return base.drawn == nullptr && base.nesting.is_plain(); }
    bool try_run(unit_t& unit, std::uint64_t bodies, number_t& value);
    void give_up(unit_t& unit);
    bool names_load(unit_t& unit);
    bool reals_load(unit_t& unit) const;
    static float reals_run(calculation_t& calculation);
    const cell_t* name_find(const unit_t& unit, name_link_t& link) const;
    static bool names_are_plain(const unit_t& unit);
    bool compute(unit_t& unit, number_t& value);
    bool step_do(activation_t& now, number_t a);
    void give_back(activation_t& now, number_t value);
    void links_check();
    unit_t* body_find(unit_t& caller, const step_t& step) const;
    bool call(activation_t& now);
    bool may_go_on(const program_t& program);

    const calculator_state_t base;
    family_ptr_t family; ///< of the environment
    environment_t environment = {0, 0, 0};
    std::uint64_t bodies_identity = 0;
    std::uint64_t bodies_checked = 0;
    std::uint64_t links_number = 1; ///< changes with what the links of calls depend on
    std::size_t depth = 0;          ///< of the evaluation
    std::vector<activation_t> calls;
    std::vector<number_t> window; ///< never moves while a calculation runs
    std::size_t window_used = 0;
    std::uint64_t steps = 0;
};

} // namespace ko::alg

/// @file
/// Counts how many evaluations the current one is nested in.
///
/// The count goes on in the evaluators that are made on the way. An example, where `f` is a host
/// function that copies the evaluator it is given and evaluates "f()" on the copy:
///
///     algebra.evaluate("f()")            depth 0, no call: no level is added
///       f is called                      the evaluator is in a call of "f"
///         copy(algebra)                  the copy has that call, at depth 0, as its origin
///         copy.evaluate("f()")           adds a level: the copy's depth is 0 + 1
///           f is called                  the copy is in a call of "f"
///             copy2(copy)                origin: that call, at depth 1
///             copy2.evaluate("f()")      adds a level: 1 + 1; and so on, up to the limit
///       f has returned                   the call is over: what is left of the copies counts
///                                        from 0 again
///
/// - Calls of script functions and of the built-in `evaluate` and `assign` add a level each.
/// - An evaluation adds a level when a function has begun it: when its evaluator is in a call, or
///   has an origin that is still alive.
/// - An evaluator to which a copy of itself is assigned in the call is no copy: its own depth
///   counts the call.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "algebra/budget.h"

namespace ko::alg {

/// What counts a level; names itself in the message.
enum class nested_e { script, evaluation, assignment, host };

/// The place of one evaluator among nested evaluations. Used by one thread.
class nesting_t {
public:
    /// A call that evaluators were copied in.
    struct origin_t {
        unsigned depth;
        std::string function;
        const nesting_t* caller; ///< to compare only; it may be gone
        budget_t* budget;        ///< that the call draws on
    };
    /// Leads to an origin as long as the call lasts.
    using origin_ptr_t = std::weak_ptr<const origin_t>;

    nesting_t() = default;
    /// The place of a copy that is made in the call `taken`, if that leads to one.
    explicit nesting_t(origin_ptr_t taken) noexcept
        : has_origin(!taken.expired()), origin(std::move(taken)) {}
    nesting_t(const nesting_t&) = delete;
    nesting_t& operator=(const nesting_t&) = delete;

    /// The time during which an evaluator calls a function.
    class call_t {
    public:
        call_t(nesting_t& caller, const std::string& name, budget_t& budget)
            : state(caller), outer(std::exchange(caller.called, &name)),
              outer_budget(std::exchange(caller.called_budget, &budget)),
              outer_origin(std::move(caller.call_origin)) {}
        call_t(const call_t&) = delete;
        call_t& operator=(const call_t&) = delete;
        ~call_t() {
            state.called = outer;
            state.called_budget = outer_budget;
            if (state.call_origin != outer_origin) {
                state.call_origin = std::move(outer_origin);
            }
        }

    private:
        nesting_t& state;
        const std::string* const outer;
        budget_t* const outer_budget;
        std::shared_ptr<const origin_t> outer_origin;
    };

    /// Number of evaluations that the current one is nested in.
    unsigned depth_get() const { return has_origin ? depth_with_origin() : depth; }
    /// Makes the evaluations here nested in `outer` others.
    void depth_set(unsigned outer) { depth = outer; }
    void enter() { ++depth; }
    void leave() { --depth; }

    /// Number of levels that an evaluation which begins now adds: 1 when a function begins it.
    /// @throws ko::exception_t the limit of `limits` is exceeded
    unsigned levels_of_evaluation(const limits_t& limits) const {
        return is_plain() ? 0 : levels_of_nested(limits);
    }
    /// What becomes the origin of evaluators that are copied from this one now.
    origin_ptr_t origin_for_copy() const { return called == nullptr ? origin : origin_of_call(); }
    /// Becomes part of the call `taken`, if that leads to one, but of none of its own.
    void origin_take(const origin_ptr_t& taken) noexcept;
    /// The same where only variables are copied, which leaves the call of an evaluator alone.
    void origin_take_unless_called(const nesting_t& source);
    /// The budget of the call that this evaluator was copied in, or null.
    budget_t* origin_budget() const { return has_origin ? budget_of_origin() : nullptr; }
    /// True where neither a call nor an origin counts.
    bool is_plain() const { return called == nullptr && !has_origin; }

    /// Lets an evaluation begin that is nested in `depth` others.
    /// @throws ko::exception_t the limit is exceeded
    static void check(unsigned depth, const limits_t& limits, nested_e kind,
                      const std::string& name) {
        if (depth >= limits.nesting && limits.nesting != 0) {
            fail(limits, kind, name);
        }
    }

private:
    [[noreturn]] static void fail(const limits_t& limits, nested_e kind, const std::string& name);
    budget_t* budget_of_origin() const;
    unsigned depth_with_origin() const;
    unsigned levels_of_nested(const limits_t& limits) const;
    origin_ptr_t origin_of_call() const;

    unsigned depth = 0; ///< without that of the origin
    bool has_origin = false;
    /// Name of the function that is being called, and the budget that the call draws on.
    const std::string* called = nullptr;
    budget_t* called_budget = nullptr;
    /// The current call as an origin, once it has been copied in; lives as long as the call.
    mutable std::shared_ptr<const origin_t> call_origin;
    origin_ptr_t origin;
};

} // namespace ko::alg

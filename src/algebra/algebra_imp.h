/// @file
/// The private state of the evaluator.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "algebra/function_table.h"
#include "algebra/macro_table.h"
#include "algebra/variables.h"

namespace ko::alg {

/// What an evaluator owns.
///
/// The program is shared with the evaluation that runs it, so that a host function may parse
/// another one meanwhile.
///
/// Nested evaluations are counted across the evaluators that take part. One that is made for a
/// call begins with the depth of its caller. A copy that a host function makes, be it only of
/// the variables, knows the call that it was made in as its origin, and adds the depth of that
/// for as long as the call lasts. An evaluator to which such a copy of itself is assigned in the
/// call is no copy: its own depth counts the call.
class algebra_t::imp_t {
public:
    /// Carries the value of the built-in `return` to the evaluation that it ends.
    struct return_exception_t {
        result_t value;
    };

    explicit imp_t(algebra_t& evaluator);
    imp_t(algebra_t& evaluator, const imp_t& other);
    imp_t& operator=(const imp_t& other);

    /// The state of an evaluator.
    static imp_t& of(algebra_t& algebra) { return *algebra.imp; }

    /// Parses the first statement of `text` into `tokens`.
    bool parse(const std::string& text, list_t& tokens);
    /// Parses the first statement of `text` into the program.
    bool parse(const std::string& text);
    void program_clear();

    result_t evaluate();
    result_t evaluate(const list_t& tokens);
    void eval_and_assign(const std::string& name, const std::string& expression);
    /// Replaces the variables by those of `other`.
    void memory_copy(const imp_t& other);

    /// Takes from the caller of a script function all that the function can see.
    void take_visible(const imp_t& caller);
    /// Makes the evaluations here nested in the current one of `caller`.
    void nest_in(const imp_t& caller) { depth = caller.depth_get() + 1; }
    /// Number of evaluations that the current one is nested in.
    unsigned depth_get() const;

    variables_t memory;
    macro_table_t macros;
    function_table_t functions;
    bool numeric_only = false;
    std::string parse_error;

private:
    friend class call_scope_t;

    /// The call that an evaluator was copied in.
    struct origin_t {
        unsigned depth;
        std::string function;
        const imp_t* caller; ///< to compare only; it may be gone
    };

    std::weak_ptr<const origin_t> origin_for_copy() const;
    void origin_take(const std::weak_ptr<const origin_t>& other);
    unsigned call_levels() const;
    /// Reads one statement; false when it is blank.
    bool statement_get(const std::string& text, std::string& line) const;
    bool bind(std::string& line, list_t& tokens);
    result_t run(const list_t& tokens);

    algebra_t& owner;
    std::shared_ptr<list_t> program;

    unsigned depth = 0; ///< without that of the origin
    /// Name of the function that this evaluator is calling, or null.
    const std::string* called = nullptr;
    /// The current call as an origin, once it has been copied in; lives as long as the call.
    mutable std::shared_ptr<const origin_t> call_origin;
    std::weak_ptr<const origin_t> origin;
};

/// The time during which an evaluator calls a function.
class call_scope_t {
public:
    call_scope_t(algebra_t& algebra, const std::string& name);
    call_scope_t(const call_scope_t&) = delete;
    call_scope_t& operator=(const call_scope_t&) = delete;
    ~call_scope_t();

private:
    algebra_t::imp_t& state;
    const std::string* const outer;
    std::shared_ptr<const algebra_t::imp_t::origin_t> outer_origin;
};

/// Calls a script function with the values from `base` on as its arguments.
result_t script_call(algebra_t& caller, const function_t& function, std::vector<result_t>& values,
                     std::size_t base);

} // namespace ko::alg

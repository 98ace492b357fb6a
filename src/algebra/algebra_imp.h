/// @file
/// The private state of the evaluator.
#pragma once

#include <string>

#include "algebra/algebra.h"
#include "algebra/context.h"
#include "algebra/machine.h"

namespace ko::alg {

/// What an evaluator owns, and what it does with it.
class algebra_t::imp_t : public context_t {
public:
    using return_exception_t = alg::return_exception_t;

    using context_t::context_t;
    /// Becomes a copy of another one, and keeps the numeric-only flag and the parse error. A
    /// failure leaves this object as it was.
    void copy(const imp_t& other);

    /// The state of an evaluator.
    /// @throws ko::exception_t it must not be used
    static imp_t& of(const algebra_t& algebra) {
        if (algebra.imp == nullptr || algebra.imp->is_lent()) {
            fail_unusable(algebra.imp == nullptr);
        }
        return *algebra.imp;
    }

    /// Parses the first statement of `text` into `tokens`.
    bool parse(const std::string& text, list_t& tokens);
    /// Parses the first statement of `text` into the program.
    bool parse(const std::string& text);
    void program_clear();

    /// Evaluates the program in any way but the quick one.
    [[gnu::noinline]] result_t evaluate();
    result_t evaluate(const list_t& tokens);
    void eval_and_assign(const std::string& name, const std::string& expression);
    /// Replaces the variables by those of `other`.
    void memory_copy(const imp_t& other);

private:
    [[noreturn, gnu::cold]] static void fail_unusable(bool was_moved);
    unit_t& program_renew();

    unit_ptr_t spare; ///< a program that has been cleared, for its memory
};

} // namespace ko::alg

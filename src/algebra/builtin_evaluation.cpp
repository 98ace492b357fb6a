#include <iostream>
#include <utility>

#include "algebra/algebra_imp.h"
#include "algebra/builtin_functions.h"
#include "algebra/limits.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// The text of an argument that must be a string.
std::string string_of(const result_t& a, const char* message) {
    if (!a.is_string()) {
        throw exception_t(std::string(message));
    }
    return a.string_get(false, 0);
}

} // namespace

result_t func_error_f(algebra_t&, result_t a) {
    if (a.is_string()) {
        throw exception_t("algebra evaluator -- %s", a.string_get(false, 0).c_str());
    }
    throw exception_t("algebra evaluator");
}

result_t func_output_f(algebra_t&, result_t a) {
    std::cout << a << std::endl;
    return a;
}

result_t return_f(algebra_t&, result_t a) {
    throw algebra_t::imp_t::return_exception_t{std::move(a)};
}

result_t evaluate_f(algebra_t& algebra, result_t a) {
    const std::string text =
        string_of(a, "algebra_t::evaluate_f() -- non-string argument to 'evaluate'");
    const algebra_t::imp_t& caller = algebra_t::imp_t::of(algebra);
    nesting_check(caller.depth_get(), evaluate_nesting, "evaluate");
    algebra_t evaluator;
    algebra_t::imp_t::of(evaluator).nest_in(caller);
    algebra_t::imp_t::of(evaluator).memory.copy_values(caller.memory);
    return evaluator.evaluate(text);
}

result_t assign_f(algebra_t& algebra, result_t a, result_t b) {
    const std::string name = string_of(a, "algebra_t::assign_f() -- non-string value in arg 1");
    algebra.eval_and_assign(name, b.string_get(false, 6));
    return algebra.get(name);
}

result_t strlen_f(algebra_t&, result_t a) {
    const std::string text = string_of(a, "algebra_t::strlen_f() -- non-string argument passed");
    return static_cast<int>(text.size());
}

result_t defined_f(algebra_t& algebra, result_t a) {
    return algebra.find(
        string_of(a, "algebra_t::defined_f() -- non-string argument to 'defined'"));
}

result_t exists_f(algebra_t& algebra, result_t a) {
    // The message names the other function; callers rely on it.
    const std::string name =
        string_of(a, "algebra_t::exists_f() -- non-string argument to 'defined'");
    return algebra.find(name) ? algebra.get(name) : result_t(0);
}

} // namespace ko::alg

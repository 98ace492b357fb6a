/// @file
/// The built-in functions.
#pragma once

#include <string>

#include "algebra/function.h"

namespace ko::alg {

/// Finds a built-in function.
/// @return false, with `function` unchanged, when there is none of that name
bool builtin_find(const std::string& name, function_prototype_t& function);

/// @name Functions on numbers
/// @{
result_t abs_f(algebra_t& algebra, result_t a);
result_t sqrt_f(algebra_t& algebra, result_t a);
result_t sin_f(algebra_t& algebra, result_t a);
result_t cos_f(algebra_t& algebra, result_t a);
result_t tan_f(algebra_t& algebra, result_t a);
result_t max_f(algebra_t& algebra, result_t a, result_t b);
result_t min_f(algebra_t& algebra, result_t a, result_t b);
result_t pow_f(algebra_t& algebra, result_t a, result_t b);
result_t log_f(algebra_t& algebra, result_t a);
result_t log10_f(algebra_t& algebra, result_t a);
result_t floor_f(algebra_t& algebra, result_t a);
result_t ceil_f(algebra_t& algebra, result_t a);
result_t quad_f(algebra_t& algebra, result_t a, result_t b, result_t c);
/// @}

/// @name Functions that report, end or start an evaluation
/// @{
result_t func_error_f(algebra_t& algebra, result_t a);
result_t func_output_f(algebra_t& algebra, result_t a);
result_t return_f(algebra_t& algebra, result_t a);
result_t evaluate_f(algebra_t& algebra, result_t a);
result_t assign_f(algebra_t& algebra, result_t a, result_t b);
/// @}

/// @name Functions on strings and variables
/// @{
result_t strlen_f(algebra_t& algebra, result_t a);
result_t defined_f(algebra_t& algebra, result_t a);
result_t exists_f(algebra_t& algebra, result_t a);
/// @}

} // namespace ko::alg

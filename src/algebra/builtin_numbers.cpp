#include <cmath>

#include "algebra/arm_arithmetic.h"
#include "algebra/builtin_functions.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// The value of a function of the standard library at `a`.
template <class F> result_t at(const result_t& a, F function) {
    const float x = a.float_get();
    return arm::settle_nan(function(x), {x});
}

} // namespace

result_t abs_f(algebra_t&, result_t a) {
    return a.is_float() ? result_t(std::fabs(a.float_get())) : arm::absolute(a.int_get());
}

result_t sqrt_f(algebra_t&, result_t a) {
    return at(a, ::sqrtf);
}

result_t sin_f(algebra_t&, result_t a) {
    return at(a, ::sinf);
}

result_t cos_f(algebra_t&, result_t a) {
    return at(a, ::cosf);
}

result_t tan_f(algebra_t&, result_t a) {
    return at(a, ::tanf);
}

result_t max_f(algebra_t&, result_t a, result_t b) {
    return (b > a).int_get() != 0 ? b : a;
}

result_t min_f(algebra_t&, result_t a, result_t b) {
    return (b < a).int_get() != 0 ? b : a;
}

result_t pow_f(algebra_t&, result_t a, result_t b) {
    const float x = a.float_get();
    const float y = b.float_get();
    return arm::settle_nan(::powf(x, y), {x, y});
}

result_t log_f(algebra_t&, result_t a) {
    return at(a, ::logf);
}

result_t log10_f(algebra_t&, result_t a) {
    return at(a, ::log10f);
}

result_t floor_f(algebra_t&, result_t a) {
    return at(a, ::floorf);
}

result_t ceil_f(algebra_t&, result_t a) {
    return at(a, ::ceilf);
}

result_t quad_f(algebra_t&, result_t a, result_t b, result_t c) {
    const float fa = a.float_get();
    const float fb = b.float_get();
    const float fc = c.float_get();
    // One square in single and the rest in double precision; callers rely on the digits.
    const float square = fb * fb;
    const auto discriminant = static_cast<float>(
        static_cast<double>(square) - 4.0 * static_cast<double>(fa) * static_cast<double>(fc));
    if (discriminant < 0.0F) {
        throw exception_t("quadratic -- non-real result");
    }
    return arm::settle_nan((::sqrtf(discriminant) - fb) / (fa + fa), {fb, fa, fc});
}

} // namespace ko::alg

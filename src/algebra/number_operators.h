/// @file
/// The operators on numbers, as the machine, whose numbers are slots, and the calculator share
/// them; those on integers alone stand in the table of operators.
///
/// Floats are computed at once; one that is not a number is computed again, so that it becomes
/// the one that ARM makes.
#pragma once

#include <cmath>

#include "algebra/arm_arithmetic.h"
#include "algebra/grammar.h"

namespace ko::alg::numbers {

/// What ARM makes of a result that is not a number.
float settled(float value, float x, float y);

template <class N, class I, class F>
inline N arithmetic(const N& a, const N& b, I of_ints, F of_floats) {
    const bool are_reals = N::are_reals(a, b);
    if (!are_reals && N::are_integers(a, b)) {
        return N::of_int(of_ints(a.int_view(), b.int_view()));
    }
    const float x = are_reals ? a.float_view() : a.float_of_number();
    const float y = are_reals ? b.float_view() : b.float_of_number();
    const float value = of_floats(x, y);
    return N::of_float(std::isnan(value) ? settled(value, x, y) : value);
}

template <class N> inline N add(const N& a, const N& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::add(x, y); },
        [](float x, float y) { return x + y; });
}

template <class N> inline N subtract(const N& a, const N& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::subtract(x, y); },
        [](float x, float y) { return x - y; });
}

template <class N> inline N multiply(const N& a, const N& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::multiply(x, y); },
        [](float x, float y) { return x * y; });
}

/// `b` is not 0.
template <class N> inline N divide(const N& a, const N& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::divide(x, y); },
        [](float x, float y) { return x / y; });
}

/// Whether a comparison holds.
bool holds(opcode_e opcode, int x, int y);
bool holds(opcode_e opcode, float x, float y);

/// A comparison.
template <class N> inline N compare(opcode_e opcode, const N& a, const N& b) {
    const bool is_true = N::are_integers(a, b)
                             ? holds(opcode, a.int_view(), b.int_view())
                             : holds(opcode, a.float_of_number(), b.float_of_number());
    return N::of_int(is_true ? 1 : 0);
}

template <class N> inline N negate(const N& a) {
    return a.is_integer() ? N::of_int(arm::negate(a.int_view()))
                          : N::of_float(arm::negate(a.float_view()));
}

template <class N> inline N positive(const N& a) {
    return a.is_integer() ? N::of_int(a.int_view()) : N::of_float(a.float_view());
}

} // namespace ko::alg::numbers

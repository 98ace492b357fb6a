/// @file
/// The operators on pairs of numbers, as the machine and the calculator share them.
///
/// Floats are computed at once; one that is not a number is computed again, so that it becomes
/// the one that ARM makes.
#pragma once

#include <cmath>

#include "algebra/arm_arithmetic.h"
#include "algebra/grammar.h"
#include "algebra/value_stack.h"

namespace ko::alg::numbers {

/// What ARM makes of a result that is not a number.
float settled(float value, float x, float y);

template <class I, class F>
inline slot_t arithmetic(const slot_t& a, const slot_t& b, I of_ints, F of_floats) {
    const bool are_reals = slot_t::are_reals(a, b);
    if (!are_reals && slot_t::are_integers(a, b)) {
        return slot_t::of_int(of_ints(a.int_view(), b.int_view()));
    }
    const float x = are_reals ? a.float_view() : a.float_of_number();
    const float y = are_reals ? b.float_view() : b.float_of_number();
    const float value = of_floats(x, y);
    return slot_t::of_float(std::isnan(value) ? settled(value, x, y) : value);
}

inline slot_t add(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::add(x, y); },
        [](float x, float y) { return x + y; });
}

inline slot_t subtract(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::subtract(x, y); },
        [](float x, float y) { return x - y; });
}

inline slot_t multiply(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::multiply(x, y); },
        [](float x, float y) { return x * y; });
}

/// `b` is not 0.
inline slot_t divide(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::divide(x, y); },
        [](float x, float y) { return x / y; });
}

/// A comparison.
slot_t compare(opcode_e opcode, const slot_t& a, const slot_t& b);

inline slot_t negate(const slot_t& a) {
    return a.kind() == slot_t::integer ? slot_t::of_int(arm::negate(a.int_view()))
                                       : slot_t::of_float(arm::negate(a.float_view()));
}

inline slot_t positive(const slot_t& a) {
    return a.kind() == slot_t::integer ? slot_t::of_int(a.int_view())
                                       : slot_t::of_float(a.float_view());
}

/// The operators that read both operands as integers, but a division by 0.
slot_t of_integers(opcode_e opcode, int x, int y);

} // namespace ko::alg::numbers

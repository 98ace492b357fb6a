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

template <class I, class F, class S>
inline slot_t arithmetic(const slot_t& a, const slot_t& b, I of_ints, F of_floats, S settled) {
    const bool are_reals = slot_t::are_reals(a, b);
    if (!are_reals && slot_t::are_integers(a, b)) {
        return slot_t::of_int(of_ints(a.int_view(), b.int_view()));
    }
    const float x = are_reals ? a.float_view() : a.float_of_number();
    const float y = are_reals ? b.float_view() : b.float_of_number();
    const float value = of_floats(x, y);
    return slot_t::of_float(std::isnan(value) ? settled(x, y) : value);
}

/// A comparison.
template <class C> inline slot_t relation(const slot_t& a, const slot_t& b, C holds) {
    if (slot_t::are_integers(a, b)) {
        return slot_t::of_int(holds(a.int_view(), b.int_view()) ? 1 : 0);
    }
    return slot_t::of_int(holds(a.float_of_number(), b.float_of_number()) ? 1 : 0);
}

inline slot_t add(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::add(x, y); }, [](float x, float y) { return x + y; },
        [](float x, float y) { return arm::add(x, y); });
}

inline slot_t subtract(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::subtract(x, y); },
        [](float x, float y) { return x - y; },
        [](float x, float y) { return arm::subtract(x, y); });
}

inline slot_t multiply(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::multiply(x, y); },
        [](float x, float y) { return x * y; },
        [](float x, float y) { return arm::multiply(x, y); });
}

/// `b` is not 0.
inline slot_t divide(const slot_t& a, const slot_t& b) {
    return arithmetic(
        a, b, [](int x, int y) { return arm::divide(x, y); },
        [](float x, float y) { return x / y; },
        [](float x, float y) { return arm::divide(x, y); });
}

inline slot_t compare(opcode_e opcode, const slot_t& a, const slot_t& b) {
    switch (opcode) {
    case opcode_e::less:
        return relation(a, b, [](auto x, auto y) { return x < y; });
    case opcode_e::less_equal:
        return relation(a, b, [](auto x, auto y) { return x <= y; });
    case opcode_e::greater:
        return relation(a, b, [](auto x, auto y) { return x > y; });
    case opcode_e::greater_equal:
        return relation(a, b, [](auto x, auto y) { return x >= y; });
    case opcode_e::equal:
        return relation(a, b, [](auto x, auto y) { return x == y; });
    default:
        return relation(a, b, [](auto x, auto y) { return x != y; });
    }
}

inline slot_t negate(const slot_t& a) {
    return a.kind() == slot_t::integer ? slot_t::of_int(arm::negate(a.int_view()))
                                       : slot_t::of_float(arm::negate(a.float_view()));
}

inline slot_t positive(const slot_t& a) {
    return a.kind() == slot_t::integer ? slot_t::of_int(a.int_view())
                                       : slot_t::of_float(a.float_view());
}

/// The operators that read both operands as integers, but a division by 0.
inline slot_t of_integers(opcode_e opcode, int x, int y) {
    switch (opcode) {
    case opcode_e::modulo:
        return slot_t::of_int(arm::remainder(x, y));
    case opcode_e::shift_left:
        return slot_t::of_int(arm::shift_left(x, y));
    case opcode_e::shift_right:
        return slot_t::of_int(arm::shift_right(x, y));
    case opcode_e::bit_and:
        return slot_t::of_int(x & y);
    case opcode_e::bit_or:
        return slot_t::of_int(x | y);
    case opcode_e::logical_and:
        return slot_t::of_int(x != 0 && y != 0 ? 1 : 0);
    default:
        return slot_t::of_int(x != 0 || y != 0 ? 1 : 0);
    }
}

} // namespace ko::alg::numbers

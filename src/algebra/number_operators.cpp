#include "algebra/number_operators.h"

namespace ko::alg::numbers {

namespace {

template <class C> inline slot_t relation(const slot_t& a, const slot_t& b, C holds) {
    if (slot_t::are_integers(a, b)) {
        return slot_t::of_int(holds(a.int_view(), b.int_view()) ? 1 : 0);
    }
    return slot_t::of_int(holds(a.float_of_number(), b.float_of_number()) ? 1 : 0);
}

} // namespace

float settled(float value, float x, float y) {
    return arm::settle_nan(value, {x, y});
}

slot_t compare(opcode_e opcode, const slot_t& a, const slot_t& b) {
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

slot_t of_integers(opcode_e opcode, int x, int y) {
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

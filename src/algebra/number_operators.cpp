#include "algebra/number_operators.h"

namespace ko::alg::numbers {

namespace {

template <class T> inline bool relation(opcode_e opcode, T x, T y) {
    switch (opcode) {
    case opcode_e::less:
        return x < y;
    case opcode_e::less_equal:
        return x <= y;
    case opcode_e::greater:
        return x > y;
    case opcode_e::greater_equal:
        return x >= y;
    case opcode_e::equal:
        return x == y;
    default:
        return x != y;
    }
}

} // namespace

float settled(float value, float x, float y) {
    return arm::settle_nan(value, {x, y});
}

bool holds(opcode_e opcode, int x, int y) {
    return relation(opcode, x, y);
}

bool holds(opcode_e opcode, float x, float y) {
    return relation(opcode, x, y);
}

} // namespace ko::alg::numbers

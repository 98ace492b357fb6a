#include "algebra/grammar.h"

#include "algebra/arm_arithmetic.h"

namespace ko::alg {

namespace {

constexpr shape_e prefix = shape_e::prefix;
constexpr shape_e infix = shape_e::infix;

int bits_of_both(int x, int y) {
    return x & y;
}

int bits_of_either(int x, int y) {
    return x | y;
}

int both(int x, int y) {
    return x != 0 && y != 0 ? 1 : 0;
}

int either(int x, int y) {
    return x != 0 || y != 0 ? 1 : 0;
}

} // namespace

// The formatter takes the names of operators for expressions.
// clang-format off
constexpr operator_t operators[operators_end] = {
    // spelling, shape, strength, opcode, class, function of one value, of two, of two integers
    {"-", prefix, 2, opcode_e::negate, "unary_t", &operator-, nullptr},
    {"+", prefix, 2, opcode_e::positive, "unary_t", &operator+, nullptr},
    {"!", prefix, 2, opcode_e::logical_not, "unary_t", &operator!, nullptr},
    {"*", infix, 0, opcode_e::multiply, "binary_t", nullptr, &operator*},
    {"/", infix, 0, opcode_e::divide, "binary_t", nullptr, &operator/},
    {"%", infix, 0, opcode_e::modulo, "binary_t", nullptr, nullptr, &arm::remainder},
    {"-", infix, -1, opcode_e::subtract, "binary_t", nullptr, &operator-},
    {"+", infix, -1, opcode_e::add, "binary_t", nullptr, &operator+},
    {"<<", infix, -2, opcode_e::shift_left, "binary_t", nullptr, nullptr, &arm::shift_left},
    {">>", infix, -2, opcode_e::shift_right, "binary_t", nullptr, nullptr, &arm::shift_right},
    {"<", infix, -3, opcode_e::less, "binary_t", nullptr, &operator<},
    {"<=", infix, -3, opcode_e::less_equal, "binary_t", nullptr, &operator<=},
    {">", infix, -3, opcode_e::greater, "binary_t", nullptr, &operator>},
    {">=", infix, -3, opcode_e::greater_equal, "binary_t", nullptr, &operator>=},
    {"==", infix, -4, opcode_e::equal, "binary_t", nullptr, &operator==},
    {"!=", infix, -4, opcode_e::not_equal, "binary_t", nullptr, &operator!=},
    {"&", infix, -5, opcode_e::bit_and, "binary_t", nullptr, nullptr, &bits_of_both},
    {"|", infix, -7, opcode_e::bit_or, "binary_t", nullptr, nullptr, &bits_of_either},
    {"&&", infix, -8, opcode_e::logical_and, "binary_t", nullptr, nullptr, &both},
    {"||", infix, -9, opcode_e::logical_or, "binary_t", nullptr, nullptr, &either},
    {"?:", shape_e::choice, -10, opcode_e::branch, "conditional_assignment_t", nullptr, nullptr},
    {"=", infix, -11, opcode_e::store, "assign_t", nullptr, nullptr},
    {",", infix, -13, opcode_e::no_value, "binary_t", nullptr, nullptr},
};
// clang-format on

static_assert(operators[choice_id].spelling == "?:" && operators[assign_id].spelling == "=" &&
              operators[comma_id].spelling == ",");

constexpr operator_starts_t::operator_starts_t() : by_character() {
    for (operator_id_t id = 0; id < choice_id; ++id) {
        const operator_t& row = operators[id];
        operator_start_t& start = by_character[static_cast<unsigned char>(row.spelling[0])];
        if (row.shape == shape_e::prefix) {
            start.prefix = id;
        } else if (row.spelling.size() == 1) {
            start.infix = id;
        } else {
            const unsigned i = start.pair[0] == operators_end ? 0 : 1;
            start.second[i] = row.spelling[1];
            start.pair[i] = id;
        }
    }
}

constexpr operator_starts_t operator_starts;

constexpr bool rows_stand_at_their_opcodes() {
    for (operator_id_t id = 0; id < choice_id; ++id) {
        if (static_cast<operator_id_t>(operators[id].opcode) != id) {
            return false;
        }
    }
    return true;
}
static_assert(rows_stand_at_their_opcodes());

const char* operand_name(shape_e shape, unsigned operand) {
    static constexpr const char* names[][3] = {
        {"right", nullptr, nullptr}, {"left", "right", nullptr}, {"test", "first", "second"}};
    return names[static_cast<unsigned>(shape)][operand];
}

} // namespace ko::alg

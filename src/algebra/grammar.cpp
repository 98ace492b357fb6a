#include "algebra/grammar.h"

namespace ko::alg {

namespace {

constexpr shape_e prefix = shape_e::prefix;
constexpr shape_e infix = shape_e::infix;

} // namespace

// The formatter takes the names of operators for expressions.
// clang-format off
constexpr operator_t operators[operators_end] = {
    // spelling, shape, strength, class, opcode, function of one value, of two
    {"-", prefix, 2, "unary_t", opcode_e::negate, &operator-, nullptr},
    {"+", prefix, 2, "unary_t", opcode_e::positive, &operator+, nullptr},
    {"!", prefix, 2, "unary_t", opcode_e::logical_not, &operator!, nullptr},
    {"*", infix, 0, "binary_t", opcode_e::multiply, nullptr, &operator*},
    {"/", infix, 0, "binary_t", opcode_e::divide, nullptr, &operator/},
    {"%", infix, 0, "binary_t", opcode_e::modulo, nullptr, &operator%},
    {"-", infix, -1, "binary_t", opcode_e::subtract, nullptr, &operator-},
    {"+", infix, -1, "binary_t", opcode_e::add, nullptr, &operator+},
    {"<<", infix, -2, "binary_t", opcode_e::shift_left, nullptr, &operator<<},
    {">>", infix, -2, "binary_t", opcode_e::shift_right, nullptr, &operator>>},
    {"<", infix, -3, "binary_t", opcode_e::less, nullptr, &operator<},
    {"<=", infix, -3, "binary_t", opcode_e::less_equal, nullptr, &operator<=},
    {">", infix, -3, "binary_t", opcode_e::greater, nullptr, &operator>},
    {">=", infix, -3, "binary_t", opcode_e::greater_equal, nullptr, &operator>=},
    {"==", infix, -4, "binary_t", opcode_e::equal, nullptr, &operator==},
    {"!=", infix, -4, "binary_t", opcode_e::not_equal, nullptr, &operator!=},
    {"&", infix, -5, "binary_t", opcode_e::bit_and, nullptr, &operator&},
    {"|", infix, -7, "binary_t", opcode_e::bit_or, nullptr, &operator|},
    {"&&", infix, -8, "binary_t", opcode_e::logical_and, nullptr, &operator&&},
    {"||", infix, -9, "binary_t", opcode_e::logical_or, nullptr, &operator||},
    {"?:", shape_e::choice, -10, "conditional_assignment_t", opcode_e::branch, nullptr, nullptr},
    {"=", infix, -11, "assign_t", opcode_e::store, nullptr, nullptr},
    {",", infix, -13, "binary_t", opcode_e::no_value, nullptr, nullptr},
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

static_assert(operators[static_cast<unsigned>(opcode_e::logical_or)].opcode ==
              opcode_e::logical_or);

const char* operand_name(shape_e shape, unsigned operand) {
    static constexpr const char* names[][3] = {
        {"right", nullptr, nullptr}, {"left", "right", nullptr}, {"test", "first", "second"}};
    return names[static_cast<unsigned>(shape)][operand];
}

} // namespace ko::alg

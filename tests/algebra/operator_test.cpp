// The operators on every combination of types.

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "algebra/result.h"
#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::result_t;
using test::outcome_of;
using test::shown;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float float_max = std::numeric_limits<float>::max();
constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

using unary_t = result_t (*)(const result_t&);
using binary_t = result_t (*)(const result_t&, const result_t&);

constexpr unary_t negate = ko::alg::operator-;
constexpr unary_t positive = ko::alg::operator+;
constexpr unary_t logical_not = ko::alg::operator!;
constexpr unary_t complement = ko::alg::operator~;
constexpr binary_t multiply = ko::alg::operator*;
constexpr binary_t divide = ko::alg::operator/;
constexpr binary_t modulo = ko::alg::operator%;
constexpr binary_t subtract = ko::alg::operator-;
constexpr binary_t add = ko::alg::operator+;
constexpr binary_t left_shift = ko::alg::operator<<;
constexpr binary_t right_shift = ko::alg::operator>>;
constexpr binary_t bit_and = ko::alg::operator&;
constexpr binary_t bit_xor = ko::alg::operator^;
constexpr binary_t bit_or = ko::alg::operator|;
constexpr binary_t logical_and = ko::alg::operator&&;
constexpr binary_t logical_or = ko::alg::operator||;

struct unary_case_t {
    unary_t operation;
    result_t operand;
    std::string outcome;
};

struct binary_case_t {
    binary_t operation;
    result_t left;
    result_t right;
    std::string outcome;
};

template <std::size_t N> void expect(const unary_case_t (&cases)[N]) {
    for (const unary_case_t& c : cases) {
        EXPECT_EQ(outcome_of([&] { return c.operation(c.operand); }), c.outcome)
            << "case " << &c - cases << " of " << shown(c.operand);
    }
}

template <std::size_t N> void expect(const binary_case_t (&cases)[N]) {
    for (const binary_case_t& c : cases) {
        EXPECT_EQ(outcome_of([&] { return c.operation(c.left, c.right); }), c.outcome)
            << "case " << &c - cases << " of " << shown(c.left) << ", " << shown(c.right);
    }
}

result_t of_unknown_type() {
    result_t value(1);
    value.type_set(3);
    return value;
}

} // namespace

TEST(unary_operator, minus_negates_numbers) {
    expect({{negate, 5, "(i) -5"},
            {negate, -5, "(i) 5"},
            {negate, 0, "(i) 0"},
            {negate, 1.5f, "(f) -1.5"},
            {negate, 0.0f, "(f) -0"},
            {negate, infinity, "(f) -inf"}});
}

TEST(unary_operator, minus_wraps_the_most_negative_integer) {
    EXPECT_EQ(shown(-result_t(INT_MIN)), "(i) -2147483648");
}

TEST(unary_operator, minus_takes_no_string) {
    EXPECT_THROWS(return -result_t("a"), "operator unary '-' -- illegal type");
}

TEST(unary_operator, plus_gives_the_number) {
    expect({{positive, -5, "(i) -5"}, {positive, 1.5f, "(f) 1.5"}});
}

TEST(unary_operator, plus_takes_no_string) {
    EXPECT_THROWS(return +result_t("a"), "operator unary '+' -- illegal type");
}

TEST(unary_operator, complement_inverts_an_integer) {
    expect({{complement, 0, "(i) -1"},
            {complement, 5, "(i) -6"},
            {complement, INT_MIN, "(i) 2147483647"}});
}

TEST(unary_operator, complement_takes_no_float_and_no_string) {
    expect({{complement, 1.5f, "! operator '~' -- illegal type"},
            {complement, 1.0f, "! operator '~' -- illegal type"},
            {complement, "a", "! operator '~' -- illegal type"}});
}

TEST(unary_operator, not_tests_the_integer_reading) {
    expect({{logical_not, 0, "(i) 1"},
            {logical_not, 5, "(i) 0"},
            {logical_not, 0.5f, "(i) 1"},
            {logical_not, -0.9f, "(i) 1"},
            {logical_not, 1.5f, "(i) 0"},
            {logical_not, not_a_number, "(i) 1"},
            {logical_not, infinity, "(i) 0"},
            {logical_not, "x", "(i) 1"},
            {logical_not, "1", "(i) 1"}});
}

TEST(unary_operator, refuses_an_unknown_type) {
    expect({{negate, of_unknown_type(), "! operator unary '-' -- illegal type"},
            {positive, of_unknown_type(), "! operator unary '+' -- illegal type"},
            {complement, of_unknown_type(), "! operator '~' -- illegal type"}});
}

TEST(arithmetic, of_integers_is_an_integer) {
    expect({{multiply, 6, -7, "(i) -42"},
            {divide, 7, 2, "(i) 3"},
            {divide, -7, 2, "(i) -3"},
            {divide, 7, -2, "(i) -3"},
            {divide, 0, 5, "(i) 0"},
            {subtract, 5, 8, "(i) -3"},
            {add, 5, 8, "(i) 13"}});
}

TEST(arithmetic, of_integers_wraps) {
    expect({{multiply, 65536, 65536, "(i) 0"},
            {multiply, INT_MAX, 2, "(i) -2"},
            {multiply, INT_MIN, -1, "(i) -2147483648"},
            {subtract, INT_MIN, 1, "(i) 2147483647"},
            {subtract, 0, INT_MIN, "(i) -2147483648"},
            {add, INT_MAX, 1, "(i) -2147483648"},
            {add, INT_MIN, INT_MIN, "(i) 0"}});
}

TEST(arithmetic, divides_the_most_negative_integer_by_minus_1) {
    expect({{divide, INT_MIN, -1, "(i) -2147483648"}, {modulo, INT_MIN, -1, "(i) 0"}});
}

TEST(arithmetic, with_a_float_is_a_float) {
    expect({{multiply, 2.5f, 2, "(f) 5"},
            {multiply, 2, 2.5f, "(f) 5"},
            {divide, 7.0f, 2, "(f) 3.5"},
            {divide, 7, 2.0f, "(f) 3.5"},
            {subtract, 1, 0.25f, "(f) 0.75"},
            {add, 1, 0.5f, "(f) 1.5"},
            {add, 0.5f, 0.5f, "(f) 1"}});
}

TEST(arithmetic, with_a_float_has_single_precision) {
    expect({{add, 16777216.0f, 1, "(f) 1.67772e+07"}});
    EXPECT_EQ((result_t(16777216.0f) + result_t(1)).float_get(), 16777216.0f);
    EXPECT_EQ((result_t(16777217) + result_t(0.0f)).float_get(), 16777216.0f);
}

TEST(arithmetic, on_floats_overflows_to_infinity) {
    expect({{multiply, float_max, 2, "(f) inf"},
            {multiply, float_max, -2, "(f) -inf"},
            {add, float_max, float_max, "(f) inf"},
            {divide, float_max, 0.5f, "(f) inf"},
            {divide, 1, infinity, "(f) 0"}});
}

TEST(arithmetic, makes_a_positive_not_a_number) {
    expect({{subtract, infinity, infinity, "(f) nan"},
            {add, infinity, -infinity, "(f) nan"},
            {add, -infinity, infinity, "(f) nan"},
            {multiply, infinity, 0, "(f) nan"},
            {multiply, 0.0f, -infinity, "(f) nan"},
            {divide, infinity, infinity, "(f) nan"},
            {divide, -infinity, infinity, "(f) nan"},
            {add, not_a_number, 1, "(f) nan"},
            {divide, 1, not_a_number, "(f) nan"}});
}

TEST(arithmetic, writes_a_made_not_a_number_without_a_sign) {
    const result_t made = result_t(infinity) - result_t(infinity);
    EXPECT_EQ(made.string_get(false, 0), "nan");
    EXPECT_EQ(made.string_get(true, 2), "nan");
    EXPECT_EQ((made + result_t("x")).string_get(false, 0), "nanx");
}

TEST(arithmetic, refuses_to_divide_by_zero) {
    expect({{divide, 1, 0, "! divide by zero"},
            {divide, 0, 0, "! divide by zero"},
            {divide, 1.0f, 0, "! divide by zero"},
            {divide, 1, 0.0f, "! divide by zero"},
            {divide, 1, -0.0f, "! divide by zero"},
            {divide, infinity, 0.0f, "! divide by zero"}});
}

TEST(arithmetic, divides_by_a_small_float) {
    expect({{divide, 1, 0.5f, "(f) 2"}, {divide, 1.0f, 0.25f, "(f) 4"}});
}

TEST(arithmetic, on_strings_is_illegal_but_for_plus) {
    for (const result_t& other : {result_t(1), result_t(1.5f), result_t("b"), result_t(0)}) {
        expect({{multiply, "a", other, "! operator '*' -- illegal type"},
                {multiply, other, "a", "! operator '*' -- illegal type"},
                {divide, "a", other, "! operator '/' -- illegal type"},
                {divide, other, "a", "! operator '/' -- illegal type"},
                {subtract, "a", other, "! operator binary '-' -- illegal type"},
                {subtract, other, "a", "! operator binary '-' -- illegal type"}});
    }
}

TEST(arithmetic, refuses_an_unknown_type) {
    const result_t unknown = of_unknown_type();
    expect({{multiply, unknown, 1, "! operator '*' -- illegal type"},
            {divide, 1, unknown, "! operator '/' -- illegal type"},
            {subtract, unknown, "a", "! operator binary '-' -- illegal type"},
            {add, unknown, 1, "! operator binary '+' -- illegal type"},
            {add, "a", unknown, "! operator binary '+' -- illegal type"}});
}

TEST(concatenation, joins_the_default_texts) {
    expect({{add, "ab", "cd", "(s) abcd"},
            {add, "ab", 1, "(s) ab1"},
            {add, 1, "ab", "(s) 1ab"},
            {add, 2.5f, "x", "(s) 2.5x"},
            {add, "x", 1e10f, "(s) x1e+10"},
            {add, "x", -infinity, "(s) x-inf"},
            {add, "", "", "(s) "},
            {add, INT_MIN, "", "(s) -2147483648"}});
}

TEST(concatenation, keeps_every_byte) {
    const std::string bytes("a\0b", 3);
    EXPECT_EQ((result_t(bytes) + result_t(bytes)).string_get(false, 0), bytes + bytes);
}

TEST(modulo, takes_the_sign_of_the_left_operand) {
    expect({{modulo, 7, 2, "(i) 1"},
            {modulo, -7, 2, "(i) -1"},
            {modulo, 7, -2, "(i) 1"},
            {modulo, -7, -2, "(i) -1"}});
}

TEST(modulo, truncates_floats_and_reads_strings_as_0) {
    expect({{modulo, 7.9f, 2.9f, "(i) 1"},
            {modulo, -7.9f, 2, "(i) -1"},
            {modulo, "7", 2, "(i) 0"},
            {modulo, 3e9f, 10, "(i) 7"}});
}

TEST(modulo, refuses_a_right_operand_that_reads_as_0) {
    expect({{modulo, 1, 0, "! modulo by zero"},
            {modulo, 5, 0.5f, "! modulo by zero"},
            {modulo, 5, "x", "! modulo by zero"},
            {modulo, 5, "2", "! modulo by zero"},
            {modulo, "a", "b", "! modulo by zero"},
            {modulo, 5, not_a_number, "! modulo by zero"}});
}

TEST(shift, moves_bits) {
    expect({{left_shift, 1, 4, "(i) 16"},
            {left_shift, 1, 31, "(i) -2147483648"},
            {left_shift, 3, 31, "(i) -2147483648"},
            {left_shift, -1, 4, "(i) -16"},
            {left_shift, 5, 0, "(i) 5"},
            {right_shift, 16, 4, "(i) 1"},
            {right_shift, -8, 1, "(i) -4"},
            {right_shift, -1, 31, "(i) -1"},
            {right_shift, INT_MAX, 30, "(i) 1"},
            {right_shift, INT_MIN, 0, "(i) -2147483648"}});
}

TEST(shift, by_32_to_255_leaves_nothing_but_the_sign) {
    for (const int count : {32, 33, 40, 63, 64, 128, 254, 255}) {
        expect({{left_shift, 1, count, "(i) 0"},
                {left_shift, -1, count, "(i) 0"},
                {right_shift, -8, count, "(i) -1"},
                {right_shift, INT_MAX, count, "(i) 0"}});
    }
}

TEST(shift, counts_by_the_low_8_bits) {
    expect({{left_shift, 1, 256, "(i) 1"},
            {left_shift, 1, 257, "(i) 2"},
            {left_shift, 1, 288, "(i) 0"},
            {left_shift, 1, -1, "(i) 0"},
            {left_shift, 1, -255, "(i) 2"},
            {left_shift, 1, INT_MIN, "(i) 1"},
            {right_shift, -8, -1, "(i) -1"},
            {right_shift, -8, 256, "(i) -8"},
            {right_shift, -8, 0x7FFFFF01, "(i) -4"}});
}

TEST(shift, truncates_floats_and_reads_strings_as_0) {
    expect({{left_shift, 1.9f, 2.9f, "(i) 4"},
            {left_shift, "1", 4, "(i) 0"},
            {left_shift, 3, "4", "(i) 3"},
            {right_shift, -8.5f, 1, "(i) -4"},
            {right_shift, 8, 300.0f, "(i) 0"}});
}

TEST(bit_operator, combines_bits) {
    expect({{bit_and, 12, 10, "(i) 8"},
            {bit_or, 12, 10, "(i) 14"},
            {bit_xor, 12, 10, "(i) 6"},
            {bit_and, -1, 255, "(i) 255"},
            {bit_xor, -1, 0, "(i) -1"},
            {bit_or, INT_MIN, 1, "(i) -2147483647"}});
}

TEST(bit_operator, truncates_floats_and_reads_strings_as_0) {
    expect({{bit_and, 12.9f, 10.1f, "(i) 8"},
            {bit_or, "12", 10, "(i) 10"},
            {bit_xor, 12, "10", "(i) 12"},
            {bit_and, "a", "b", "(i) 0"},
            {bit_or, 3e9f, 0, "(i) 2147483647"},
            {bit_or, not_a_number, 1, "(i) 1"}});
}

TEST(logical_operator, and_needs_both) {
    expect({{logical_and, 1, 2, "(i) 1"},
            {logical_and, 0, 2, "(i) 0"},
            {logical_and, 2, 0, "(i) 0"},
            {logical_and, 0, 0, "(i) 0"},
            {logical_and, 0.9f, 1, "(i) 0"},
            {logical_and, 1.5f, -1.5f, "(i) 1"}});
}

TEST(logical_operator, or_needs_one) {
    expect({{logical_or, 0, 0, "(i) 0"},
            {logical_or, 0, 2, "(i) 1"},
            {logical_or, 2, 0, "(i) 1"},
            {logical_or, 0.9f, 0.9f, "(i) 0"},
            {logical_or, 0.9f, 1.1f, "(i) 1"}});
}

TEST(logical_operator, reads_a_string_as_0) {
    expect({{logical_and, "x", 1, "(i) 0"},
            {logical_and, 1, "x", "(i) 0"},
            {logical_and, "1", "1", "(i) 0"},
            {logical_or, "x", 0, "(i) 0"},
            {logical_or, "1", 1, "(i) 1"},
            {logical_or, 1, "x", "(i) 1"}});
}

TEST(operator_functions, leave_their_operands_alone) {
    const result_t left("a");
    const result_t right(2);
    EXPECT_EQ(shown(left + right), "(s) a2");
    EXPECT_EQ(shown(left), "(s) a");
    EXPECT_EQ(shown(right), "(i) 2");
}

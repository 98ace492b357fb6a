// The order in which operators take their operands.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"

namespace {

using binding = test::evaluator_t;
using binding_order = test::evaluator_t;
using parentheses = test::evaluator_t;
using conditional = test::evaluator_t;

std::string not_enough(const std::string& line) {
    return "syntax error in " + line + "  -- not enough operators";
}

} // namespace

TEST_F(binding, of_products_comes_before_that_of_sums) {
    expect({{"1 + 2 * 3", "(i) 7"}});
}

TEST_F(binding, of_what_parentheses_hold_comes_first) {
    expect({{"(1 + 2) * 3", "(i) 9"}});
}

TEST_F(binding, of_a_sign_comes_before_that_of_a_product) {
    expect({{"-2 * 3", "(i) -6"}, {"2 * -3", "(i) -6"}});
}

TEST_F(binding, of_equal_operators_goes_from_left_to_right) {
    expect({{"8 - 3 - 2", "(i) 3"}, {"100 / 5 / 2", "(i) 10"}, {"2 * 7 / 4 % 2", "(i) 1"}});
}

// Between neighbours of this order the left one binds first.
TEST_F(binding_order, puts_each_level_before_the_next) {
    expect({{"-abs(-3)", "(i) -3"},       // function before sign
            {"!0 * 5", "(i) 5"},          // sign before product
            {"2 + 12 / 4", "(i) 5"},      // product before sum
            {"9 - 7 % 4", "(i) 6"},       //
            {"1 << 2 + 1", "(i) 8"},      // sum before shift
            {"16 >> 3 - 1", "(i) 4"},     //
            {"1 << 2 < 5", "(i) 1"},      // shift before order
            {"5 > 16 >> 2", "(i) 1"},     //
            {"2 == 1 < 3", "(i) 0"},      // order before equality
            {"3 >= 2 != 1", "(i) 0"},     //
            {"2 & 2 == 2", "(i) 0"},      // equality before &
            {"1 | 6 & 2", "(i) 3"},       // & before |
            {"6 & 2 | 1", "(i) 3"},       //
            {"2 | 4 && 0", "(i) 0"},      // | before &&
            {"1 || 0 && 0", "(i) 1"},     // && before ||
            {"0 || 1 ? 5 : 6", "(i) 5"},  // || before ?:
            {"x = 0 ? 5 : 6", "(i) 6"},   // ?: before =
            {"max(x = 1, 2)", "(i) 2"}}); // = before ,
}

TEST_F(binding_order, among_equals_goes_from_left_to_right) {
    expect({{"8 / 2 * 4", "(i) 16"},
            {"8 * 3 % 5", "(i) 4"},
            {"1 - 2 + 3", "(i) 2"},
            {"1 << 2 << 3", "(i) 32"},
            {"64 >> 2 << 1", "(i) 32"},
            {"3 > 2 > 1", "(i) 0"},
            {"1 < 2 <= 1", "(i) 1"},
            {"5 == 5 == 1", "(i) 1"},
            {"0 != 5 == 1", "(i) 1"}});
}

TEST_F(binding_order, of_assignments_goes_from_left_to_right) {
    algebra.assign("c", 3);
    EXPECT_EQ(outcome("a = b = c"), "! non lvalue");
    EXPECT_FALSE(algebra.find("a"));
    EXPECT_FALSE(algebra.find("b"));
    EXPECT_EQ(outcome("a = (b = c)"), "(i) 3");
}

TEST_F(binding_order, of_conditionals_goes_from_left_to_right) {
    // The first conditional is the test of the second.
    expect({{"0 ? 1 : 2 ? 4 : 5", "(i) 4"}, {"1 ? 0 : 2 ? 4 : 5", "(i) 5"}});
}

TEST_F(binding, refuses_two_prefix_operators_in_a_row) {
    for (const char* text : {"--1", "!!x", "-!1", "!-1", "+-1", "1 + --1", "- - 1"}) {
        EXPECT_EQ(parse_error(text),
                  "unary_t::construct() -- right operand does not evaluate to a term")
            << text;
    }
}

TEST_F(binding, takes_prefix_operators_apart_by_parentheses) {
    expect({{"-(-1)", "(i) 1"}, {"!(!5)", "(i) 1"}, {"!(-1)", "(i) 0"}, {"-(+(-2))", "(i) 2"}});
}

TEST_F(binding, takes_a_function_below_a_sign) {
    expect({{"-abs(-2)", "(i) -2"}, {"!strlen('')", "(i) 1"}});
}

TEST_F(binding, of_an_argument_needs_no_parentheses) {
    expect({{"abs 3", "(i) 3"}, {"abs 3 - 5", "(i) -2"}, {"strlen 'abc' * 2", "(i) 6"}});
}

TEST_F(binding, of_a_function_takes_one_token) {
    expect({{"max 1, 2", "! sequencer_t::evaluate() -- syntax error"},
            {"(abs)(3)", "(i) 3"},
            {"(abs)((-3))", "(i) 3"},
            {"abs((((-3))))", "(i) 3"}});
    EXPECT_EQ(parse_error("(abs)(-3)"), "external function %s -- parse error");
    EXPECT_EQ(parse_error("abs abs 3"), "external function %s -- parse error");
    EXPECT_EQ(parse_error("abs(1)(2)"), not_enough("abs(1)(2)"));
}

TEST_F(binding, of_nested_calls_goes_inside_out) {
    expect({{"max(abs(-3), min(7, 5))", "(i) 5"}, {"abs(abs(abs(-1)))", "(i) 1"}});
}

TEST_F(parentheses, may_be_nested_and_superfluous) {
    expect({{"((1))", "(i) 1"}, {"(1)+(2)", "(i) 3"}, {"((1+2)*(3+4))", "(i) 21"}});
}

TEST_F(parentheses, must_balance) {
    for (const char* text : {"(1 + 2", "1 + 2)", "((1)", "(", ")", "(()", "abs(1"}) {
        EXPECT_EQ(parse_error(text), "unmatched parenthesis") << text;
    }
}

TEST_F(parentheses, may_close_before_they_open) {
    // Only the counts are compared.
    expect({{")1(", "(i) 1"}, {"1)+(2", "(i) 3"}});
}

TEST_F(parentheses, are_counted_before_operands_are_missed) {
    EXPECT_EQ(parse_error("(1 +"), "unmatched parenthesis");
    EXPECT_EQ(parse_error("(1 2"), "unmatched parenthesis");
}

TEST_F(parentheses, that_hold_nothing_are_nothing) {
    expect_parse_errors({{"()", not_enough("()")}, {":", not_enough(":")}});
    expect({{"1 ()", "(i) 1"}, {"() 1 + 2", "(i) 3"}});
}

TEST_F(parentheses, raise_weaker_operators_above_stronger_ones) {
    expect({{"2 * (3 + 4)", "(i) 14"}, {"(x = 2) * 3", "(i) 6"}, {"-(2 + 3)", "(i) -5"}});
}

TEST_F(conditional, gives_the_first_or_the_second_operand) {
    expect({{"1 ? 2 : 3", "(i) 2"},
            {"0 ? 2 : 3", "(i) 3"},
            {"-1 ? 'a' : 2.5", "(s) a"},
            {"0 ? 'a' : 2.5", "(f) 2.5"}});
}

TEST_F(conditional, tests_the_integer_reading) {
    expect({{"0.9 ? 1 : 2", "(i) 2"}, {"1.5 ? 1 : 2", "(i) 1"}, {"'x' ? 1 : 2", "(i) 2"}});
}

TEST_F(conditional, needs_no_colon) {
    // The colon only separates.
    expect({{"1 ? 2 3", "(i) 2"}, {"0 ? 2 3", "(i) 3"}, {":1 ? :2 :: 3:", "(i) 2"}});
}

TEST_F(conditional, evaluates_only_what_it_gives) {
    expect({{"1 ? 2 : nothing", "(i) 2"},
            {"0 ? nothing : 3", "(i) 3"},
            {"1 ? (x = 5) : (y = 6)", "(i) 5"}});
    EXPECT_TRUE(algebra.find("x"));
    EXPECT_FALSE(algebra.find("y"));
}

TEST_F(conditional, can_be_nested_by_parentheses) {
    expect({{"1 ? (0 ? 5 : 6) : 7", "(i) 6"}, {"0 ? 1 : (0 ? 4 : 5)", "(i) 5"}});
    EXPECT_EQ(
        parse_error("1 ? 0 ? 5 : 6 : 7"),
        "conditional_assignment_t::construct() -- second operand does not evaluate to a term");
}

TEST_F(conditional, binds_before_an_assignment) {
    expect({{"x = 1 ? 2 : 3", "(i) 2"}, {"x", "(i) 2"}});
}

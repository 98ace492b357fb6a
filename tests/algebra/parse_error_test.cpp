// The messages of texts that do not bind into one tree.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::result_t;

using parse_failure = test::evaluator_t;
using construct = test::evaluator_t;

std::string not_enough(const std::string& line) {
    return "syntax error in " + line + "  -- not enough operators";
}

std::string binary(const std::string& text) {
    return "binary_t::construct() -- " + text;
}
std::string assign(const std::string& text) {
    return "assign_t::construct() -- " + text;
}
std::string unary(const std::string& text) {
    return "unary_t::construct() -- " + text;
}
std::string choose(const std::string& text) {
    return "conditional_assignment_t::construct() -- " + text;
}

} // namespace

TEST_F(parse_failure, tells_a_missing_right_operand) {
    expect_parse_errors({{"1 +", binary("expected right operand")}});
}

TEST_F(parse_failure, tells_a_missing_left_operand) {
    expect_parse_errors({{"* 2", binary("expected left operand")}});
}

TEST_F(parse_failure, tells_that_operators_are_missing) {
    // Two blanks stand before the dashes: the line is quoted with the blank that ends it.
    expect_parse_errors({{"1 2", "syntax error in 1 2  -- not enough operators"},
                         {"  1 2  ", not_enough("  1 2  ")},
                         {"1 2 + 3", not_enough("1 2 + 3")},
                         {"a b c", not_enough("a b c")},
                         {"'a' 'b'", not_enough("'a' 'b'")}});
}

TEST_F(parse_failure, of_every_binary_operator_is_told_alike) {
    for (const char* op : {"*", "/", "%", "<<", ">>", "<", "<=", ">", ">=", "==", "!=", "&", "|",
                           "&&", "||", ","}) {
        const std::string name(op);
        EXPECT_EQ(parse_error(name), binary("expected left operand")) << op;
        EXPECT_EQ(parse_error(name + " 1"), binary("expected left operand")) << op;
        EXPECT_EQ(parse_error("1 " + name), binary("expected right operand")) << op;
        EXPECT_EQ(parse_error("1 " + name + " " + name + " 2"),
                  binary("right operand does not evaluate to a term"))
            << op;
    }
}

TEST_F(parse_failure, of_a_binary_sign_is_told) {
    expect_parse_errors({{"1 -", binary("expected right operand")},
                         {"1 +", binary("expected right operand")},
                         {"1 - = 2", binary("right operand does not evaluate to a term")}});
}

TEST_F(parse_failure, of_a_weaker_left_neighbour_is_told) {
    expect_parse_errors({{"1 = * 2", binary("left operand does not evaluate to a term")},
                         {"1 && | 2", binary("left operand does not evaluate to a term")}});
}

TEST_F(parse_failure, tells_missing_operands_before_unbound_ones) {
    expect_parse_errors({{"1 = *", binary("expected right operand")},
                         {"1 = * = 2", binary("left operand does not evaluate to a term")}});
}

TEST_F(parse_failure, of_an_assignment_is_told) {
    expect_parse_errors({{"=", assign("expected left operand")},
                         {"= 1", assign("expected left operand")},
                         {"x =", assign("expected right operand")},
                         {"1 , = 2", assign("left operand does not evaluate to a term")},
                         {"x = = 1", assign("right operand does not evaluate to a term")},
                         {"x = , 1", assign("right operand does not evaluate to a term")},
                         {"1 , =", assign("expected right operand")}});
}

TEST_F(parse_failure, of_a_prefix_operator_is_told) {
    for (const char* op : {"-", "+", "!"}) {
        const std::string name(op);
        EXPECT_EQ(parse_error(name), unary("expected right operand")) << op;
        EXPECT_EQ(parse_error("1 * " + name), unary("expected right operand")) << op;
        EXPECT_EQ(parse_error(name + " * 2"), unary("right operand does not evaluate to a term"))
            << op;
        EXPECT_EQ(parse_error(name + name + "1"),
                  unary("right operand does not evaluate to a term"))
            << op;
    }
}

TEST_F(parse_failure, of_two_prefix_operators_is_told) {
    expect_parse_errors({{"--1", unary("right operand does not evaluate to a term")}});
}

TEST_F(parse_failure, of_a_conditional_is_told) {
    expect_parse_errors({{"?", choose("expected test operand")},
                         {"? 1 : 2", choose("expected test operand")},
                         {"1 ?", choose("expected first operand")},
                         {"1 ? 2", choose("expected second operand")},
                         {"1 ? 2 :", choose("expected second operand")},
                         {"1 = ? 2 : 3", choose("test operand does not evaluate to a term")},
                         {"1 ? = 2", choose("first operand does not evaluate to a term")},
                         {"1 ? 2 , 3", choose("second operand does not evaluate to a term")},
                         {"1 = ? = =", choose("test operand does not evaluate to a term")},
                         {"1 ? = =", choose("first operand does not evaluate to a term")}});
}

TEST_F(parse_failure, of_a_function_keeps_the_placeholder_of_its_name) {
    // The two characters %s are never replaced.
    expect_parse_errors({{"abs", "external function %s -- not enough arguments"},
                         {"abs()", "external function %s -- not enough arguments"},
                         {"1 + max", "external function %s -- not enough arguments"},
                         {"abs -3", "external function %s -- parse error"},
                         {"abs * 3", "external function %s -- parse error"},
                         {"abs abs", "external function %s -- parse error"}});
}

TEST_F(parse_failure, of_a_script_function_keeps_the_placeholder_of_its_name) {
    algebra.macro_define("sq(x)", "x*x");
    expect_parse_errors({{"sq", "internal function %s -- not enough arguments"},
                         {"sq()", "internal function %s -- not enough arguments"},
                         {"sq * 3", "internal function %s -- no arguments or parse error"},
                         {"sq -3", "internal function %s -- no arguments or parse error"},
                         {"sq sq 3", "internal function %s -- no arguments or parse error"}});
}

TEST_F(parse_failure, of_a_function_is_thrown_with_its_placeholder) {
    EXPECT_THROWS(algebra.evaluate("abs()"), "external function %s -- not enough arguments");
}

TEST_F(parse_failure, of_a_call_without_parameters_is_an_operator_missing) {
    algebra.define("zero", [](algebra_t&) { return result_t(0); });
    algebra.macro_define("one()", "1");
    expect({{"zero", "(i) 0"}, {"zero()", "(i) 0"}, {"one + 1", "(i) 2"}, {"one()", "(i) 1"}});
    expect_parse_errors({{"zero(1)", not_enough("zero(1)")}, {"one(1)", not_enough("one(1)")}});
}

TEST_F(parse_failure, is_the_first_in_the_order_of_binding) {
    expect_parse_errors({{"1 + * 2", binary("left operand does not evaluate to a term")},
                         {"* 1 / ", binary("expected left operand")},
                         {"-* abs", "external function %s -- not enough arguments"},
                         {"1 + (2 3) *", binary("expected right operand")}});
}

TEST_F(parse_failure, of_a_long_line_is_told_whole) {
    const std::string line = "1 " + std::string(2000, '2');
    EXPECT_EQ(parse_error(line), not_enough(line));
    EXPECT_THROWS(algebra.evaluate(line), not_enough(line));
}

TEST_F(parse_failure, of_a_line_with_percent_signs_is_told_as_it_is) {
    for (const char* line : {"1 %d 2", "'%s%n' '100%'", "1 %s %n 2 %x", "5 '%'"}) {
        EXPECT_THROWS(algebra.evaluate(line), not_enough(line));
    }
}

TEST_F(parse_failure, of_the_line_after_macros_is_told) {
    algebra.macro_define("two", "2 2");
    EXPECT_EQ(parse_error("1 two // note\n; 5"), not_enough("1 2 2 "));
}

TEST_F(parse_failure, is_kept_until_the_next_one) {
    EXPECT_EQ(algebra.parse_error_get(), "");
    EXPECT_FALSE(algebra.parse("1 +"));
    EXPECT_TRUE(algebra.parse("1"));
    EXPECT_FALSE(algebra.parse("  "));
    EXPECT_EQ(algebra.parse_error_get(), binary("expected right operand"));
    EXPECT_FALSE(algebra.parse("1 2"));
    EXPECT_EQ(algebra.parse_error_get(), not_enough("1 2"));
}

TEST_F(construct, takes_the_neighbours_out_of_the_list) {
    ko::alg::list_t tokens;
    ko::alg::list_t more;
    ASSERT_FALSE(algebra.parse("1 +", tokens));
    ASSERT_TRUE(algebra.parse("2", more));
    tokens.replicate(more);
    tokens.replicate(more);
    ASSERT_EQ(tokens.size(), 4u);
    auto position = std::next(tokens.begin());
    std::string error;
    EXPECT_TRUE((*position)->construct(tokens, position, error));
    EXPECT_EQ(error, "");
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(position, std::prev(tokens.end()));
    EXPECT_EQ(outcome(tokens), "(i) 3");
}

TEST_F(construct, marks_the_token_as_bound_even_when_it_fails) {
    ko::alg::list_t tokens;
    ASSERT_FALSE(algebra.parse("* 1", tokens));
    const ko::alg::token_t& times = *tokens.front();
    EXPECT_EQ(times.unbound, 0u);
    EXPECT_EQ(times.strength, -15);
    EXPECT_EQ(times.depth, -1);
    auto position = tokens.begin();
    std::string error;
    EXPECT_FALSE(tokens.front()->construct(tokens, position, error));
    EXPECT_EQ(error, binary("expected left operand"));
    EXPECT_EQ(times.depth, -2);
    EXPECT_EQ(tokens.size(), 2u);
}

TEST_F(construct, of_an_operand_takes_nothing) {
    ko::alg::list_t tokens;
    for (const char* text : {"1 1", "1.5 1", "'s' 1", "name 1"}) {
        ASSERT_FALSE(algebra.parse(text, tokens));
        auto position = tokens.begin();
        std::string error;
        EXPECT_TRUE(tokens.front()->construct(tokens, position, error)) << text;
        EXPECT_EQ(tokens.size(), 2u);
        EXPECT_EQ(error, "");
    }
}

TEST_F(construct, of_a_function_needs_a_position_in_the_list) {
    algebra.macro_define("sq(x)", "x*x");
    ko::alg::list_t tokens;
    ko::alg::list_t empty;
    auto end = empty.end();
    std::string error;
    ASSERT_FALSE(algebra.parse("abs", tokens));
    EXPECT_FALSE(tokens.front()->construct(empty, end, error));
    EXPECT_EQ(error, "external_function_t::construct() -- bad iterator");
    ASSERT_FALSE(algebra.parse("sq", tokens));
    EXPECT_FALSE(tokens.front()->construct(empty, end, error));
    EXPECT_EQ(error, "internal_function_t::construct() -- bad iterator");
}

TEST_F(construct, of_an_operator_needs_a_position_in_the_list) {
    const test::case_t cases[] = {{"1 +", binary("expected left operand")},
                                  {"1 =", assign("expected left operand")},
                                  {"1 -", binary("expected left operand")},
                                  {"1 ?", choose("expected test operand")}};
    for (const test::case_t& c : cases) {
        ko::alg::list_t tokens;
        ko::alg::list_t empty;
        auto end = empty.end();
        std::string error;
        ASSERT_FALSE(algebra.parse(c.expression, tokens));
        EXPECT_FALSE(tokens.back()->construct(empty, end, error));
        EXPECT_EQ(error, c.outcome);
    }
}

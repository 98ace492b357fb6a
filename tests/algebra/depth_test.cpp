// Large and deep expressions: every operation works on them within a small stack.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using test::repeated;

namespace {

// Enough to exhaust a stack that is used once a level.
constexpr std::size_t many = 30000;
constexpr std::size_t million = 1000000;

class large_expression : public test::evaluator_t {
protected:
    // Parses, copies, evaluates, assigns to and destroys.
    void expect_everywhere(const std::string& text, const std::string& expected) {
        list_t tokens;
        ASSERT_TRUE(algebra.parse(text, tokens)) << algebra.parse_error_get().substr(0, 100);
        ASSERT_EQ(tokens.size(), 1u);
        const list_t copy(tokens);
        tokens.destroy();
        EXPECT_EQ(outcome(copy), expected);
        EXPECT_THROWS(copy.front()->assign(algebra, 1), "non lvalue");
    }
};

using deep_expression = large_expression;
using large_failure = large_expression;

std::string around(std::size_t count, const std::string& before, const std::string& inner,
                   const std::string& after) {
    return repeated(before, count) + inner + repeated(after, count);
}

} // namespace

TEST_F(large_expression, of_100000_terms) {
    expect_everywhere("1" + repeated("+1", 99999), "(i) 100000");
}

TEST_F(large_expression, of_a_million_terms) {
    expect_everywhere("1" + repeated("+1", million - 1), "(i) 1000000");
}

TEST_F(large_expression, of_100000_terms_is_copied_with_its_evaluator) {
    ASSERT_TRUE(algebra.parse("1" + repeated("+1", 99999)));
    algebra_t other(algebra);
    EXPECT_TRUE(algebra.parse("0"));
    EXPECT_EQ(test::outcome_of([&] { return other.evaluate(); }), "(i) 100000");
    algebra = other;
    EXPECT_EQ(program_outcome(), "(i) 100000");
}

TEST_F(large_expression, of_terms_of_changing_strength) {
    expect_everywhere("0" + repeated("+2*3-1", many), "(i) 150000");
    expect_everywhere("1" + repeated("&3|1==1<2<<1+0*2", many), "(i) 1");
}

TEST_F(large_expression, of_descending_and_ascending_strength) {
    expect_everywhere("1" + repeated(" || 1 && 1 | 1 & 1 == 1 < 1 << 1 + 1 * 1", many), "(i) 1");
}

TEST_F(large_expression, of_many_signs) {
    expect_everywhere("0" + repeated("--1", many), "(i) 30000");
    expect_everywhere("0" + repeated("+!0", many), "(i) 30000");
}

TEST_F(large_expression, of_many_names) {
    algebra.assign("x", 1);
    expect_everywhere("x" + repeated("+x", many - 1), "(i) 30000");
}

TEST_F(large_expression, of_many_calls) {
    expect_everywhere("0" + repeated("+abs(-1)", many), "(i) 30000");
}

TEST_F(large_expression, of_many_arguments) {
    algebra.define(
        "count",
        [](algebra_t&, std::vector<result_t> values) {
            return result_t(static_cast<int>(values.size()));
        },
        100000);
    expect_everywhere("count(1" + repeated(",1", 99999) + ")", "(i) 100000");
}

TEST_F(large_expression, of_many_groups) {
    expect_everywhere("0" + repeated("+(1)", many), "(i) 30000");
    expect_everywhere("0" + repeated("+(1+1)", many), "(i) 60000");
}

TEST_F(large_expression, of_a_long_string_and_a_long_name) {
    const std::string text(million, 's');
    EXPECT_EQ(outcome("strlen('" + text + "')"), "(i) 1000000");
    EXPECT_EQ(outcome(text + " = 5"), "(i) 5");
    EXPECT_TRUE(algebra.find(text));
}

TEST_F(large_expression, of_many_conditionals) {
    // Each conditional is the test of the next.
    expect_everywhere("1" + repeated("?1:2", many), "(i) 1");
}

TEST_F(large_expression, after_a_million_blank_lines_and_comments) {
    EXPECT_EQ(outcome(repeated("\n", million) + "1"), "(i) 1");
    EXPECT_EQ(outcome(repeated("/**/", million) + "1"), "(i) 1");
    EXPECT_EQ(outcome(repeated("//\n", million) + "1"), "(i) 1");
}

TEST_F(deep_expression, of_nested_parentheses) {
    expect_everywhere(around(million, "(", "1", ")"), "(i) 1");
}

TEST_F(deep_expression, can_be_assigned) {
    algebra.eval_and_assign("x", around(million, "(", "5", ")"));
    EXPECT_EQ(outcome("x"), "(i) 5");
}

TEST_F(deep_expression, can_be_assigned_to_when_it_is_a_name) {
    EXPECT_EQ(outcome(around(million, "(", "x", ")") + " = 7"), "(i) 7");
    EXPECT_EQ(outcome("x"), "(i) 7");
}

TEST_F(deep_expression, can_be_the_body_of_a_function) {
    algebra.macro_define("f(n)", around(million, "(", "n + 1", ")"));
    EXPECT_EQ(outcome("f(1)"), "(i) 2");
}

TEST_F(deep_expression, of_nested_signs) {
    expect_everywhere(around(million, "-(", "1", ")"), "(i) 1");
    expect_everywhere(around(many + 1, "!(", "1", ")"), "(i) 0");
}

TEST_F(deep_expression, that_leans_right) {
    expect_everywhere(around(million, "1+(", "1", ")"), "(i) 1000001");
}

TEST_F(deep_expression, that_leans_left_by_parentheses) {
    expect_everywhere(around(many, "(", "1", "+1)"), "(i) 30001");
}

TEST_F(deep_expression, that_leans_both_ways) {
    expect_everywhere(around(many, "(1+(", "1", ")+1)"), "(i) 60001");
    std::string full("1");
    for (int i = 0; i < 16; ++i) {
        full = "(" + full + "+" + full + ")";
    }
    expect_everywhere(full, "(i) 65536");
}

TEST_F(deep_expression, of_nested_assignments) {
    expect_everywhere(around(many, "x=(", "7", ")"), "(i) 7");
    EXPECT_EQ(outcome("x"), "(i) 7");
}

TEST_F(deep_expression, of_nested_conditionals) {
    expect_everywhere(around(many, "1?(", "5", "):6"), "(i) 5");
    expect_everywhere(around(many, "0?6:(", "5", ")"), "(i) 5");
    expect_everywhere(around(many, "(", "1", ")?1:0"), "(i) 1");
}

TEST_F(deep_expression, of_nested_calls) {
    expect_everywhere(around(many, "abs(", "-5", ")"), "(i) 5");
    expect_everywhere(around(many, "max(1,", "5", ")"), "(i) 5");
    expect_everywhere(around(many, "max(", "5", ",1)"), "(i) 5");
}

TEST_F(deep_expression, of_nested_arguments) {
    algebra.define(
        "count",
        [](algebra_t&, std::vector<result_t> values) {
            return result_t(static_cast<int>(values.size()));
        },
        static_cast<int>(many + 1));
    expect_everywhere("count(" + around(many, "1,(", "1", ")") + ")", "(i) 30001");
}

TEST_F(deep_expression, of_nested_script_calls_within_arguments) {
    // Nested arguments are no nested calls: each call has ended before the next begins.
    algebra.macro_define("same(x)", "x");
    expect_everywhere(around(500, "same(", "5", ")"), "(i) 5");
}

TEST_F(deep_expression, cannot_be_assigned_to) {
    EXPECT_EQ(outcome(around(many, "-(", "1", ")") + " = 1"), "! non lvalue");
    EXPECT_EQ(outcome("1" + repeated("+1", many) + " = 1"), "! non lvalue");
}

TEST_F(deep_expression, can_fail_at_its_bottom) {
    EXPECT_EQ(outcome(around(many, "-(", "nope", ")")),
              "! label_t::evaluate() -- access to undefined term, 'nope'");
    EXPECT_EQ(outcome(around(many, "1+(", "1/0", ")")), "! divide by zero");
    EXPECT_EQ(outcome(around(many, "abs(", "return(3)", ")")), "(i) 3");
}

TEST_F(large_failure, of_many_operands_is_told) {
    const std::string text = "1" + repeated(" 1", many);
    EXPECT_EQ(outcome(text), "! syntax error in " + text + "  -- not enough operators");
}

TEST_F(large_failure, of_many_operators_is_told) {
    EXPECT_EQ(outcome(repeated("-", million) + "1"),
              "! unary_t::construct() -- right operand does not evaluate to a term");
    EXPECT_EQ(outcome(repeated("* ", million)),
              "! binary_t::construct() -- expected left operand");
    EXPECT_EQ(outcome("1" + repeated("+1", many) + "+"),
              "! binary_t::construct() -- expected right operand");
}

TEST_F(large_failure, of_unmatched_parentheses_is_told) {
    EXPECT_EQ(outcome(std::string(million, '(')), "! unmatched parenthesis");
    EXPECT_EQ(outcome(std::string(million, ')') + "1"), "! unmatched parenthesis");
    EXPECT_EQ(outcome(std::string(million, ')') + "1" + std::string(million, '(')), "(i) 1");
}

TEST_F(large_failure, of_a_deep_tree_can_be_destroyed) {
    list_t tokens;
    EXPECT_FALSE(algebra.parse(around(many, "-(", "1", ")") + " 2", tokens));
    EXPECT_EQ(tokens.size(), 2u);
    EXPECT_EQ(outcome(tokens), "(i) 1");
    EXPECT_FALSE(algebra.parse(around(many, "1+(", "1", ")") + " *", tokens));
}

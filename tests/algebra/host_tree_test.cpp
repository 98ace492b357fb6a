// What a host does with the tokens of a list itself: evaluating, binding and asking them.

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

namespace {

/// Makes `tree()` a function that evaluates the first token of a list by itself, and `trees()`
/// one that takes the values of that token and counts them.
class host_tree : public test::evaluator_t {
protected:
    host_tree() {
        algebra.define(
            "tree",
            [this](algebra_t& a, const std::vector<result_t>&) {
                return tokens.front()->evaluate(a);
            },
            0, 0);
        algebra.define(
            "trees",
            [this](algebra_t& a, const std::vector<result_t>&) {
                std::vector<result_t> values;
                tokens.front()->evaluate(a, values);
                return result_t(static_cast<int>(values.size()));
            },
            0, 0);
    }

    /// What a function of the host gives for a token that was left by a failed parse.
    std::string bound(const std::string& text) {
        EXPECT_FALSE(algebra.parse(text, tokens)) << text;
        auto position = tokens.begin();
        std::string error;
        return tokens.front()->construct(tokens, position, error) ? "bound" : error;
    }

    list_t tokens;
};

TEST_F(host_tree, gives_its_value_to_the_function_that_evaluates_it) {
    ASSERT_TRUE(algebra.parse("1 + x", tokens));
    expect({{"(x = 2) * 0 + tree() * 10", "(i) 30"}, {"trees()", "(i) 1"}});
    ASSERT_TRUE(algebra.parse("1, x, 3", tokens));
    expect({{"trees()", "(i) 3"}});
}

TEST_F(host_tree, that_returns_ends_the_program_that_called) {
    ASSERT_TRUE(algebra.parse("1 + return(7)", tokens));
    expect({{"100 + tree()", "(i) 7"}, {"tree() + 100", "(i) 7"}, {"1 + 1", "(i) 2"}});
    ASSERT_TRUE(algebra.parse("1, return('r'), 3", tokens));
    expect({{"100 + trees()", "(s) r"}, {"1 + 1", "(i) 2"}});
}

TEST_F(host_tree, that_returns_ends_the_script_function_that_called) {
    algebra.macro_define("f(n)", "n + tree() + 100");
    ASSERT_TRUE(algebra.parse("1 + return(7)", tokens));
    expect({{"f(1) + 0.5", "(f) 7.5"}, {"max(f(1), f(2)) + f(3)", "(i) 14"}});
}

TEST_F(host_tree, of_one_value_gives_that_as_a_list) {
    for (const char* text : {"5", "2 + 3", "y = 5", "1 ? 5 : 6", "max(4, 5)"}) {
        ASSERT_TRUE(algebra.parse(text, tokens));
        std::vector<result_t> values;
        tokens.front()->evaluate(algebra, values);
        ASSERT_EQ(values.size(), 1U) << text;
        EXPECT_EQ(test::shown(values.front()), "(i) 5") << text;
    }
}

TEST_F(host_tree, of_a_comma_without_operands_throws_the_parse_error) {
    EXPECT_FALSE(algebra.parse(", 1", tokens));
    std::vector<result_t> values;
    EXPECT_THROWS(tokens.front()->evaluate(algebra, values), algebra.parse_error_get());
    EXPECT_TRUE(values.empty());
}

TEST_F(host_tree, of_a_parenthesis_is_0) {
    for (const char* text : {"(#", ":#"}) {
        EXPECT_FALSE(algebra.parse(text, tokens));
        EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 0") << text;
    }
}

TEST_F(host_tree, of_a_function_is_bound_to_arguments_only) {
    algebra.macro_define("sq(x)", "x*x");
    EXPECT_EQ(bound("abs"), "external function %s -- not enough arguments");
    EXPECT_EQ(bound("abs * 2"), "external function %s -- parse error");
    EXPECT_EQ(bound("sq"), "internal function %s -- not enough arguments");
    EXPECT_EQ(bound("sq * 2"), "internal function %s -- no arguments or parse error");
}

TEST_F(host_tree, of_an_operator_is_bound_to_operands_only) {
    EXPECT_EQ(bound("* 2"), "binary_t::construct() -- expected left operand");
    EXPECT_EQ(bound("*"), "binary_t::construct() -- expected left operand");
}

TEST_F(host_tree, that_the_host_bound_tells_its_names) {
    ASSERT_FALSE(algebra.parse("- y abs", tokens));
    auto position = tokens.begin();
    std::string error;
    ASSERT_TRUE(tokens.front()->construct(tokens, position, error)) << error;
    const auto names = algebra.names_get(tokens);
    EXPECT_EQ(names.variables, std::set<std::string>{"y"});
}

} // namespace

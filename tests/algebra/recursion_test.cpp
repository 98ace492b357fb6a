// Recursion that an expression itself asks for: it works when it ends, and is stopped when not.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"

using ko::alg::algebra_t;
using ko::alg::result_t;

namespace {

class recursion : public test::evaluator_t {
protected:
    // A recursion without end is stopped by a message, each time anew, and leaves the evaluator
    // usable.
    void expect_stopped(const std::string& text) {
        const std::string first = outcome(text);
        EXPECT_EQ(first.substr(0, 2), "! ") << first;
        EXPECT_GT(first.size(), 2u);
        EXPECT_EQ(first.find("of a derived type"), std::string::npos) << first;
        EXPECT_EQ(outcome(text), first);
        EXPECT_EQ(outcome("1 + 1"), "(i) 2");
    }
};

} // namespace

TEST_F(recursion, of_a_script_function_that_ends_gives_its_value) {
    algebra.macro_define("sum(n)", "n <= 0 ? 0 : n + REST");
    algebra.macro_define("REST", "sum(n - 1)");
    expect({{"sum(50)", "(i) 1275"}, {"sum(100)", "(i) 5050"}});
}

TEST_F(recursion, of_the_evaluation_of_texts_that_ends_gives_its_value) {
    algebra.assign("text", "n <= 0 ? 'end' : 0 * (n = n - 1) + evaluate(text)");
    algebra.assign("n", 50);
    EXPECT_EQ(outcome("evaluate(text)"), "(s) " + std::string(50, '0') + "end");
}

TEST_F(recursion, of_assignments_that_ends_gives_its_value) {
    algebra.assign("text", "n <= 0 ? 7 : (n = n - 1) * 0 + assign('x', text)");
    algebra.assign("n", 50);
    EXPECT_EQ(outcome("assign('x', text)"), "(i) 7");
}

TEST_F(recursion, of_a_script_function_without_end_is_stopped) {
    algebra.macro_define("loop()", "loop()");
    expect_stopped("loop()");
    expect_stopped("1 + loop() * 2");
}

TEST_F(recursion, of_a_script_function_with_parameters_without_end_is_stopped) {
    algebra.macro_define("loop(n)", "n + AGAIN");
    algebra.macro_define("AGAIN", "loop(n + 1)");
    expect_stopped("loop(0)");
}

TEST_F(recursion, of_functions_that_call_each_other_without_end_is_stopped) {
    algebra.macro_define("ping()", "1 + pong()");
    algebra.macro_define("pong()", "1 + ping()");
    expect_stopped("ping()");
}

TEST_F(recursion, deep_within_an_expression_without_end_is_stopped) {
    algebra.macro_define("loop()", "-(-(-(-(-(abs(max(1, loop()))))))) ? 1 : 2");
    expect_stopped("loop()");
}

TEST_F(recursion, of_the_evaluation_of_texts_without_end_is_stopped) {
    algebra.assign("text", "evaluate(text)");
    expect_stopped("evaluate(text)");
}

TEST_F(recursion, of_assignments_without_end_is_stopped) {
    algebra.assign("text", "assign('x', text)");
    expect_stopped("assign('x', text)");
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(recursion, of_every_kind_in_turn_without_end_is_stopped) {
    algebra.assign("a", "evaluate(b)");
    algebra.assign("b", "assign('x', a)");
    expect_stopped("evaluate(a)");
    algebra.macro_define("loop()", "assign('x', c)");
    algebra.assign("c", "loop()");
    expect_stopped("loop()");
    expect_stopped("assign('x', c)");
}

TEST_F(recursion, without_end_is_stopped_in_every_way_of_evaluating) {
    algebra.macro_define("loop()", "loop()");
    ASSERT_TRUE(algebra.parse("loop()"));
    EXPECT_THROW(algebra.evaluate(), ko::exception_t);
    ko::alg::list_t tokens;
    ASSERT_TRUE(algebra.parse("loop()", tokens));
    EXPECT_THROW(algebra.evaluate(tokens), ko::exception_t);
    EXPECT_THROW(algebra.eval_and_assign("x", "loop()"), ko::exception_t);
    testing::internal::CaptureStdout();
    EXPECT_EQ(test::shown(algebra.evaluate_safe("loop()")), "(s) loop()");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Caught exception in expression : loop()\n");
}

TEST_F(recursion, without_end_is_stopped_in_a_copy) {
    algebra.macro_define("loop()", "loop()");
    algebra_t copy(algebra);
    EXPECT_THROW(copy.evaluate("loop()"), ko::exception_t);
    EXPECT_EQ(test::shown(copy.evaluate("1 + 1")), "(i) 2");
}

TEST_F(recursion, through_a_host_function_without_end_is_stopped) {
    algebra.define("again", [](algebra_t& a) { return a.evaluate("script()"); });
    algebra.macro_define("script()", "1 + again()");
    expect_stopped("script()");
}

TEST_F(recursion, leaves_its_depth_behind_when_it_ends) {
    algebra.macro_define("sum(n)", "n <= 0 ? 0 : n + REST");
    algebra.macro_define("REST", "sum(n - 1)");
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(outcome("sum(40) + sum(40)"), "(i) 1640");
    }
}

TEST_F(recursion, leaves_its_depth_behind_when_it_throws) {
    algebra.macro_define("sum(n)", "n <= 0 ? nope : n + REST");
    algebra.macro_define("REST", "sum(n - 1)");
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(outcome("sum(40)"),
                  "! label_t::evaluate() -- access to undefined term, 'nope'");
    }
    algebra.define("foreign", [](algebra_t&) -> result_t { throw 42; });
    algebra.macro_define("fail(n)", "n <= 0 ? foreign() : n + MORE");
    algebra.macro_define("MORE", "fail(n - 1)");
    for (int i = 0; i < 50; ++i) {
        EXPECT_THROW(algebra.evaluate("fail(40)"), int);
    }
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
}

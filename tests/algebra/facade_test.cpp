// Evaluating texts, programs and lists, and the functions that need no evaluator.

#include <gtest/gtest.h>

#include <string>

#include "support/broken_output.h"
#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using test::shown;

namespace {

using program = test::evaluator_t;
using evaluate_text = test::evaluator_t;

class evaluate_safe : public test::evaluator_t {
protected:
    struct report_t {
        std::string value;
        std::string output;
    };

    report_t safely(const std::string& text) {
        testing::internal::CaptureStdout();
        const result_t value = algebra.evaluate_safe(text);
        return {shown(value), testing::internal::GetCapturedStdout()};
    }
};

constexpr const char* no_right_operand = "binary_t::construct() -- expected right operand";

} // namespace

TEST_F(program, is_0_before_anything_is_parsed) {
    EXPECT_EQ(program_outcome(), "(i) 0");
    const list_t empty;
    EXPECT_EQ(outcome(empty), "(i) 0");
}

TEST_F(program, is_evaluated_against_the_current_variables) {
    ASSERT_TRUE(algebra.parse("x+1"));
    algebra.assign("x", 1);
    EXPECT_EQ(program_outcome(), "(i) 2");
    algebra.assign("x", "a");
    EXPECT_EQ(program_outcome(), "(s) a1");
    algebra.assign("x", 0.5f);
    EXPECT_EQ(program_outcome(), "(f) 1.5");
}

TEST_F(program, is_parsed_whether_its_variables_exist) {
    ASSERT_TRUE(algebra.parse("x"));
    EXPECT_EQ(program_outcome(), "! label_t::evaluate() -- access to undefined term, 'x'");
    algebra.assign("x", 1);
    EXPECT_EQ(program_outcome(), "(i) 1");
}

TEST_F(program, is_replaced_by_the_next_parse) {
    ASSERT_TRUE(algebra.parse("1"));
    ASSERT_TRUE(algebra.parse("2"));
    EXPECT_EQ(program_outcome(), "(i) 2");
    EXPECT_FALSE(algebra.parse("#"));
    EXPECT_EQ(program_outcome(), "(i) 0");
}

TEST_F(program, is_left_by_the_parse_into_a_list) {
    list_t tokens;
    ASSERT_TRUE(algebra.parse("1"));
    ASSERT_TRUE(algebra.parse("2", tokens));
    EXPECT_EQ(program_outcome(), "(i) 1");
    EXPECT_EQ(outcome(tokens), "(i) 2");
}

TEST_F(program, in_a_list_can_be_evaluated_by_any_evaluator) {
    list_t tokens;
    ASSERT_TRUE(algebra.parse("x * 2", tokens));
    algebra_t other;
    algebra.assign("x", 1);
    other.assign("x", 10);
    EXPECT_EQ(outcome(tokens), "(i) 2");
    EXPECT_EQ(shown(other.evaluate(tokens)), "(i) 20");
}

TEST_F(program, in_a_list_is_its_first_token) {
    list_t tokens;
    list_t more;
    ASSERT_TRUE(algebra.parse("1", tokens));
    ASSERT_TRUE(algebra.parse("nope", more));
    tokens.replicate(more);
    EXPECT_EQ(outcome(tokens), "(i) 1");
}

TEST_F(evaluate_text, gives_the_value) {
    EXPECT_EQ(shown(algebra.evaluate("1 + 1")), "(i) 2");
    EXPECT_EQ(shown(algebra.evaluate(std::string("'a'"))), "(s) a");
}

TEST_F(evaluate_text, throws_the_parse_error) {
    EXPECT_THROWS(algebra.evaluate("1+"), no_right_operand);
    EXPECT_EQ(algebra.parse_error_get(), no_right_operand);
}

TEST_F(evaluate_text, becomes_the_program) {
    algebra.evaluate("x = exists('x') + 1");
    EXPECT_EQ(program_outcome(), "(i) 2");
}

TEST_F(evaluate_text, that_is_blank_throws_the_last_parse_error) {
    EXPECT_THROWS(algebra.evaluate(""), "");
    EXPECT_THROW(algebra.evaluate("1 +"), ko::exception_t);
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
    EXPECT_THROWS(algebra.evaluate(" "), no_right_operand);
}

TEST_F(evaluate_text, that_is_blank_clears_the_program) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    EXPECT_THROW(algebra.evaluate(""), ko::exception_t);
    EXPECT_EQ(program_outcome(), "(i) 0");
}

TEST_F(evaluate_text, that_cannot_be_read_clears_the_program) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    EXPECT_THROW(algebra.evaluate("'abc"), ko::exception_t);
    EXPECT_EQ(program_outcome(), "(i) 0");
}

TEST_F(evaluate_text, keeps_what_was_assigned_before_it_failed) {
    EXPECT_EQ(outcome("(x = 1) / 0"), "! divide by zero");
    EXPECT_EQ(outcome("x"), "(i) 1");
}

TEST_F(evaluate_safe, gives_the_value) {
    const report_t report = safely("1 + 1");
    EXPECT_EQ(report.value, "(i) 2");
    EXPECT_EQ(report.output, "");
}

TEST_F(evaluate_safe, gives_the_text_of_what_fails_and_says_so) {
    const report_t report = safely("undefined_name");
    EXPECT_EQ(report.value, "(s) undefined_name");
    EXPECT_EQ(report.output, "Caught exception in expression : undefined_name\n");
}

TEST_F(evaluate_safe, gives_the_text_where_the_line_cannot_be_written) {
    const test::broken_output_t broken;
    EXPECT_EQ(test::shown(algebra.evaluate_safe("1/0")), "(s) 1/0");
}

TEST_F(evaluate_safe, gives_the_whole_text) {
    const std::string text = "1 / 0 ; %s %n\n" + std::string(1000, 'x');
    const report_t report = safely(text);
    EXPECT_EQ(report.value, "(s) " + text);
    EXPECT_EQ(report.output, "Caught exception in expression : " + text + "\n");
}

TEST_F(evaluate_safe, gives_the_text_that_does_not_parse_silently) {
    for (const char* text : {"1 +", "#", "1 2", "(1", "hello world"}) {
        const report_t report = safely(text);
        EXPECT_EQ(report.value, std::string("(s) ") + text);
        EXPECT_EQ(report.output, "") << text;
    }
    EXPECT_EQ(algebra.parse_error_get(), "syntax error in hello world  -- not enough operators");
}

TEST_F(evaluate_safe, gives_the_text_even_where_that_is_the_parse_error) {
    ASSERT_FALSE(algebra.parse("1 +"));
    const std::string text = algebra.parse_error_get();
    EXPECT_EQ(test::shown(algebra.evaluate_safe(algebra.parse_error_get())), "(s) " + text);
    EXPECT_NE(algebra.parse_error_get(), text);
}

TEST_F(evaluate_safe, gives_the_empty_text_silently) {
    const report_t report = safely("");
    EXPECT_EQ(report.value, "(s) ");
    EXPECT_EQ(report.output, "");
}

TEST_F(evaluate_safe, says_so_when_the_parse_throws) {
    algebra.macro_define("A", "A");
    for (const char* text : {"it's", "1 /* x", "A", "1 /'x"}) {
        const report_t report = safely(text);
        EXPECT_EQ(report.value, std::string("(s) ") + text);
        EXPECT_EQ(report.output, std::string("Caught exception in expression : ") + text + "\n");
    }
}

TEST_F(evaluate_safe, takes_a_returned_value) {
    const report_t report = safely("1 + return('r')");
    EXPECT_EQ(report.value, "(s) r");
    EXPECT_EQ(report.output, "");
}

TEST_F(evaluate_safe, replaces_the_program) {
    safely("1 + 1");
    EXPECT_EQ(program_outcome(), "(i) 2");
    safely("");
    EXPECT_EQ(program_outcome(), "(i) 0");
}

TEST(algebra_function, gives_the_value) {
    result_t value;
    EXPECT_TRUE(ko::alg::algebra("2*3", value, false));
    EXPECT_EQ(shown(value), "(i) 6");
    EXPECT_TRUE(ko::alg::algebra("return('r')", value, true));
    EXPECT_EQ(shown(value), "(s) r");
}

TEST(algebra_function, tells_a_failed_parse) {
    result_t value("old");
    EXPECT_FALSE(ko::alg::algebra("2*", value, false));
    EXPECT_FALSE(ko::alg::algebra("", value, false));
    EXPECT_EQ(shown(value), "(s) old");
}

TEST(algebra_function, throws_for_a_failed_parse_when_asked) {
    result_t value("old");
    EXPECT_THROWS(ko::alg::algebra("2*", value, true), no_right_operand);
    EXPECT_THROWS(ko::alg::algebra(" ", value, true), "");
    EXPECT_EQ(shown(value), "(s) old");
}

TEST(algebra_function, always_lets_through_what_parsing_throws) {
    result_t value("old");
    for (const bool throw_errors : {false, true}) {
        EXPECT_THROWS(ko::alg::algebra("'abc", value, throw_errors),
                      "unexpected EOF encountered");
        EXPECT_THROWS(ko::alg::algebra("1 /'abc", value, throw_errors),
                      "algebra_t::nextc_get() - unexpected end-of-line");
    }
    EXPECT_EQ(shown(value), "(s) old");
}

TEST(algebra_function, tells_a_failed_evaluation) {
    result_t value("old");
    EXPECT_FALSE(ko::alg::algebra("1/0", value, false));
    EXPECT_FALSE(ko::alg::algebra("nope", value, false));
    EXPECT_THROWS(ko::alg::algebra("1/0", value, true), "divide by zero");
    EXPECT_EQ(shown(value), "(s) old");
}

TEST(algebra_function, prints_nothing) {
    result_t value;
    testing::internal::CaptureStdout();
    ko::alg::algebra("1/0", value, false);
    ko::alg::algebra("2*", value, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(algebra_function, of_a_float_gives_the_float_reading) {
    float value = -1;
    EXPECT_TRUE(ko::alg::algebra("7/2", value));
    EXPECT_EQ(value, 3.0f);
    EXPECT_TRUE(ko::alg::algebra("7/2.0", value));
    EXPECT_EQ(value, 3.5f);
    EXPECT_TRUE(ko::alg::algebra("'7'", value));
    EXPECT_EQ(value, 0.0f);
}

TEST(algebra_function, of_a_float_leaves_it_on_failure) {
    float value = -1;
    EXPECT_FALSE(ko::alg::algebra("2*", value));
    EXPECT_FALSE(ko::alg::algebra("1/0", value));
    EXPECT_THROWS(ko::alg::algebra("'abc", value), "unexpected EOF encountered");
    EXPECT_EQ(value, -1.0f);
}

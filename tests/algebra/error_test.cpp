// Evaluation that reports instead of throwing, and texts that are null.
#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::error_t;
using ko::alg::list_t;
using ko::alg::result_t;

class reported : public test::evaluator_t {
protected:
    /// What the evaluation of `text` comes to: its value, or the message, the statement and the
    /// offset of the failure.
    std::string report(const std::string& text) {
        result_t value("unchanged");
        error_t error{"old", "old", 7};
        if (algebra.evaluate(text, value, error)) {
            EXPECT_EQ(error.message + error.statement, "") << text;
            EXPECT_EQ(error.offset, 0U) << text;
            return test::shown(value);
        }
        EXPECT_EQ(test::shown(value), "(s) unchanged") << text;
        return error.message + " | " + error.statement + " | " + std::to_string(error.offset);
    }

    void expect_reports(std::initializer_list<test::case_t> cases) {
        for (const test::case_t& c : cases) {
            EXPECT_EQ(report(c.expression), c.outcome) << c.expression;
        }
    }
};

TEST_F(reported, success_is_the_value) {
    expect_reports({{"1 + 2", "(i) 3"}, {"x = 'a'", "(s) a"}, {"return(4) + 5", "(i) 4"}});
}

TEST_F(reported, failure_of_the_lexer_is_at_the_character) {
    const std::string unknown = "algebra_t::unknown() - unidentified character '";
    expect_reports({{"1 + $", unknown + "$' | 1 + $ | 4"},
                    {"$", unknown + "$' | $ | 0"},
                    {"a ^ b", unknown + "^' | a ^ b | 2"},
                    {"x ? 0:1", unknown + ":' | x ? 0:1 | 5"}});
    algebra.numeric_only_set(true);
    expect_reports({{"1 =2", "algebra_t::unknown() - parse error at '=2' | 1 =2 | 2"}});
}

TEST_F(reported, failure_to_bind_is_at_the_operator) {
    expect_reports(
        {{"1 +", "binary_t::construct() -- expected right operand | 1 + | 2"},
         {"* 2", "binary_t::construct() -- expected left operand | * 2 | 0"},
         {"(1 + 2) * max", "external function %s -- not enough arguments | (1 + 2) * max | 10"},
         {"--1", "unary_t::construct() -- right operand does not evaluate to a term | --1 | 0"},
         {"1 ? 2",
          "conditional_assignment_t::construct() -- expected second operand | 1 ? 2 | 2"},
         {"x = ", "assign_t::construct() -- expected right operand | x =  | 2"}});
}

TEST_F(reported, failure_without_a_token_is_at_the_end) {
    expect_reports({{"(1 + 2", "unmatched parenthesis | (1 + 2 | 6"},
                    {"1 2", "syntax error in 1 2  -- not enough operators | 1 2 | 3"}});
}

TEST_F(reported, failure_while_evaluating_is_at_the_end) {
    expect_reports(
        {{"1 / 0", "divide by zero | 1 / 0 | 5"},
         {"nobody + 1",
          "label_t::evaluate() -- access to undefined term, 'nobody' | nobody + 1 | 10"},
         {"func_error('no')", "algebra evaluator -- no | func_error('no') | 16"}});
}

TEST_F(reported, failure_tells_the_statement_that_was_read) {
    algebra.macro_define("M", "(2 *)");
    expect_reports({{"1 /* one */ +\n M; 3",
                     "binary_t::construct() -- expected right operand | 1  + (2 *) | 8"},
                    {"'never closed", "unexpected EOF encountered |  | 0"},
                    {"1 /* never closed", "unexpected EOF encountered |  | 0"}});
}

TEST_F(reported, blank_text_is_the_failure_of_an_earlier_parse) {
    expect_reports({{" ", " |   | 1"}});
    algebra.parse("1 +");
    expect_reports({{"", "binary_t::construct() -- expected right operand |  | 0"}});
}

TEST_F(reported, message_is_that_of_the_call_that_throws) {
    for (const char* text : {"1 +", "1 / 0", "x", "'", "(", "1 2", "$", "max(1)", "1,2", "1=2"}) {
        result_t value;
        error_t error;
        EXPECT_FALSE(algebra.evaluate(text, value, error)) << text;
        EXPECT_EQ("! " + error.message, outcome(text));
    }
}

TEST_F(reported, failure_writes_nothing) {
    testing::internal::CaptureStdout();
    report("1 / 0");
    report("1 +");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(reported, failure_of_another_type_is_thrown) {
    algebra.define("fail", [](algebra_t&) -> result_t { throw 7; });
    result_t value;
    error_t error;
    EXPECT_THROW(algebra.evaluate("fail", value, error), int);
}

TEST_F(reported, texts_may_be_those_of_the_report_itself) {
    result_t value;
    error_t error;
    algebra.evaluate("1 +", value, error);
    EXPECT_FALSE(algebra.evaluate(error.statement, value, error));
    EXPECT_EQ(error.statement, "1 +");
    EXPECT_FALSE(algebra.evaluate(error.message, value, error));
    EXPECT_EQ(error.statement, "binary_t::construct() -- expected right operand");
}

TEST(null_text, is_an_error) {
    algebra_t algebra;
    list_t tokens;
    result_t value;
    error_t error;
    float number = 0;
    const char* const null = nullptr;
    const std::string message = "algebra_t -- null text";
    EXPECT_THROWS(algebra.parse(null), message);
    EXPECT_THROWS(algebra.parse(null, tokens), message);
    EXPECT_THROWS(algebra.evaluate(null), message);
    EXPECT_THROWS(algebra.evaluate(null, value, error), message);
    EXPECT_THROWS(algebra.evaluate_safe(null), message);
    EXPECT_THROWS(algebra.macro_define("M", null), message);
    EXPECT_THROWS(algebra.macro_define(null, "1"), message);
    EXPECT_THROWS(algebra.eval_and_assign("x", null), message);
    EXPECT_THROWS(ko::alg::algebra(null, value, false), message);
    EXPECT_THROWS(ko::alg::algebra(null, number), message);
}

} // namespace

// The built-in functions.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using builtin = test::evaluator_t;
using builtin_math = test::evaluator_t;
using builtin_quad = test::evaluator_t;
using builtin_error = test::evaluator_t;
using builtin_output = test::evaluator_t;
using builtin_return = test::evaluator_t;
using builtin_evaluate = test::evaluator_t;
using builtin_assign = test::evaluator_t;
using builtin_lookup = test::evaluator_t;

std::string undefined(const std::string& name) {
    return "label_t::evaluate() -- access to undefined term, '" + name + "'";
}

} // namespace

TEST_F(builtin, demands_its_number_of_arguments) {
    for (const char* name :
         {"abs", "sqrt", "sin", "cos", "tan", "log", "log10", "floor", "ceil", "func_error",
          "func_output", "return", "evaluate", "strlen", "defined", "exists"}) {
        EXPECT_EQ(outcome(std::string(name) + "(1, 2)"), std::string("! external function ") +
                                                             name +
                                                             " -- 2 arguments found, 1 expected");
    }
    for (const char* name : {"max", "min", "pow", "assign"}) {
        EXPECT_EQ(outcome(std::string(name) + "(1)"), std::string("! external function ") + name +
                                                          " -- 1 arguments found, 2 expected");
        EXPECT_EQ(outcome(std::string(name) + "(1, 2, 3)"),
                  std::string("! external function ") + name +
                      " -- 3 arguments found, 2 expected");
    }
    EXPECT_EQ(outcome("quad(1, 2)"), "! external function quad -- 2 arguments found, 3 expected");
}

TEST_F(builtin, evaluates_arguments_before_it_counts_them) {
    EXPECT_EQ(outcome("abs(x = 1, 2)"),
              "! external function abs -- 2 arguments found, 1 expected");
    EXPECT_EQ(outcome("x"), "(i) 1");
    EXPECT_EQ(outcome("abs(nope, 2)"), "! " + undefined("nope"));
}

TEST_F(builtin_math, abs_keeps_a_float_a_float) {
    expect({{"abs(-1.5)", "(f) 1.5"},
            {"abs(1.5)", "(f) 1.5"},
            {"abs(-0.0)", "(f) 0"},
            {"abs(-1.0e39)", "(f) inf"},
            {"abs(sqrt(-1))", "(f) nan"}});
}

TEST_F(builtin_math, abs_gives_an_integer_for_the_rest) {
    expect({{"abs(-5)", "(i) 5"},
            {"abs(5)", "(i) 5"},
            {"abs('-5')", "(i) 0"},
            {"abs(-2147483647 - 1)", "(i) -2147483648"}});
}

TEST_F(builtin_math, gives_floats_even_of_integers) {
    expect({{"sqrt(4)", "(f) 2"},
            {"sqrt(2.25)", "(f) 1.5"},
            {"sin(0)", "(f) 0"},
            {"cos(0)", "(f) 1"},
            {"tan(0)", "(f) 0"},
            {"pow(2, 10)", "(f) 1024"},
            {"pow(2, -1)", "(f) 0.5"},
            {"pow(9, 0.5)", "(f) 3"},
            {"log(1)", "(f) 0"},
            {"log10(1000)", "(f) 3"},
            {"floor(1.7)", "(f) 1"},
            {"floor(-1.5)", "(f) -2"},
            {"floor(3)", "(f) 3"},
            {"ceil(1.2)", "(f) 2"},
            {"ceil(-1.5)", "(f) -1"},
            {"ceil(3)", "(f) 3"}});
}

TEST_F(builtin_math, reads_a_string_as_0) {
    expect({{"sqrt('4')", "(f) 0"},
            {"cos('4')", "(f) 1"},
            {"pow('2', '3')", "(f) 1"},
            {"floor('1')", "(f) 0"},
            {"log('x')", "(f) -inf"}});
}

TEST_F(builtin_math, has_single_precision) {
    // Read at run time, so that the compiler computes nothing with another library's rounding.
    const volatile float a = 1.1f;
    const volatile float b = 7.3f;
    const float x = a;
    const float y = b;
    EXPECT_EQ(algebra.evaluate("sqrt(1.1)").float_get(), std::sqrt(x));
    EXPECT_EQ(algebra.evaluate("sin(1.1)").float_get(), std::sin(x));
    EXPECT_EQ(algebra.evaluate("cos(1.1)").float_get(), std::cos(x));
    EXPECT_EQ(algebra.evaluate("tan(1.1)").float_get(), std::tan(x));
    EXPECT_EQ(algebra.evaluate("pow(1.1, 7.3)").float_get(), std::pow(x, y));
    EXPECT_EQ(algebra.evaluate("log(7.3)").float_get(), std::log(y));
    EXPECT_EQ(algebra.evaluate("log10(7.3)").float_get(), std::log10(y));
    EXPECT_EQ(algebra.evaluate("ceil(16777217)").float_get(), 16777216.0f);
}

TEST_F(builtin_math, gives_no_error_outside_its_domain) {
    expect({{"sqrt(-1)", "(f) nan"},
            {"log(-1)", "(f) nan"},
            {"log10(-1)", "(f) nan"},
            {"log(0)", "(f) -inf"},
            {"log10(0)", "(f) -inf"},
            {"pow(-8, 0.5)", "(f) nan"},
            {"pow(10, 100)", "(f) inf"},
            {"pow(0, -1)", "(f) inf"},
            {"sin(1.0e39)", "(f) nan"},
            {"cos(1.0e39)", "(f) nan"},
            {"tan(-1.0e39)", "(f) nan"},
            {"floor(1.0e39)", "(f) inf"},
            {"floor(sqrt(-1))", "(f) nan"},
            {"ceil(sqrt(-1))", "(f) nan"},
            {"sin(sqrt(-1))", "(f) nan"}});
}

TEST_F(builtin_math, max_gives_the_second_only_when_it_is_greater) {
    expect({{"max(1, 2)", "(i) 2"},
            {"max(2, 1)", "(i) 2"},
            {"max(2, 2.0)", "(i) 2"},
            {"max(2.0, 2)", "(f) 2"},
            {"max(1, 1.5)", "(f) 1.5"},
            {"max('a', 'b')", "(s) b"},
            {"max(10, '9')", "(s) 9"},
            {"max('9', 10)", "(s) 9"},
            {"max(sqrt(-1), 1)", "(f) nan"},
            {"max(1, sqrt(-1))", "(i) 1"}});
}

TEST_F(builtin_math, max_of_a_tie_gives_the_first_with_its_type) {
    expect({{"max(2, 2.0)", "(i) 2"}});
}

TEST_F(builtin_math, min_gives_the_second_only_when_it_is_less) {
    expect({{"min(1, 2)", "(i) 1"},
            {"min(3, 2.5)", "(f) 2.5"},
            {"min(2, 2.0)", "(i) 2"},
            {"min(2.0, 2)", "(f) 2"},
            {"min('b', 'a')", "(s) a"},
            {"min('9', 10)", "(i) 10"},
            {"min(1, sqrt(-1))", "(i) 1"}});
}

TEST_F(builtin_quad, gives_the_root_with_the_plus_sign) {
    expect({{"quad(1, -3, 2)", "(f) 2"},
            {"quad(1, 2, 1)", "(f) -1"},
            {"quad(2, 0, -8)", "(f) 2"},
            {"quad(-1, 0, 4)", "(f) -2"},
            {"quad(1, 0, 0)", "(f) 0"}});
}

TEST_F(builtin_quad, refuses_a_negative_discriminant) {
    EXPECT_THROWS(algebra.evaluate("quad(1, 0, 1)"), "quadratic -- non-real result");
}

TEST_F(builtin_quad, does_not_test_for_a_of_0) {
    expect({{"quad(0, -1, 1)", "(f) inf"},
            {"quad(0, 1, 1)", "(f) nan"},
            {"quad(0, 0, 0)", "(f) nan"},
            {"quad('a', -1, 1)", "(f) inf"}});
}

TEST_F(builtin_quad, squares_in_single_and_subtracts_in_double_precision) {
    // Wholly in one precision, either one, the discriminant would be 0.
    EXPECT_EQ(outcome("quad(1.000244140625, 2.00048828125, 1.000244140625)"),
              "! quadratic -- non-real result");
}

TEST_F(builtin_error, throws_its_text) {
    EXPECT_THROWS(algebra.evaluate("func_error('bad %s gain')"),
                  "algebra evaluator -- bad %s gain");
    EXPECT_EQ(outcome("func_error('')"), "! algebra evaluator -- ");
}

TEST_F(builtin_error, without_a_text_throws_the_bare_message) {
    expect(
        {{"func_error(1)", "! algebra evaluator"}, {"func_error(1.5)", "! algebra evaluator"}});
}

TEST_F(builtin_error, is_cut_at_510_characters) {
    const std::string text(600, 'e');
    EXPECT_EQ(outcome("func_error('" + text + "')"),
              "! " + ("algebra evaluator -- " + text).substr(0, 510));
}

TEST_F(builtin_error, is_cut_at_a_zero_byte) {
    EXPECT_EQ(outcome(std::string("func_error('a\0b')", 17)), "! algebra evaluator -- a");
}

TEST_F(builtin_output, writes_a_line_and_gives_its_argument) {
    testing::internal::CaptureStdout();
    expect({{"func_output(5)", "(i) 5"},
            {"func_output(0.5) + 1", "(f) 1.5"},
            {"func_output('x')", "(s) x"}});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "(i) 5\n(f) 0.5\n(s) x\n");
}

TEST_F(builtin_output, writes_nothing_when_its_argument_fails) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(outcome("func_output(nope)"), "! " + undefined("nope"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(builtin_return, ends_the_program_with_its_value) {
    expect({{"return(7)", "(i) 7"},
            {"1 + return('r') * (x = 5)", "(s) r"},
            {"max(1, return(2.5))", "(f) 2.5"},
            {"return return(1)", "! external function %s -- parse error"}});
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(builtin_return, ends_a_stored_program_each_time) {
    ASSERT_TRUE(algebra.parse("1 + return(x = 3)"));
    EXPECT_EQ(program_outcome(), "(i) 3");
    EXPECT_EQ(program_outcome(), "(i) 3");
    ko::alg::list_t tokens;
    ASSERT_TRUE(algebra.parse("1 + return(4)", tokens));
    EXPECT_EQ(outcome(tokens), "(i) 4");
}

TEST_F(builtin_evaluate, evaluates_a_text) {
    expect({{"evaluate('1 + 2')", "(i) 3"},
            {"evaluate('\"a\"') + 'b'", "(s) ab"},
            {"evaluate(\"1; 2\")", "(i) 1"},
            {"evaluate('return(5) + 1')", "(i) 5"}});
}

TEST_F(builtin_evaluate, takes_a_string_only) {
    expect({{"evaluate(1)", "! algebra_t::evaluate_f() -- non-string argument to 'evaluate'"},
            {"evaluate(1.5)", "! algebra_t::evaluate_f() -- non-string argument to 'evaluate'"}});
}

TEST_F(builtin_evaluate, sees_the_variables_but_does_not_change_them) {
    algebra.assign("x", 5);
    expect({{"evaluate('x = x + 1')", "(i) 6"}, {"x", "(i) 5"}, {"evaluate('y = 1')", "(i) 1"}});
    EXPECT_FALSE(algebra.find("y"));
}

TEST_F(builtin_evaluate, has_the_built_in_functions_only) {
    algebra.define("host", [](ko::alg::algebra_t&, ko::alg::result_t value) { return value; });
    algebra.macro_define("sq(x)", "x*x");
    expect({{"evaluate('abs(-1)')", "(i) 1"},
            {"evaluate('host(1)')", "! syntax error in host(1)  -- not enough operators"},
            {"evaluate('sq(1)')", "! syntax error in sq(1)  -- not enough operators"}});
}

TEST_F(builtin_evaluate, has_no_macros_of_its_own) {
    algebra.macro_define("two", "2");
    algebra.assign("text", "two");
    EXPECT_EQ(outcome("evaluate(text)"), "! " + undefined("two"));
    // In the text of the call itself they are replaced, inside quotes too.
    EXPECT_EQ(outcome("evaluate('two')"), "(i) 2");
}

TEST_F(builtin_evaluate, throws_what_the_text_throws) {
    algebra.assign("open", "'");
    expect({{"evaluate('1 +')", "! binary_t::construct() -- expected right operand"},
            {"evaluate('')", "! "},
            {"evaluate('nope')", "! " + undefined("nope")},
            {"evaluate('1/0')", "! divide by zero"},
            {"evaluate(open)", "! unexpected EOF encountered"}});
}

TEST_F(builtin_evaluate, can_be_nested) {
    algebra.assign("a", "evaluate(b) + 1");
    algebra.assign("b", "evaluate(c) + 1");
    algebra.assign("c", "1");
    expect({{"evaluate(a)", "(i) 3"}, {"evaluate(\"evaluate('1 + 2')\")", "(i) 3"}});
}

TEST_F(builtin_assign, evaluates_a_text_and_stores_its_value) {
    expect({{"assign('x', '1+2')", "(i) 3"},
            {"x", "(i) 3"},
            {"assign('y', 'x * 2.5')", "(f) 7.5"},
            {"assign('a b', \"'text'\")", "(s) text"}});
    EXPECT_EQ(test::shown(algebra.get("a b")), "(s) text");
}

TEST_F(builtin_assign, evaluates_the_text_of_a_number) {
    expect({{"assign('x', 5)", "(i) 5"},
            {"assign('x', -5)", "(i) -5"},
            {"assign('x', 1.5)", "(f) 1.5"},
            {"assign('x', -0.25)", "(f) -0.25"},
            {"assign('x', 1.0e10)", "(f) 1e+10"}});
}

TEST_F(builtin_assign, keeps_6_decimals_of_a_float) {
    EXPECT_EQ(outcome("assign('x', 1.0 / 3)"), "(f) 0.333333");
    EXPECT_EQ(algebra.get("x").float_get(), 0.333333f);
    EXPECT_EQ(outcome("assign('x', 0.0000001)"), "(f) 0");
}

TEST_F(builtin_assign, clamps_the_most_negative_integer) {
    // Its digits are read as a literal, which is clamped, and then negated.
    EXPECT_EQ(outcome("assign('x', -2147483647 - 1)"), "(i) -2147483647");
}

TEST_F(builtin_assign, of_no_finite_number_reads_a_name) {
    expect({{"assign('x', sqrt(-1))", "! " + undefined("nan")},
            {"assign('x', 1.0e39)", "! " + undefined("inf")},
            {"assign('x', -1.0e39)", "! " + undefined("inf")}});
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(builtin_assign, of_a_name_needs_that_variable) {
    EXPECT_EQ(outcome("assign('x', 'abc')"), "! " + undefined("abc"));
    EXPECT_FALSE(algebra.find("x"));
    algebra.assign("abc", 4);
    EXPECT_EQ(outcome("assign('x', 'abc')"), "(i) 4");
}

TEST_F(builtin_assign, takes_a_string_as_name) {
    expect({{"assign(1, 2)", "! algebra_t::assign_f() -- non-string value in arg 1"},
            {"assign(1.5, 'x')", "! algebra_t::assign_f() -- non-string value in arg 1"}});
}

TEST_F(builtin_assign, ignores_that_the_parse_failed) {
    expect({{"assign('x', '')", "(i) 0"},
            {"assign('x', '1 +')", "(i) 1"},
            {"assign('x', '* 2')", "! binary_t::construct() -- expected left operand"},
            {"x", "(i) 1"}});
}

TEST_F(builtin_assign, uses_the_functions_and_macros_of_the_evaluator) {
    algebra.macro_define("sq(x)", "x*x");
    algebra.macro_define("two", "2");
    algebra.assign("text", "sq(two)");
    EXPECT_EQ(outcome("assign('r', text)"), "(i) 4");
}

TEST_F(builtin_assign, leaves_the_running_program_alone) {
    ASSERT_TRUE(algebra.parse("assign('x', '1 + 1') + assign('y', 'x + 1') + x"));
    EXPECT_EQ(program_outcome(), "(i) 7");
    EXPECT_EQ(program_outcome(), "(i) 7");
}

TEST_F(builtin_assign, keeps_what_it_stored_when_the_rest_fails) {
    EXPECT_EQ(outcome("assign('x', '1') + nope"), "! " + undefined("nope"));
    EXPECT_EQ(outcome("x"), "(i) 1");
}

TEST_F(builtin_lookup, strlen_counts_bytes) {
    expect(
        {{"strlen('')", "(i) 0"}, {"strlen('abc')", "(i) 3"}, {"strlen('\xC3\xA4')", "(i) 2"}});
    EXPECT_EQ(outcome(std::string("strlen('a\0b')", 13)), "(i) 3");
}

TEST_F(builtin_lookup, strlen_takes_a_string_only) {
    expect({{"strlen(5)", "! algebra_t::strlen_f() -- non-string argument passed"},
            {"strlen(5.5)", "! algebra_t::strlen_f() -- non-string argument passed"}});
}

TEST_F(builtin_lookup, defined_tells_of_variables_only) {
    algebra.assign("x", 0);
    algebra.macro_define("m", "1");
    expect({{"defined('x')", "(i) 1"},
            {"defined('nope')", "(i) 0"},
            {"defined('abs')", "(i) 0"},
            {"defined('')", "(i) 0"}});
    EXPECT_FALSE(algebra.find("nope"));
}

TEST_F(builtin_lookup, defined_takes_a_string_only) {
    expect({{"defined(5)", "! algebra_t::defined_f() -- non-string argument to 'defined'"},
            {"defined(5.5)", "! algebra_t::defined_f() -- non-string argument to 'defined'"}});
}

TEST_F(builtin_lookup, exists_gives_the_value_or_0) {
    algebra.assign("x", "text");
    expect({{"exists('x')", "(s) text"}, {"exists('nope')", "(i) 0"}});
    EXPECT_FALSE(algebra.find("nope"));
}

TEST_F(builtin_lookup, exists_takes_a_string_only) {
    // The message names 'defined', which callers compare with.
    expect({{"exists(5)", "! algebra_t::exists_f() -- non-string argument to 'defined'"},
            {"exists(5.5)", "! algebra_t::exists_f() -- non-string argument to 'defined'"}});
}

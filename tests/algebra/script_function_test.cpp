// Functions written in the expression language.

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/repeated_evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::function_t;
using ko::alg::list_t;
using ko::alg::result_t;

namespace {

using names_t = std::list<std::string>;

class script_function : public test::repeated_evaluator_t {
protected:
    static std::size_t definitions(const algebra_t& a) {
        std::list<std::pair<std::string, std::string>> pairs;
        a.macros_get(pairs);
        return pairs.size();
    }
};

using script_definition = script_function;
using script_call = script_function;
using script_redefinition = script_function;

constexpr const char* ill_formed = "algebra_t::macro_define() -- ill-formed macro key";

std::string undefined(const std::string& name) {
    return "! label_t::evaluate() -- access to undefined term, '" + name + "'";
}

// The error of a definition, or its name, parameters and body.
std::string parsed(const std::string& key, const std::string& body) {
    function_t function;
    std::string error;
    if (!function.parse(key, body, error)) {
        return "! " + error;
    }
    std::string text = function.name + '(';
    for (const std::string& parameter : function.parameters) {
        text += parameter + ' ';
    }
    return text + ") " + function.body;
}

} // namespace

TEST_F(script_function, is_called_by_its_name) {
    algebra.macro_define("sq(x)", "x*x");
    expect({{"sq(4)", "(i) 16"}, {"sq(1.5) + 1", "(f) 3.25"}, {"sq 3", "(i) 9"}});
}

TEST_F(script_function, takes_many_parameters_beside_variables) {
    algebra.macro_define("f(a, b, c, d, e, f1, g, h, i, j)", "a + j + v");
    algebra.assign("v", 100);
    expect({{"f(1, 2, 3, 4, 5, 6, 7, 8, 9, 10)", "(i) 111"}});
}

TEST_F(script_function, gives_the_same_each_time_it_is_called) {
    algebra.macro_define("not(x)", "!x");
    algebra.macro_define("long(x)", "x" + test::repeated("+1", 3000));
    algebra.macro_define("nine(a, b, c, d, e, f, g, h, i)", "a + b + c + d + e + f + g + h + i");
    algebra.macro_define("none()", "3");
    algebra.macro_define("of_many(x)", "(CALLS)");
    algebra.macro_define("CALLS", "nine(x, x, x, x, x, x, x, x, x) + none()");
    algebra.macro_define("of_text(x)", "max(x, 1) + x");
    expect_each_time({{"not(0) + not(5) * 10", "(i) 1"},
                      {"long(1) + long(2)", "(i) 6003"},
                      {"of_many(1) + of_many(2)", "(i) 33"},
                      {"of_text(2)", "(i) 4"},
                      {"of_text(1.5)", "(f) 3"},
                      {"1" + test::repeated("+1", 3000), "(i) 3001"}});
}

TEST_F(script_function, fails_alike_each_time_it_is_called) {
    algebra.macro_define("two(x)", "abs(x, 1)");
    algebra.macro_define("divide(x)", "7 / x");
    algebra.macro_define("rest(x)", "7 % x");
    expect_each_time({{"two(1) + 0", "! external function abs -- 2 arguments found, 1 expected"},
                      {"divide(2) + divide(0)", outcome("7 / 2 + 7 / 0")},
                      {"rest(4) + rest(0)", "! modulo by zero"},
                      {"divide(7) + rest(4)", "(i) 4"}});
}

TEST_F(script_function, assigns_by_a_text_in_its_copy_only) {
    algebra.macro_define("f(n)", "assign('x', 'n + 1') + x");
    algebra.macro_define("g(n)", "assign('x', \"assign('y', 'n + 1') + 10\") + x + y");
    expect({{"f(5)", "(i) 12"}, {"defined('x')", "(i) 0"}});
    algebra.assign("x", 100);
    expect({{"f(5)", "(i) 12"}, {"x", "(i) 100"}, {"g(1)", "(i) 26"}, {"x", "(i) 100"}});
    EXPECT_FALSE(algebra.find("y"));
}

TEST_F(script_function, shows_a_host_function_what_it_assigns_by_a_text) {
    std::string seen;
    algebra.define(
        "look",
        [&](algebra_t& a, const std::vector<result_t>&) {
            seen =
                test::shown(a.get("n")) + (a.find("x") ? " x" : "") + (a.find("y") ? " y" : "");
            a.assign("z", 1000);
            return result_t(1);
        },
        0, 0);
    algebra.macro_define("g(n)", "assign('x', \"assign('y', 'look() + n')\") + x + y + z");
    expect({{"g(4)", "(i) 1015"}, {"defined('z') + defined('x')", "(i) 0"}});
    EXPECT_EQ(seen, "(i) 4");
}

TEST_F(script_function, keeps_the_parse_error_of_a_text_to_its_copy) {
    std::string seen;
    algebra.define(
        "look",
        [&](algebra_t& a, const std::vector<result_t>&) {
            seen = a.parse_error_get();
            return result_t(0);
        },
        0, 0);
    algebra.macro_define("f(n)", "assign('x', '1 + ') + look()");
    algebra.macro_define("g(n)", "assign('x', \"assign('y', '1 2') + 1\") + look()");
    const std::string before = algebra.parse_error_get();
    expect({{"f(1)", "(i) 1"}});
    EXPECT_EQ(seen, "binary_t::construct() -- expected right operand");
    expect({{"g(1)", "(i) 2"}});
    EXPECT_EQ(seen, "syntax error in 1 2  -- not enough operators");
    EXPECT_EQ(algebra.parse_error_get(), before);
}

TEST_F(script_function, leaves_a_reference_of_the_host_where_it_is) {
    result_t& kept = algebra["v"];
    kept = 5;
    algebra.define("look", [](algebra_t& a) { return a.get("v") + result_t(1); });
    algebra.macro_define("f(n)", "(v = n) * 0 + look()");
    expect({{"f(40)", "(i) 41"}, {"v", "(i) 5"}});
    kept = 6;
    expect({{"v", "(i) 6"}, {"f(50) + v", "(i) 57"}});
}

TEST_F(script_function, demands_its_number_of_arguments) {
    algebra.macro_define("sq(x)", "x*x");
    algebra.macro_define("add(a, b)", "a+b");
    expect({{"sq(4, 5)", "! internal function sq -- 2 arguments found, 1 expected"},
            {"add(4)", "! internal function add -- 1 arguments found, 2 expected"},
            {"add(1, 2, 3)", "! internal function add -- 3 arguments found, 2 expected"}});
}

TEST_F(script_function, tells_its_number_of_arguments_in_510_characters) {
    const std::string name(600, 'f');
    algebra.macro_define(name + "(x)", "x");
    const std::string whole = "internal function " + name + " -- 2 arguments found, 1 expected";
    EXPECT_EQ(outcome(name + "(1, 2)"), "! " + whole.substr(0, 510));
}

TEST_F(script_definition, is_a_name_and_parameters_in_parentheses) {
    const test::case_t cases[] = {{"f(x)", "f(x ) 1"},
                                  {"f()", "f() 1"},
                                  {"f(a,b,c)", "f(a b c ) 1"},
                                  {" f ( a , b ) ", "f(a b ) 1"},
                                  {"f(a,)", "f(a ) 1"},
                                  {"f( )", "f() 1"},
                                  {"_f1(_a, B2)", "_f1(_a B2 ) 1"},
                                  {"f(a,a)", "f(a a ) 1"},
                                  {"\tf\n(\ra\v)\f", "f(a ) 1"}};
    for (const test::case_t& c : cases) {
        EXPECT_EQ(parsed(c.expression, "1"), c.outcome) << c.expression;
    }
}

TEST_F(script_definition, needs_a_name) {
    for (const char* key : {"", " ", "(x)", "2f(x)", "+", "%s(x)", "\xE4(x)"}) {
        EXPECT_EQ(parsed(key, "1"), "! illegal or missing function name") << key;
    }
}

TEST_F(script_definition, needs_its_parentheses) {
    const test::case_t cases[] = {{"f", "f"},     {"f x", "f"},      {" f+", " f"},
                                  {"f(a", "f(a"}, {"f(a b)", "f(a"}, {"f(a,,b)", "f(a,"},
                                  {"f(1)", "f("}, {"f(,a)", "f("},   {"f(a, 1)", "f(a,"},
                                  {"f%s%n", "f"}, {"f(a%d)", "f(a"}, {"fn_1[", "fn_1"}};
    for (const test::case_t& c : cases) {
        EXPECT_EQ(parsed(c.expression, "1"),
                  "! parse error in '" + c.expression + "' after '" + c.outcome + "'");
    }
}

TEST_F(script_definition, ends_with_its_parentheses) {
    EXPECT_EQ(parsed("f(a)x", "1"),
              "! parse error in internal function name 'f(a)x' : extra characters found( 'x' )");
    EXPECT_EQ(parsed("f(a)(b)", "1"), "! parse error in internal function name 'f(a)(b)' : extra "
                                      "characters found( '(b)' )");
    EXPECT_EQ(parsed("f()%s %n", "1"), "! parse error in internal function name 'f()%s %n' : "
                                       "extra characters found( '%s %n' )");
}

TEST_F(script_definition, needs_a_body_that_parses) {
    EXPECT_EQ(parsed("f(x)", "x +"), "! binary_t::construct() -- expected right operand");
    EXPECT_EQ(parsed("f(x)", "x x"), "! syntax error in x x  -- not enough operators");
    EXPECT_EQ(parsed("f(x)", "#"), "! algebra_t::unknown() - unidentified character '#'");
    EXPECT_EQ(parsed("f(x)", ""), "! ");
    EXPECT_EQ(parsed("f(x)", " ; x"), "! ");
}

TEST_F(script_definition, knows_built_in_functions_only_when_it_checks_the_body) {
    EXPECT_EQ(parsed("f(x)", "abs(x)"), "f(x ) abs(x)");
    EXPECT_EQ(parsed("f(x)", "g(x)"), "! syntax error in g(x)  -- not enough operators");
    EXPECT_EQ(parsed("f(x)", "g()"), "f(x ) g()");
}

TEST_F(script_definition, throws_what_the_check_of_the_body_throws) {
    EXPECT_THROWS(parsed("f(x)", "'abc"), "unexpected EOF encountered");
    EXPECT_THROWS(algebra.macro_define("f(x)", "\"abc"), "unexpected EOF encountered");
    EXPECT_EQ(definitions(algebra), 0u);
    EXPECT_EQ(outcome("f"), undefined("f"));
}

TEST_F(script_definition, replaces_all_of_a_record) {
    function_t function;
    std::string error;
    ASSERT_TRUE(function.parse("f(a, b)", "a + b", error));
    ASSERT_TRUE(function.parse("g(c)", "c", error));
    EXPECT_EQ(function.name, "g");
    EXPECT_EQ(function.body, "c");
    EXPECT_EQ(function.parameters, names_t{"c"});
}

TEST_F(script_definition, that_fails_is_an_ill_formed_macro) {
    const test::case_t cases[] = {
        {"f(x", "x"},    {"f(x)y", "x"}, {"f(1)", "1"},    {"(x)", "x"},   {"f x", "x"},
        {"f(x)", "x +"}, {"f(x)", ""},   {"f(x)", "g(x)"}, {"2f(x)", "x"}, {"f(,)", "1"}};
    for (const test::case_t& c : cases) {
        EXPECT_THROWS(algebra.macro_define(c.expression, c.outcome), ill_formed) << c.expression;
    }
    EXPECT_EQ(definitions(algebra), 0u);
}

TEST_F(script_definition, is_not_checked_against_the_evaluator_s_own_functions) {
    // A call with arguments of anything but a built-in function is refused.
    algebra.macro_define("sq(x)", "x*x");
    algebra.define("host", [](algebra_t&, result_t value) { return value; });
    EXPECT_THROWS(algebra.macro_define("f(x)", "sq(x)"), ill_formed);
    EXPECT_THROWS(algebra.macro_define("f(x)", "host(x)"), ill_formed);
}

TEST_F(script_definition, leaves_the_parse_error_and_the_program_alone) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    algebra.macro_define("sq(x)", "x*x");
    EXPECT_THROW(algebra.macro_define("f(x)", "x +"), ko::exception_t);
    EXPECT_EQ(algebra.parse_error_get(), "");
    EXPECT_EQ(program_outcome(), "(i) 2");
}

TEST_F(script_call, uses_the_first_statement_of_its_body) {
    algebra.macro_define("f(x)", "x + 1; nonsense #");
    EXPECT_EQ(outcome("f(1)"), "(i) 2");
}

TEST_F(script_call, without_parameters_takes_no_argument) {
    algebra.macro_define("five()", "5");
    expect({{"five()", "(i) 5"}, {"five + five", "(i) 10"}, {"-five", "(i) -5"}});
}

TEST_F(script_call, sees_the_variables_of_the_caller) {
    algebra.assign("y", 10);
    algebra.macro_define("f(x)", "x + y");
    EXPECT_EQ(outcome("f(1)"), "(i) 11");
}

TEST_F(script_call, does_not_change_the_variables_of_the_caller) {
    algebra.assign("y", 1);
    algebra.macro_define("f(x)", "(y = 5) + (z = 6) + (x = 7)");
    expect({{"f(1)", "(i) 18"}, {"y", "(i) 1"}, {"z", undefined("z")}, {"x", undefined("x")}});
}

TEST_F(script_call, hides_variables_behind_its_parameters) {
    algebra.assign("x", "outer");
    algebra.macro_define("f(x)", "x");
    expect({{"f(1)", "(i) 1"}, {"x", "(s) outer"}});
}

TEST_F(script_call, assigns_its_parameters_in_order) {
    algebra.macro_define("f(a, a)", "a");
    EXPECT_EQ(outcome("f(1, 2)"), "(i) 2");
}

TEST_F(script_call, evaluates_its_arguments_in_the_caller) {
    algebra.macro_define("f(x)", "x * 2");
    expect({{"f(y = 3)", "(i) 6"}, {"y", "(i) 3"}});
}

TEST_F(script_call, takes_values_of_every_type) {
    algebra.macro_define("f(x)", "x");
    expect({{"f('text')", "(s) text"}, {"f(1.5)", "(f) 1.5"}, {"f(1)", "(i) 1"}});
}

TEST_F(script_call, ends_at_a_return) {
    algebra.macro_define("f(x)", "x ? return('early') : 'late'");
    expect({{"f(1) + '!'", "(s) early!"}, {"f(0) + '!'", "(s) late!"}});
}

TEST_F(script_call, replaces_macros_in_its_body_when_called) {
    algebra.macro_define("f(x)", "x * FACTOR");
    EXPECT_EQ(outcome("f(2)"), undefined("FACTOR"));
    algebra.macro_define("FACTOR", "10");
    EXPECT_EQ(outcome("f(2)"), "(i) 20");
}

TEST_F(script_call, throws_the_parse_error_of_its_body) {
    algebra.macro_define("f(x)", "x + TERM");
    algebra.macro_define("TERM", "* 2");
    EXPECT_EQ(outcome("f(2)"),
              "! binary_t::construct() -- left operand does not evaluate to a term");
    EXPECT_EQ(algebra.parse_error_get(), "");
}

TEST_F(script_call, throws_what_its_body_throws) {
    algebra.macro_define("f(x)", "1 / x");
    expect({{"f(0)", "! divide by zero"}, {"f(1)", "(i) 1"}, {"f(nope)", undefined("nope")}});
}

TEST_F(script_call, calls_a_function_without_parameters) {
    algebra.macro_define("five()", "5");
    algebra.define("host", [](algebra_t&) { return result_t(7); });
    algebra.macro_define("f(x)", "x + five() + host()");
    EXPECT_EQ(outcome("f(1)"), "(i) 13");
}

TEST_F(script_call, recurs_through_a_macro) {
    algebra.macro_define("fact(n)", "n <= 1 ? 1 : n * REST");
    algebra.macro_define("REST", "fact(n - 1)");
    expect({{"fact(1)", "(i) 1"}, {"fact(5)", "(i) 120"}, {"fact(10)", "(i) 3628800"}});
    EXPECT_FALSE(algebra.find("n"));
}

TEST_F(script_call, recurs_without_parameters) {
    algebra.macro_define("down()", "n <= 0 ? 'done' : (n = n - 1) * 0 + down()");
    algebra.assign("n", 5);
    expect({{"down()", "(s) 00000done"}, {"n", "(i) 5"}});
}

TEST_F(script_call, gives_host_functions_the_copy_as_evaluator) {
    algebra.define("set", [](algebra_t& a) {
        a.assign("x", 5);
        return a.get("arg");
    });
    algebra.macro_define("f(arg)", "set() + x");
    expect({{"f(1)", "(i) 6"}, {"x", undefined("x")}});
}

TEST_F(script_redefinition, takes_effect_in_programs_parsed_before) {
    algebra.macro_define("f(x)", "x * 2");
    ASSERT_TRUE(algebra.parse("f(5)"));
    algebra.macro_define("f(y)", "y * 3");
    EXPECT_EQ(program_outcome(), "(i) 15");
    EXPECT_EQ(outcome("f(5)"), "(i) 15");
}

TEST_F(script_redefinition, with_another_number_of_parameters_is_told) {
    algebra.macro_define("f(x)", "x");
    ASSERT_TRUE(algebra.parse("f(5)"));
    algebra.macro_define("f(x, y)", "x + y");
    EXPECT_EQ(program_outcome(), "! internal function f -- 1 arguments found, 2 expected");
    algebra.macro_define("f()", "7");
    EXPECT_EQ(program_outcome(), "(i) 7");
}

TEST_F(script_redefinition, of_a_function_without_parameters_is_told) {
    algebra.macro_define("f()", "7");
    ASSERT_TRUE(algebra.parse("f() + 1"));
    algebra.macro_define("f(x, y)", "x + y");
    EXPECT_EQ(program_outcome(), "! internal function f -- 0 arguments found, 2 expected");
}

TEST_F(script_redefinition, to_none_leaves_the_argument_unevaluated) {
    algebra.macro_define("f(x)", "x");
    ASSERT_TRUE(algebra.parse("f(y = 5)"));
    algebra.macro_define("f()", "7");
    EXPECT_EQ(program_outcome(), "(i) 7");
    EXPECT_FALSE(algebra.find("y"));
}

TEST_F(script_redefinition, that_fails_leaves_the_function) {
    algebra.macro_define("f(x)", "x");
    EXPECT_THROW(algebra.macro_define("f(x)", "x +"), ko::exception_t);
    EXPECT_EQ(outcome("f(5)"), "(i) 5");
    EXPECT_EQ(definitions(algebra), 1u);
}

TEST_F(script_redefinition, in_a_copy_stays_in_the_copy) {
    algebra.macro_define("f(x)", "x * 2");
    ASSERT_TRUE(algebra.parse("f(5)"));
    algebra_t copy(algebra);
    copy.macro_define("f(x)", "x * 3");
    EXPECT_EQ(test::shown(copy.evaluate()), "(i) 15");
    EXPECT_EQ(program_outcome(), "(i) 10");
    algebra.macro_define("f(x)", "x * 4");
    EXPECT_EQ(test::shown(copy.evaluate()), "(i) 15");
    EXPECT_EQ(program_outcome(), "(i) 20");
}

TEST(script_program, of_a_copy_outlives_the_original) {
    auto original = std::make_unique<algebra_t>();
    original->macro_define("f(x)", "x * 2");
    ASSERT_TRUE(original->parse("f(5)"));
    algebra_t copy(*original);
    algebra_t assigned;
    assigned = *original;
    original.reset();
    EXPECT_EQ(test::shown(copy.evaluate()), "(i) 10");
    EXPECT_EQ(test::shown(assigned.evaluate()), "(i) 10");
    assigned.macro_define("f(x)", "x * 3");
    EXPECT_EQ(test::shown(assigned.evaluate()), "(i) 15");
}

TEST(script_program, in_a_caller_s_list_outlives_its_evaluator) {
    list_t tokens;
    {
        algebra_t original;
        original.macro_define("f(x)", "x * 2");
        ASSERT_TRUE(original.parse("f(5) + 1", tokens));
    }
    algebra_t other;
    EXPECT_EQ(test::shown(other.evaluate(tokens)), "(i) 11");
    const list_t copy(tokens);
    tokens.destroy();
    EXPECT_EQ(test::shown(other.evaluate(copy)), "(i) 11");
}

TEST(script_program, in_a_caller_s_list_survives_an_assignment_to_its_evaluator) {
    list_t tokens;
    algebra_t algebra;
    algebra.macro_define("f(x)", "x * 2");
    ASSERT_TRUE(algebra.parse("f(5)", tokens));
    algebra_t other;
    other.macro_define("g(x)", "x");
    algebra = other;
    EXPECT_NE(test::outcome_of([&] { return algebra.evaluate(tokens); }), "");
    for (int i = 0; i < 100; ++i) {
        algebra.macro_define("f" + std::to_string(i) + "(x)", "x");
    }
    EXPECT_NE(test::outcome_of([&] { return algebra.evaluate(tokens); }), "");
}

TEST(script_program, in_a_caller_s_list_sees_a_redefinition) {
    list_t tokens;
    algebra_t algebra;
    algebra.macro_define("f(x)", "x * 2");
    ASSERT_TRUE(algebra.parse("f(5)", tokens));
    algebra.evaluate("1");
    algebra.macro_define("f(x)", "x * 3");
    EXPECT_EQ(test::shown(algebra.evaluate(tokens)), "(i) 15");
}

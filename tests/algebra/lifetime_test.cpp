// What a host may do to an evaluator while its tokens or its functions are in use.
#include <memory>
#include <stdexcept>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

result_t reparse(algebra_t& algebra, result_t text) {
    algebra.parse(text.string_get(false, 0));
    return algebra.evaluate();
}

result_t reset(algebra_t& algebra) {
    algebra = algebra_t();
    return 1;
}

result_t redefine(algebra_t& algebra, result_t body) {
    algebra.macro_define("f(x)", body.string_get(false, 0));
    return 1;
}

result_t fail(algebra_t&) {
    throw std::runtime_error("host");
}

result_t fail_oddly(algebra_t&) {
    throw 7;
}

class lifetime : public test::evaluator_t {
protected:
    lifetime() { algebra.macro_define("f(x)", "x+1"); }

    /// What the list comes to when another evaluator evaluates it.
    std::string elsewhere() {
        algebra_t other;
        return test::outcome_of([&] { return other.evaluate(tokens); });
    }

    list_t tokens;
};

TEST_F(lifetime, a_host_function_may_parse_another_program) {
    algebra.define("reparse", reparse);
    EXPECT_EQ(outcome("10 * reparse('1+1') + 'end'"), "(s) 20end");
}

TEST_F(lifetime, a_host_function_may_assign_to_the_evaluator) {
    algebra.define("reset", reset);
    EXPECT_EQ(outcome("reset() + 1"), "(i) 2");
    EXPECT_EQ(outcome("reset() + 1"),
              "! label_t::evaluate() -- access to undefined term, 'reset'");
}

TEST_F(lifetime, an_argument_may_redefine_the_function_that_is_called) {
    algebra.define("redefine", redefine);
    EXPECT_EQ(outcome("f(redefine('x*10'))"), "(i) 10");
}

TEST_F(lifetime, a_parsed_call_runs_the_body_defined_last) {
    ASSERT_TRUE(algebra.parse("f(1)", tokens));
    algebra.macro_define("f(x)", "x*10");
    EXPECT_EQ(outcome(tokens), "(i) 10");
}

TEST_F(lifetime, a_call_parsed_without_parameters_counts_its_arguments) {
    algebra.macro_define("g()", "1");
    ASSERT_TRUE(algebra.parse("g", tokens));
    EXPECT_EQ(outcome(tokens), "(i) 1");
    algebra.macro_define("g(a,b)", "a");
    EXPECT_EQ(outcome(tokens), "! internal function g -- 0 arguments found, 2 expected");
}

TEST_F(lifetime, a_call_parsed_with_arguments_ignores_them_without_parameters) {
    ASSERT_TRUE(algebra.parse("f(missing)", tokens));
    algebra.macro_define("f()", "5");
    EXPECT_EQ(outcome(tokens), "(i) 5");
}

TEST_F(lifetime, tokens_outlive_their_evaluator) {
    {
        algebra_t parser;
        parser.macro_define("g(x)", "x*2");
        ASSERT_TRUE(parser.parse("g(4) + abs(-1)", tokens));
    }
    EXPECT_EQ(outcome(tokens), "(i) 9");
}

TEST_F(lifetime, tokens_mean_the_functions_that_an_assignment_brings) {
    ASSERT_TRUE(algebra.parse("f(4)", tokens));
    algebra_t other;
    other.macro_define("f(x)", "x*100");
    algebra = other;
    EXPECT_EQ(outcome(tokens), "(i) 400");
    algebra = algebra_t();
    EXPECT_EQ(outcome(tokens), "! internal function f -- no longer defined");
}

TEST_F(lifetime, a_copied_program_calls_the_functions_of_the_copy) {
    auto original = std::make_unique<algebra_t>(algebra);
    ASSERT_TRUE(original->parse("1 ? f(4) : -f(5)"));
    algebra = *original;
    algebra_t copy(*original);
    original->macro_define("f(x)", "0");
    copy.macro_define("f(x)", "x*10");
    EXPECT_EQ(test::shown(copy.evaluate()), "(i) 40");
    EXPECT_EQ(program_outcome(), "(i) 5");
    original.reset();
    EXPECT_EQ(test::shown(copy.evaluate()), "(i) 40");
}

TEST_F(lifetime, an_evaluator_assigned_to_itself_is_unchanged) {
    algebra.assign("x", 3);
    algebra.memory_push();
    ASSERT_TRUE(algebra.parse("f(x)"));
    const algebra_t& itself = algebra;
    algebra = itself;
    EXPECT_EQ(program_outcome(), "(i) 4");
    algebra.memory_pop();
    EXPECT_TRUE(algebra.find("x"));
}

TEST_F(lifetime, a_list_assigned_to_itself_is_unchanged) {
    ASSERT_TRUE(algebra.parse("f(1) + 1", tokens));
    const list_t& itself = tokens;
    tokens = itself;
    EXPECT_EQ(outcome(tokens), "(i) 3");
}

TEST_F(lifetime, a_null_token_of_the_host_is_copied_and_reported) {
    tokens.push_back(nullptr);
    const list_t copy(tokens);
    EXPECT_EQ(copy.size(), 1U);
    EXPECT_EQ(outcome(copy), "! algebra_t::evaluate() -- null token");
}

TEST_F(lifetime, a_null_text_of_the_host_is_reported) {
    const char* const text = nullptr;
    const char* const message = "result_t::result_t() -- null text";
    EXPECT_THROWS(const result_t value(text), message);
    EXPECT_THROWS(algebra.assign("x", text), message);
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(lifetime, a_list_is_evaluated_by_any_evaluator) {
    ASSERT_TRUE(algebra.parse("f(1) + y", tokens));
    EXPECT_EQ(elsewhere(), "! label_t::evaluate() -- access to undefined term, 'y'");
}

TEST_F(lifetime, exceptions_of_host_functions_pass_and_leave_the_evaluator_usable) {
    algebra.define("fail", fail);
    algebra.define("fail_oddly", fail_oddly);
    EXPECT_THROW(algebra.evaluate("'a' + max(1, x = 2) + fail()"), std::runtime_error);
    EXPECT_THROW(algebra.evaluate_safe("fail_oddly()"), int);
    EXPECT_EQ(outcome("x + f(1)"), "(i) 4");
}

TEST_F(lifetime, a_reference_to_a_variable_stays_valid_and_its_own) {
    result_t& x = algebra["x"];
    x = 1;
    algebra.memory_push();
    algebra_t copy(algebra);
    copy.assign("x", 9);
    algebra.evaluate("f(x) + (y = 3)");
    x = 2;
    EXPECT_EQ(outcome("x"), "(i) 2");
    EXPECT_EQ(test::shown(copy.get("x")), "(i) 9");
    algebra.memory_pop();
    EXPECT_EQ(outcome("x"), "(i) 1");
}

TEST_F(lifetime, snapshots_of_a_copy_are_its_own) {
    algebra.assign("x", 1);
    algebra.memory_push();
    algebra_t copy(algebra);
    copy.assign("x", 2);
    copy.memory_push();
    copy.memory_pop();
    copy.memory_pop();
    EXPECT_FALSE(test::throws([&] { algebra.memory_pop_diff(); }, ""));
    EXPECT_EQ(outcome("x"), "(i) 1");
    EXPECT_THROWS(copy.memory_pop_diff(), "algebra_t::memory_pop_diff() -- stack is empty");
}

} // namespace

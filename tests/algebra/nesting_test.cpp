// Recursion that an input asks for ends with a message; recursion that ends by itself works.
#include <memory>

#include "support/evaluation.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::result_t;

constexpr char script_limit[] =
    "! algebra_t -- script function 'f' nested more than 1000 levels deep";

/// Evaluates "down(n - 1)" on the calling evaluator.
result_t down(algebra_t& algebra, result_t n) {
    const int next = n.int_get() - 1;
    return next < 0 ? n : algebra.evaluate("down(" + std::to_string(next) + ")");
}

std::unique_ptr<algebra_t> kept;

/// Keeps a copy of the evaluator that calls first.
result_t keep(algebra_t& algebra) {
    if (kept == nullptr) {
        kept = std::make_unique<algebra_t>(algebra);
    }
    return 1;
}

/// Evaluates on a copy of the calling evaluator.
result_t copied(algebra_t& algebra, result_t text) {
    algebra_t copy(algebra);
    return copy.evaluate(text.string_get(false, 0));
}

/// Evaluates on a new evaluator that has the variables of the calling one.
result_t fresh(algebra_t& algebra, result_t text) {
    algebra_t evaluator;
    evaluator.define("fresh", fresh);
    evaluator.memory_copy(algebra);
    return evaluator.evaluate(text.string_get(false, 0));
}

algebra_t* outermost = nullptr;

/// Calls itself on a copy of the calling evaluator that has lost its variables.
result_t emptied(algebra_t& algebra) {
    algebra_t copy(algebra);
    copy.memory_copy(algebra_t());
    return copy.evaluate("emptied()");
}

/// Calls itself on the calling evaluator, once that has the variables of another one.
result_t taking(algebra_t& algebra) {
    algebra.memory_copy(algebra_t());
    return algebra.evaluate("taking()");
}

/// Evaluates on the evaluator that the test made, whichever calls.
result_t at_top(algebra_t&, result_t text) {
    return outermost->evaluate(text.string_get(false, 0));
}

/// Restores the calling evaluator from a copy of it and evaluates "restored(n - 1)" there.
result_t restored(algebra_t& algebra, result_t n) {
    const algebra_t saved(algebra);
    algebra = saved;
    const int next = n.int_get() - 1;
    return next < 0 ? n : algebra.evaluate("restored(" + std::to_string(next) + ")");
}

class nesting : public test::evaluator_t {
protected:
    nesting() {
        // A body can call another function with arguments only by way of a macro.
        algebra.macro_define("f(n)", "n < 1 ? 0 : n + (AGAIN)");
        algebra.macro_define("AGAIN", "f(n-1)");
    }
};

TEST_F(nesting, of_script_functions_ends_by_a_condition) {
    expect({{"f(3)", "(i) 6"}, {"f(400)", "(i) 80200"}, {"f(999)", "(i) 499500"}});
}

TEST_F(nesting, of_script_functions_has_a_limit) {
    EXPECT_EQ(outcome("f(1000)"), script_limit);
    EXPECT_EQ(outcome("f(2)"), "(i) 3");
}

TEST_F(nesting, of_the_built_in_evaluate_has_a_limit) {
    algebra.assign("again", "evaluate(again)");
    EXPECT_EQ(outcome("evaluate(again)"),
              "! algebra_t -- function 'evaluate' nested more than 1000 levels deep");
}

TEST_F(nesting, of_the_built_in_assign_has_a_limit) {
    algebra.assign("again", "assign('x', again)");
    EXPECT_EQ(outcome("assign('x', again)"),
              "! algebra_t -- assignment to 'x' nested more than 1000 levels deep");
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(nesting, of_host_functions_that_evaluate_has_a_limit) {
    algebra.define("down", down);
    EXPECT_EQ(outcome("down(900)"), "(i) 0");
    EXPECT_EQ(outcome("down(1200)"),
              "! algebra_t -- evaluation by function 'down' nested more than 1000 levels deep");
}

TEST_F(nesting, is_counted_in_copies_that_a_host_function_makes) {
    algebra.define("copied", copied);
    algebra.assign("again", "copied(again)");
    EXPECT_EQ(outcome("copied('1+1')"), "(i) 2");
    EXPECT_EQ(outcome("copied(again)"),
              "! algebra_t -- evaluation by function 'copied' nested more than 1000 levels deep");
}

TEST_F(nesting, is_counted_in_evaluators_that_a_host_function_gives_its_variables) {
    algebra.define("fresh", fresh);
    algebra.assign("again", "fresh(again)");
    EXPECT_EQ(outcome("fresh(again)"),
              "! algebra_t -- evaluation by function 'fresh' nested more than 1000 levels deep");
    algebra.assign("n", 900);
    algebra.assign("again", "(n = n - 1) ? fresh(again) : 5");
    EXPECT_EQ(outcome("fresh(again)"), "(i) 5");
}

TEST_F(nesting, is_counted_in_a_copy_that_takes_the_variables_of_a_new_evaluator) {
    algebra.define("emptied", emptied);
    EXPECT_EQ(
        outcome("emptied()"),
        "! algebra_t -- evaluation by function 'emptied' nested more than 1000 levels deep");
}

TEST_F(nesting, is_counted_in_a_caller_that_takes_the_variables_of_a_new_evaluator) {
    algebra.define("taking", taking);
    EXPECT_EQ(outcome("taking()"),
              "! algebra_t -- evaluation by function 'taking' nested more than 1000 levels deep");
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
}

TEST_F(nesting, is_counted_only_while_it_lasts) {
    algebra.define("down", down);
    for (int i = 0; i < 1001; ++i) {
        algebra.eval_and_assign("x", "1 + 1");
        ASSERT_EQ(outcome("down(1)"), "(i) 0") << "call " << i;
    }
    EXPECT_EQ(outcome("down(900)"), "(i) 0");
}

TEST_F(nesting, is_counted_once_in_an_evaluator_that_is_restored_from_a_copy) {
    algebra.define("restored", restored);
    EXPECT_EQ(outcome("restored(900)"), "(i) 0");
    EXPECT_EQ(
        outcome("restored(1200)"),
        "! algebra_t -- evaluation by function 'restored' nested more than 1000 levels deep");
}

TEST_F(nesting, of_the_call_that_a_copy_was_made_in_ends_with_the_call) {
    algebra.define("keep", keep);
    algebra.macro_define("f(n)", "n < 1 ? keep() : (AGAIN)");
    EXPECT_EQ(outcome("f(800)"), "(i) 1");
    EXPECT_EQ(test::shown(kept->evaluate("f(900)")), "(i) 1");
    kept.reset();
}

TEST_F(nesting, is_counted_where_a_host_function_uses_the_outermost_evaluator) {
    outermost = &algebra;
    algebra.define("at_top", at_top);
    algebra.macro_define("AGAIN", "at_top('f(1)')");
    EXPECT_NE(outcome("f(1)").find("nested more than 1000 levels deep"), std::string::npos);
}

TEST_F(nesting, of_script_assignment_and_copy_is_counted_across_their_evaluators) {
    algebra.define("copied", copied);
    algebra.assign("text", "assign('x', 's(1)')");
    algebra.macro_define("s(n)", "n + (CALL)");
    algebra.macro_define("CALL", "copied(text)");
    for (const char* start : {"s(1)", "copied(text)", "assign('x', 's(1)')"}) {
        EXPECT_NE(outcome(start).find("nested more than 1000 levels deep"), std::string::npos);
    }
    // Three levels a round.
    algebra.assign("text", "(left = left - 1) ? assign('x', 's(1)') : 0");
    algebra.assign("left", 300);
    EXPECT_EQ(outcome("s(1)"), "(i) 300");
}

TEST_F(nesting, of_several_kinds_is_counted_together) {
    algebra.macro_define("AGAIN", "assign('x', 'f(1)')");
    EXPECT_NE(outcome("f(1)").find("nested more than 1000 levels deep"), std::string::npos);
    EXPECT_EQ(outcome("1+1"), "(i) 2");
}

} // namespace

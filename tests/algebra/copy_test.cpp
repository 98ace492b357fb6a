// Copies of an evaluator.

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <utility>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using test::shown;

namespace {

using pairs_t = std::list<std::pair<std::string, std::string>>;

pairs_t listed(const algebra_t& algebra) {
    pairs_t pairs;
    algebra.macros_get(pairs);
    return pairs;
}

// An evaluator with something of everything.
class evaluator_copy : public testing::TestWithParam<bool> {
protected:
    evaluator_copy() : source(std::make_unique<algebra_t>()) {
        source->assign("x", 1);
        source->memory_push();
        source->assign("x", 2);
        source->memory_push();
        source->assign("x", 3);
        source->macro_define("M", "100");
        source->macro_define("GONE", "1");
        source->macro_undefine("GONE");
        source->macro_define("sq(a)", "a * a");
        source->define("host", [](algebra_t&, result_t v) { return v + result_t(1); });
        source->define("cos", [](algebra_t&, result_t) { return result_t("mine"); });
        source->parse("sq(x) + host(x)");
    }

    // A copy of the source: constructed, or assigned over something else.
    algebra_t& copy() {
        if (GetParam()) {
            target = std::make_unique<algebra_t>(*source);
            return *target;
        }
        target = std::make_unique<algebra_t>();
        target->assign("old", 1);
        target->macro_define("OLD", "1");
        target->macro_define("old_function(a)", "a");
        target->define("old_host", [](algebra_t&) { return result_t(1); });
        target->memory_push();
        target->memory_push();
        target->memory_push();
        target->parse("old + old_function(5)");
        *target = *source;
        return *target;
    }

    std::unique_ptr<algebra_t> source;
    std::unique_ptr<algebra_t> target;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(constructed_and_assigned, evaluator_copy, testing::Bool(),
                         [](const auto& tested) {
                             return tested.param ? "constructed" : "assigned";
                         });

TEST_P(evaluator_copy, has_the_program) {
    algebra_t& made = copy();
    EXPECT_EQ(shown(made.evaluate()), "(i) 13");
    made.assign("x", 10);
    EXPECT_EQ(shown(made.evaluate()), "(i) 111");
    EXPECT_EQ(shown(source->evaluate()), "(i) 13");
}

TEST_P(evaluator_copy, has_the_variables) {
    const algebra_t& made = copy();
    EXPECT_EQ(shown(made.get("x")), "(i) 3");
    EXPECT_FALSE(made.find("old"));
}

TEST_P(evaluator_copy, has_the_memory_stack) {
    algebra_t& made = copy();
    made.memory_pop();
    EXPECT_EQ(shown(made.get("x")), "(i) 2");
    made.memory_pop();
    EXPECT_EQ(shown(made.get("x")), "(i) 1");
    EXPECT_THROW(made.memory_pop_diff(), ko::exception_t);
    EXPECT_EQ(shown(source->get("x")), "(i) 3");
    EXPECT_NO_THROW(source->memory_pop_diff());
}

TEST_P(evaluator_copy, has_the_macros) {
    algebra_t& made = copy();
    EXPECT_EQ(shown(made.evaluate("M + 1")), "(i) 101");
    EXPECT_THROW(made.evaluate("OLD"), ko::exception_t);
    EXPECT_EQ(listed(made), listed(*source));
    EXPECT_EQ(listed(made), (pairs_t{{"M", "100"}, {"GONE", "1"}, {"sq( a )", "a * a"}}));
}

TEST_P(evaluator_copy, has_the_functions) {
    algebra_t& made = copy();
    EXPECT_EQ(shown(made.evaluate("sq(5) + host(1)")), "(i) 27");
    EXPECT_EQ(shown(made.evaluate("cos(1)")), "(s) mine");
    EXPECT_THROW(made.evaluate("old_function(5)"), ko::exception_t);
    EXPECT_THROW(made.evaluate("old_host()"), ko::exception_t);
}

TEST_P(evaluator_copy, is_independent) {
    algebra_t& made = copy();
    made.assign("x", 50);
    made.evaluate("y = 1");
    made.macro_define("M", "200");
    made.macro_define("sq(a)", "a * 1000");
    made.define("host", [](algebra_t&, result_t) { return result_t(0); });
    made.parse("0");
    EXPECT_EQ(shown(source->evaluate()), "(i) 13");
    EXPECT_FALSE(source->find("y"));
    EXPECT_EQ(shown(source->evaluate("M + sq(2) + host(0)")), "(i) 105");
    EXPECT_EQ(listed(*source).size(), 3u);
}

TEST_P(evaluator_copy, is_not_changed_through_its_source) {
    algebra_t& made = copy();
    source->assign("x", 50);
    source->macro_define("M", "200");
    source->macro_define("sq(a)", "a * 1000");
    source->parse("0");
    EXPECT_EQ(shown(made.evaluate()), "(i) 13");
    EXPECT_EQ(shown(made.evaluate("M + sq(2)")), "(i) 104");
}

TEST_P(evaluator_copy, outlives_its_source) {
    algebra_t& made = copy();
    source.reset();
    EXPECT_EQ(shown(made.evaluate()), "(i) 13");
    made.memory_pop();
    EXPECT_EQ(shown(made.evaluate()), "(i) 7");
    EXPECT_EQ(shown(made.evaluate("sq(M) + host(0)")), "(i) 10001");
}

TEST_P(evaluator_copy, has_itself_as_the_evaluator_of_its_functions) {
    source->define("set", [](algebra_t& a) {
        a.assign("set_by", 1);
        return result_t(0);
    });
    ASSERT_TRUE(source->parse("set()"));
    algebra_t& made = copy();
    made.evaluate();
    EXPECT_TRUE(made.find("set_by"));
    EXPECT_FALSE(source->find("set_by"));
}

TEST_P(evaluator_copy, starts_without_a_parse_error_of_its_source) {
    EXPECT_FALSE(source->parse("1 +"));
    EXPECT_EQ(copy().parse_error_get(), "");
}

TEST_P(evaluator_copy, does_not_take_the_numeric_only_flag) {
    source->numeric_only_set(true);
    algebra_t& made = copy();
    EXPECT_EQ(shown(made.evaluate("x")), "(i) 3");
    source->numeric_only_set(false);
}

TEST_P(evaluator_copy, of_a_failed_parse_has_its_tokens) {
    EXPECT_FALSE(source->parse("5 6"));
    algebra_t& made = copy();
    EXPECT_EQ(shown(made.evaluate()), "(i) 5");
}

TEST(evaluator_assignment, keeps_the_parse_error_and_the_numeric_only_flag) {
    algebra_t target;
    EXPECT_FALSE(target.parse("1 +"));
    target.numeric_only_set(true);
    algebra_t source;
    EXPECT_FALSE(source.parse("* 1"));
    target = source;
    EXPECT_EQ(target.parse_error_get(), "binary_t::construct() -- expected right operand");
    EXPECT_EQ(shown(target.evaluate("abc5")), "(i) 5");
    target.numeric_only_set(false);
    source.numeric_only_set(true);
    target = source;
    EXPECT_THROW(target.evaluate("abc5"), ko::exception_t);
}

TEST(evaluator_assignment, to_itself_changes_nothing) {
    algebra_t algebra;
    algebra.assign("x", 1);
    algebra.memory_push();
    algebra.assign("x", 2);
    algebra.macro_define("M", "100");
    algebra.macro_define("sq(a)", "a * a");
    ASSERT_TRUE(algebra.parse("sq(x) + 1"));
    result_t& x = algebra["x"];
    const algebra_t& same = algebra;
    algebra = same;
    EXPECT_EQ(shown(algebra.evaluate()), "(i) 5");
    x = result_t(3);
    EXPECT_EQ(shown(algebra.evaluate()), "(i) 10");
    EXPECT_EQ(listed(algebra).size(), 2u);
    algebra.memory_pop();
    EXPECT_EQ(shown(algebra.evaluate("x + M")), "(i) 101");
}

TEST(evaluator_assignment, gives_the_target) {
    algebra_t a;
    const algebra_t b;
    EXPECT_EQ(&(a = b), &a);
}

TEST(evaluator_copies, of_copies_are_complete) {
    algebra_t first;
    first.macro_define("sq(a)", "a * a");
    first.assign("x", 3);
    ASSERT_TRUE(first.parse("sq(x)"));
    const algebra_t second(first);
    algebra_t third(second);
    first.macro_define("sq(a)", "0");
    EXPECT_EQ(shown(third.evaluate()), "(i) 9");
    third.macro_define("sq(a)", "a + 1");
    EXPECT_EQ(shown(third.evaluate()), "(i) 4");
}

TEST(evaluator_copies, leave_a_list_of_the_source_alone) {
    list_t tokens;
    algebra_t first;
    first.macro_define("sq(a)", "a * a");
    ASSERT_TRUE(first.parse("sq(3)", tokens));
    algebra_t second(first);
    second.macro_define("sq(a)", "0");
    EXPECT_EQ(shown(first.evaluate(tokens)), "(i) 9");
}

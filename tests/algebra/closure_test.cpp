// Host functions with state of their own, with a range of argument counts, and their removal.
#include <memory>
#include <stdexcept>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::host_function_t;
using ko::alg::list_t;
using ko::alg::result_t;
using values_t = std::vector<result_t>;

/// The number of arguments and the first one, if any.
result_t counted(algebra_t&, const values_t& values) {
    return std::to_string(values.size()) +
           (values.empty() ? "" : ":" + values.front().string_get(false, 0));
}

class closure : public test::evaluator_t {};

TEST_F(closure, has_a_state_of_its_own) {
    int calls = 0;
    algebra.define(
        "next", [&calls](algebra_t&, const values_t&) { return result_t(++calls); }, 0, 0);
    expect({{"next() * 10 + next()", "(i) 12"}, {"next", "(i) 3"}});
    EXPECT_EQ(calls, 3);
}

TEST_F(closure, takes_any_number_of_arguments_of_its_range) {
    algebra.define("f", counted, 1, 3);
    expect({{"f(7)", "(s) 1:7"},
            {"f(7, 8)", "(s) 2:7"},
            {"f('x', 8, 9)", "(s) 3:x"},
            {"f(1, 2, 3, 4)", "! external function f -- 4 arguments found, 1 to 3 expected"}});
}

TEST_F(closure, of_one_count_is_refused_like_any_function) {
    algebra.define("f", counted, 2, 2);
    expect({{"f(7, 8)", "(s) 2:7"},
            {"f(7)", "! external function f -- 1 arguments found, 2 expected"}});
    expect_parse_errors({{"f", "external function %s -- not enough arguments"},
                         {"f -", "external function %s -- parse error"}});
}

TEST_F(closure, without_arguments_takes_none) {
    algebra.define("f", counted, 0, 0);
    expect({{"f", "(s) 0"}, {"f()", "(s) 0"}, {"f + f()", "(s) 00"}});
}

TEST_F(closure, that_may_go_without_arguments_takes_those_in_parentheses) {
    algebra.define("f", counted, 0, 2);
    expect({{"f", "(s) 0"},
            {"f()", "(s) 0"},
            {"f(7)", "(s) 1:7"},
            {"f(7, 8)", "(s) 2:7"},
            {"f + f(1)", "(s) 01:1"},
            {"max(1, f())", "(i) 1"},
            {"f(1, 2, 3)", "! external function f -- 3 arguments found, 0 to 2 expected"}});
}

TEST_F(closure, with_a_range_turned_round_is_refused) {
    EXPECT_THROWS(algebra.define("f", counted, 2, 1),
                  "algebra_t::define() -- 2 to 1 arguments for function 'f'");
    EXPECT_THROWS(algebra.define("f", counted, 0, 2147483648U),
                  "algebra_t::define() -- 0 to 2147483648 arguments for function 'f'");
    EXPECT_EQ(outcome("f"), "! label_t::evaluate() -- access to undefined term, 'f'");
}

TEST_F(closure, that_is_empty_is_no_function) {
    algebra.define("f", host_function_t(), 0, 1);
    EXPECT_EQ(outcome("f()"),
              "! external_function_t::evaluate() -- no prototype for function 'f'");
}

TEST_F(closure, gets_the_evaluator_that_calls) {
    algebra.define(
        "keep",
        [](algebra_t& caller, const values_t& values) {
            caller.assign("kept", values[0]);
            return caller.evaluate("kept + 1");
        },
        1, 1);
    expect({{"keep(4)", "(i) 5"}, {"kept", "(i) 4"}});
    algebra.macro_define("script(x)", "kept = x");
    algebra.macro_define("KEEP", "keep(9)");
    algebra.macro_define("script(x)", "x + (KEEP)");
    expect({{"script(1)", "(i) 11"}, {"kept", "(i) 4"}});
}

TEST_F(closure, lets_exceptions_of_any_type_through) {
    algebra.define(
        "fail", [](algebra_t&, const values_t&) -> result_t { throw std::range_error("out"); }, 0,
        0);
    EXPECT_THROW(algebra.evaluate("fail()"), std::range_error);
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
}

TEST_F(closure, lives_as_long_as_whoever_may_call_it) {
    auto state = std::make_shared<int>(5);
    const std::weak_ptr<int> watch = state;
    list_t tokens;
    {
        algebra_t first;
        first.define(
            "get", [state](algebra_t&, const values_t&) { return result_t(*state); }, 0, 0);
        state.reset();
        ASSERT_TRUE(first.parse("get() * 2", tokens));
        algebra = first;
    }
    EXPECT_EQ(outcome("get()"), "(i) 5");
    EXPECT_TRUE(algebra.undefine("get"));
    EXPECT_EQ(outcome(tokens), "(i) 10");
    EXPECT_FALSE(watch.expired());
    tokens.destroy();
    algebra.evaluate("1");
    EXPECT_TRUE(watch.expired());
}

TEST_F(closure, may_be_replaced_and_removed_while_it_runs) {
    algebra.define(
        "once",
        [text = std::string("a state that is too long for a short string")](algebra_t& caller,
                                                                            const values_t&) {
            caller.undefine("once");
            caller.define("once", counted, 0, 0);
            return result_t(text);
        },
        0, 0);
    expect({{"once()", "(s) a state that is too long for a short string"}, {"once()", "(s) 0"}});
}

class undefine : public test::evaluator_t {};

TEST_F(undefine, lets_the_built_in_function_show_again) {
    algebra.define("abs", counted, 1, 1);
    EXPECT_EQ(outcome("abs(-2)"), "(s) 1:-2");
    EXPECT_TRUE(algebra.undefine("abs"));
    EXPECT_EQ(outcome("abs(-2)"), "(i) 2");
    EXPECT_FALSE(algebra.undefine("abs")) << "a built-in function stays";
    EXPECT_EQ(outcome("abs(-2)"), "(i) 2");
}

TEST_F(undefine, of_a_name_that_is_none_of_a_host_function_does_nothing) {
    EXPECT_FALSE(algebra.undefine("f"));
    EXPECT_FALSE(algebra.undefine("abs"));
    EXPECT_FALSE(algebra.undefine(""));
    EXPECT_EQ(outcome("abs(-2)"), "(i) 2");
}

TEST_F(undefine, makes_the_name_a_variable_or_a_script_function_again) {
    algebra.define("f", counted, 1, 1);
    EXPECT_TRUE(algebra.undefine("f"));
    expect({{"f = 3", "(i) 3"}, {"f", "(i) 3"}});
    algebra.macro_define("g(x)", "x + 1");
    algebra.define("g", counted, 1, 1);
    EXPECT_EQ(outcome("g(1)"), "(s) 1:1");
    EXPECT_TRUE(algebra.undefine("g"));
    EXPECT_EQ(outcome("g(1)"), "(i) 2");
    EXPECT_FALSE(algebra.undefine("g"));
}

TEST_F(undefine, leaves_programs_their_function) {
    algebra.define("f", counted, 1, 1);
    ASSERT_TRUE(algebra.parse("f(4)"));
    const algebra_t copy(algebra);
    EXPECT_TRUE(algebra.undefine("f"));
    EXPECT_EQ(program_outcome(), "(s) 1:4");
    EXPECT_EQ(outcome("f(4)"), "! syntax error in f(4)  -- not enough operators");
    algebra = copy;
    EXPECT_EQ(outcome("f(4)"), "(s) 1:4");
}

} // namespace

// What a host allows an evaluation to use: levels, steps, bytes of text, and time.
#include <atomic>
#include <ctime>
#include <string>
#include <thread>

#include "support/repeated_evaluation.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::limits_t;
using ko::alg::list_t;
using ko::alg::result_t;

/// Calls itself twice for each unit of n: 2 to the power of n evaluations.
const std::string branching =
    "strlen(t='n<1 ? 1 : 0*(n=n-1)+evaluate(t)+evaluate(t)')*0+(n=30)*0+evaluate(t)";
/// Doubles a text for each unit of n.
const std::string doubling = "strlen(t='n<1 ? strlen(s) : 0*(n=n-1)+0*strlen(s=s+s)+evaluate(t)')"
                             "*0+strlen(s='x')*0+(n=29)*0+evaluate(t)";

class bounds : public test::repeated_evaluator_t {
protected:
    void limit_nesting(unsigned levels) {
        limits_t limits = algebra.limits_get();
        limits.nesting = levels;
        algebra.limits_set(limits);
    }
    void limit_steps(std::uint64_t steps) {
        limits_t limits = algebra.limits_get();
        limits.steps = steps;
        algebra.limits_set(limits);
    }
    void limit_text(std::size_t bytes) {
        limits_t limits = algebra.limits_get();
        limits.text_bytes = bytes;
        algebra.limits_set(limits);
    }
};

TEST_F(bounds, are_1000_levels_any_number_of_steps_and_64_mebibytes_of_text_at_first) {
    const limits_t limits = algebra.limits_get();
    EXPECT_EQ(limits.nesting, 1000U);
    EXPECT_EQ(limits.steps, 0U);
    EXPECT_EQ(limits.text_bytes, std::size_t{64} << 20);
}

TEST_F(bounds, of_nesting_are_told_with_the_host_s_number) {
    algebra.macro_define("f(n)", "n < 1 ? 0 : 1 + (AGAIN)");
    algebra.macro_define("AGAIN", "f(n-1)");
    limit_nesting(10);
    expect({{"f(9)", "(i) 9"},
            {"f(10)", "! algebra_t -- script function 'f' nested more than 10 levels deep"}});
    limit_nesting(0);
    expect({{"f(5000)", "(i) 5000"}});
}

TEST_F(bounds, of_nesting_hold_each_time_a_function_is_called) {
    algebra.macro_define("f(n)", "n < 1 ? 0 : 1 + (AGAIN)");
    algebra.macro_define("AGAIN", "f(n-1)");
    for (int i = 0; i < 3; ++i) {
        limit_nesting(10);
        expect_each_time(
            {{"f(9)", "(i) 9"},
             {"f(10)", "! algebra_t -- script function 'f' nested more than 10 levels deep"}});
        limit_nesting(0);
        expect_each_time({{"f(100)", "(i) 100"}, {"f(400)", "(i) 400"}});
    }
}

TEST_F(bounds, of_steps_and_time_hold_each_time_a_function_is_called) {
    std::atomic<bool> flag{false};
    algebra.interrupt_set(&flag);
    algebra.macro_define("sq(x)", "x * x");
    algebra.macro_define("f(x)", "x * 0 + (SUM)");
    algebra.macro_define("SUM", "sq(x) + sq(x + 1) + sq(x + 2)");
    for (int i = 0; i < 3; ++i) {
        limit_steps(i % 2 == 0 ? 10000 : 0);
        expect_each_time({{"f(1) + f(2)", "(i) 43"}});
        limit_steps(10);
        expect_each_time(
            {{"f(1) + f(2)", "! algebra_t -- evaluation exceeds the limit of 10 steps"}});
        limit_steps(0);
        flag = true;
        expect_each_time({{"f(1) + f(2)", "! algebra_t -- evaluation interrupted"}});
        flag = false;
    }
}

TEST_F(bounds, of_steps_end_what_branches) {
    limit_steps(100000);
    EXPECT_EQ(outcome(branching), "! algebra_t -- evaluation exceeds the limit of 100000 steps");
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
}

TEST_F(bounds, of_steps_are_counted_anew_by_each_outermost_evaluation) {
    limit_steps(20);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(outcome("1 + 2 * 3"), "(i) 7");
    }
}

TEST_F(bounds, of_steps_are_shared_by_all_that_an_evaluation_brings_about) {
    algebra.define("on_copy", [](algebra_t& a, result_t text) {
        algebra_t copy(a);
        return copy.evaluate(text.string_get(false, 0));
    });
    algebra.define("again", [](algebra_t& a, result_t text) {
        return a.evaluate(text.string_get(false, 0));
    });
    algebra.macro_define("f(x)", "x + 1 + 1 + 1");
    limit_steps(14);
    const std::string message = "! algebra_t -- evaluation exceeds the limit of 14 steps";
    expect({{"f(f(1))", "(i) 7"},
            {"f(f(f(f(1))))", message},
            {"evaluate('1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1')", message},
            {"assign('x', '1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1')", message},
            {"on_copy('1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1')", message},
            {"again('1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1')", message}});
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(bounds, of_text_end_what_doubles) {
    EXPECT_EQ(outcome(doubling),
              "! algebra_t -- evaluation exceeds the limit of 67108864 text bytes");
    limit_text(100);
    EXPECT_EQ(outcome("s = '12345678901234567890' + '12345678901234567890'"),
              "(s) 1234567890123456789012345678901234567890");
    EXPECT_EQ(outcome("(s + s) + (s = 'kept')"),
              "! algebra_t -- evaluation exceeds the limit of 100 text bytes");
}

TEST_F(bounds, of_text_can_be_lifted) {
    limit_text(0);
    EXPECT_EQ(outcome("strlen(s='0123456789')*0 + strlen(t='n<1 ? strlen(s) : 0*(n=n-1)+"
                      "0*strlen(s=s+s)+evaluate(t)')*0 + (n=14)*0 + evaluate(t)"),
              "(i) 163840");
}

TEST_F(bounds, leave_what_had_been_assigned) {
    limit_steps(10);
    EXPECT_NE(outcome("(x = 5) + evaluate('1+1+1+1+1+1+1+1+1+1+1')"), "");
    EXPECT_EQ(outcome("x"), "(i) 5");
}

TEST_F(bounds, are_taken_along_by_copies) {
    limit_steps(7);
    const algebra_t copy(algebra);
    algebra_t assigned;
    assigned = algebra;
    EXPECT_EQ(copy.limits_get().steps, 7U);
    EXPECT_EQ(assigned.limits_get().steps, 7U);
}

TEST_F(bounds, an_interrupted_evaluation_ends) {
    std::atomic<bool> flag{true};
    algebra.interrupt_set(&flag);
    EXPECT_EQ(outcome("1 + 1"), "! algebra_t -- evaluation interrupted");
    flag = false;
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
    algebra.interrupt_set(nullptr);
    flag = true;
    EXPECT_EQ(outcome("1 + 1"), "(i) 2");
}

TEST_F(bounds, an_evaluation_is_interrupted_by_another_thread) {
    std::atomic<bool> flag{false};
    algebra.interrupt_set(&flag);
    std::thread other([&] { flag = true; });
    EXPECT_EQ(outcome(branching), "! algebra_t -- evaluation interrupted");
    other.join();
}

TEST_F(bounds, a_long_program_is_interrupted_on_the_way) {
    static std::atomic<bool> flag{false};
    algebra.interrupt_set(&flag);
    algebra.define("stop", [](algebra_t&) {
        flag = true;
        return result_t(0);
    });
    algebra.assign("x", 0);
    EXPECT_EQ(outcome("stop()" + test::repeated("+1", 100000) + "+(x=1)"),
              "! algebra_t -- evaluation interrupted");
    EXPECT_EQ(algebra.get("x").int_get(), 0);
}

TEST_F(bounds, a_list_cannot_be_parsed_into_while_it_is_evaluated) {
    static list_t tokens;
    algebra.define("reparse", [](algebra_t& a) { return result_t(a.parse("1", tokens)); });
    ASSERT_TRUE(algebra.parse("1 + reparse()", tokens));
    EXPECT_EQ(outcome(tokens), "! algebra_t::parse() -- the list is being evaluated");
    tokens.destroy();
}

} // namespace

// Programs that run again and again.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "support/evaluation.h"

using ko::alg::algebra_t;
using ko::alg::limits_t;
using ko::alg::result_t;

namespace {

class repetition : public test::evaluator_t {
protected:
    void SetUp() override {
        algebra.macro_define("sq(x)", "x*x");
        algebra.macro_define("fib(n)", "n < 2 ? n : BEFORE");
        algebra.macro_define("BEFORE", "fib(n - 1) + fib(n - 2)");
        algebra.macro_define("two(p,q)", "p * 10 + q");
        algebra.macro_define("deep(n)", "n == 0 ? 0 : DEEPER");
        algebra.macro_define("DEEPER", "deep(n - 1) + 1");
        algebra.macro_define("free(n)", "n + a");
    }

    std::string again() { return program_outcome(); }

    // Every run gives what the first one gave.
    void expect_steady(const std::string& text) {
        ASSERT_TRUE(algebra.parse(text)) << text;
        const std::string first = again();
        for (int i = 0; i < 40; ++i) {
            ASSERT_EQ(again(), first) << text << ", run " << i + 2;
        }
    }
};

constexpr const char* texts[] = {
    "a",
    "-a + !b - +c",
    "(a + b*c) / (a - 1.5) + b*b",
    "1.5 + a*b + c*(a*b + b*c) - (a*b - c) * (a*b + 2)",
    "a % b + (a << 2) + (a >> 1)",
    "(a & b) + (a | b) + (a && b) + (a || c)",
    "(a < b) + 2*(a <= b) + 4*(a > b) + 8*(a >= b) + 16*(a == b) + 32*(a != b)",
    "a ? b : c",
    "1 + (a > b ? (b < c ? 10 : 20) : 30) * (a ? 2 : 3)",
    "sqrt(abs(a)) + max(a, b) - min(1 + a, c) + max(min(a, b), c)",
    "max(a, b)",
    "sq(a) + sq(sq(b) - c)",
    "fib(9)",
    "two(a, two(1, c) - b)",
    "deep(240) + deep(300)",
    "deep(2000)",
    "free(1) + free(2)",
    "a ? 1 : missing",
    "missing + 1",
    "a / (b - b)",
    "a % 0",
    "pow(a, 2) + strlen(\"xyz\")",
    "a + \"text\"",
    "7/2*c - c*7/2",
    "-7/2.0*c + -a/4.0 - -b*2.5",
    "max(a - b, c)*1.5 + min(c*2.0, 3)",
    "sqrt(a*1.5)*floor(b/0.5) - abs(-c)",
};

} // namespace

TEST_F(repetition, gives_the_same_each_time) {
    const result_t values[] = {result_t(3),      result_t(2.5F),           result_t(-7),
                               result_t("text"), result_t(HUGE_VALF),      result_t(0.9999999999),
                               result_t(0.0F),   result_t(-std::nanf("5"))};
    for (const result_t& a : values) {
        for (const result_t& b : values) {
            algebra.assign("a", a);
            algebra.assign("b", b);
            algebra.assign("c", 3.5F);
            for (const char* const text : texts) {
                expect_steady(text);
            }
        }
    }
}

TEST_F(repetition, follows_a_variable_through_all_types) {
    result_t& a = algebra["a"];
    ASSERT_TRUE(algebra.parse("a + a"));
    for (int round = 0; round < 50; ++round) {
        a = round;
        ASSERT_EQ(again(), "(i) " + std::to_string(2 * round));
        a = 0.25F;
        ASSERT_EQ(again(), "(f) 0.5");
        a = "x";
        ASSERT_EQ(again(), "(s) xx");
    }
}

TEST_F(repetition, divides_integers_once_floats_have_become_such) {
    ASSERT_TRUE(algebra.parse("a / b * 2.5"));
    for (int round = 0; round < 20; ++round) {
        algebra.assign("a", 7.0F);
        algebra.assign("b", 2.0F);
        ASSERT_EQ(again() + again(), "(f) 8.75(f) 8.75");
        algebra.assign("a", 7);
        ASSERT_EQ(again(), "(f) 8.75");
        algebra.assign("b", 2);
        ASSERT_EQ(again(), "(f) 7.5");
    }
}

TEST_F(repetition, reports_a_division_by_zero_among_good_ones) {
    result_t& a = algebra["a"];
    ASSERT_TRUE(algebra.parse("1.5 / a + a"));
    for (int round = 0; round < 20; ++round) {
        a = 0.5F;
        ASSERT_EQ(again() + again(), "(f) 3.5(f) 3.5");
        a = round % 2 == 0 ? 0.0F : -0.0F;
        ASSERT_EQ(again(), "! divide by zero");
    }
}

TEST_F(repetition, reports_a_division_by_zero_where_another_value_would_be_chosen) {
    result_t& a = algebra["a"];
    algebra.assign("b", 2.0F);
    ASSERT_TRUE(algebra.parse("max(1.5 / a, b) + b"));
    for (int round = 0; round < 20; ++round) {
        a = 0.5F;
        ASSERT_EQ(again() + again(), "(f) 5(f) 5");
        a = 0.0F;
        ASSERT_EQ(again(), "! divide by zero");
    }
}

TEST_F(repetition, reports_a_variable_that_is_gone_until_it_is_back) {
    for (const char* const text : {"a * 2.5", "a * 2"}) {
        ASSERT_TRUE(algebra.parse(text)) << text;
        for (int round = 0; round < 20; ++round) {
            algebra.assign("a", 2.0F);
            const std::string value = again();
            ASSERT_EQ(again() + again(), value + value) << text;
            algebra.erase("a");
            ASSERT_EQ(again(), "! label_t::evaluate() -- access to undefined term, 'a'") << text;
        }
    }
}

TEST_F(repetition, gives_each_nan_with_its_bits) {
    algebra.assign("b", 2.0F);
    for (const std::uint32_t bits : {0x7FC00001U, 0xFFC12345U, 0x7F800001U, 0xFF800001U}) {
        float nan = 0;
        std::memcpy(&nan, &bits, sizeof nan);
        algebra["a"] = nan;
        ASSERT_TRUE(algebra.parse("b * 1.5 - a / b"));
        for (int run = 0; run < 10; ++run) {
            const float value = algebra.evaluate().float_get();
            std::uint32_t given = 0;
            std::memcpy(&given, &value, sizeof given);
            EXPECT_EQ(given, bits | 0x00400000U) << "run " << run + 1;
        }
    }
}

TEST_F(repetition, of_floats_is_bounded_as_the_first_run_is) {
    algebra.assign("a", 2.5F);
    ASSERT_TRUE(algebra.parse("a * 2.0 + a"));
    EXPECT_EQ(again() + again() + again(), "(f) 7.5(f) 7.5(f) 7.5");
    limits_t limits;
    limits.steps = 1;
    algebra.limits_set(limits);
    EXPECT_EQ(again(), "! algebra_t -- evaluation exceeds the limit of 1 steps");
    algebra.limits_set(limits_t());
    const std::atomic<bool> flag{true};
    algebra.interrupt_set(&flag);
    EXPECT_EQ(again(), "! algebra_t -- evaluation interrupted");
    algebra.interrupt_set(nullptr);
    EXPECT_EQ(again(), "(f) 7.5");
}

TEST_F(repetition, keeps_both_views_of_a_value_that_goes_through) {
    algebra.assign("a", 0.9999999999);
    for (const char* const text : {"a", "max(a, 0)", "1 ? a : 2"}) {
        ASSERT_TRUE(algebra.parse(text));
        for (int i = 0; i < 4; ++i) {
            result_t value = algebra.evaluate();
            EXPECT_EQ(value.float_get(), 1.0F) << text;
            value.type_set(result_t::type_int);
            EXPECT_EQ(value.int_get(), 0) << text;
        }
    }
}

TEST_F(repetition, finds_a_function_that_was_defined_anew) {
    ASSERT_TRUE(algebra.parse("sq(3)"));
    EXPECT_EQ(again() + again() + again(), "(i) 9(i) 9(i) 9");
    algebra.macro_define("sq(x)", "x*x*x");
    EXPECT_EQ(again() + again() + again(), "(i) 27(i) 27(i) 27");
    algebra.macro_define("sq()", "7");
    EXPECT_EQ(again() + again(), "(i) 7(i) 7");
}

TEST_F(repetition, finds_what_a_function_calls_after_any_change) {
    algebra.macro_define("twice(x)", "SQUARE * 2");
    algebra.macro_define("SQUARE", "sq(x)");
    ASSERT_TRUE(algebra.parse("twice(3) + sq(1)"));
    EXPECT_EQ(again() + again() + again(), "(i) 19(i) 19(i) 19");
    algebra.define("host", [](algebra_t&) { return result_t(1); });
    EXPECT_EQ(again() + again(), "(i) 19(i) 19") << "after a definition of the host";
    algebra.macro_define("SQUARE", "x");
    EXPECT_EQ(again() + again(), "(i) 7(i) 7") << "after another macro";
}

TEST_F(repetition, finds_functions_after_so_many_others_that_they_are_compiled_anew) {
    for (int i = 0; i < 300; ++i) {
        algebra.macro_define("other" + std::to_string(i) + "(x)", "x + " + std::to_string(i));
    }
    ASSERT_TRUE(algebra.parse("two(sq(2), 1)"));
    EXPECT_EQ(again() + again() + again(), "(i) 41(i) 41(i) 41");
    for (int i = 0; i < 300; ++i) {
        algebra.eval_and_assign("y", "other" + std::to_string(i) + "(1)");
        ASSERT_EQ(test::shown(algebra.get("y")), "(i) " + std::to_string(i + 1));
    }
    EXPECT_EQ(again() + again() + again(), "(i) 41(i) 41(i) 41");
}

// Each level takes some forty places for its values, of which there are 4096.
TEST_F(repetition, of_deep_calls_of_large_functions_is_as_good_as_that_of_small_ones) {
    std::string sum = "large(n - 1)";
    for (int i = 1; i <= 40; ++i) {
        sum += " + " + std::to_string(i);
    }
    algebra.macro_define("large(n)", "n == 0 ? 0 : LARGER");
    algebra.macro_define("LARGER", sum);
    ASSERT_TRUE(algebra.parse("large(200) + large(20)"));
    for (int run = 0; run < 40; ++run) {
        ASSERT_EQ(again(), "(i) 180400") << "run " << run + 1;
    }
}

TEST_F(repetition, meets_a_limit_that_is_set_later) {
    ASSERT_TRUE(algebra.parse("deep(20)"));
    EXPECT_EQ(again() + again(), "(i) 20(i) 20");
    limits_t limits = algebra.limits_get();
    limits.nesting = 10;
    algebra.limits_set(limits);
    EXPECT_EQ(again(), "! algebra_t -- script function 'deep' nested more than 10 levels deep");
    limits.nesting = 1000;
    limits.steps = 50;
    algebra.limits_set(limits);
    EXPECT_EQ(again(), "! algebra_t -- evaluation exceeds the limit of 50 steps");
}

/// The integer view of a value, which a host can bring to light.
int integer_view(result_t value) {
    value.type_set(result_t::type_int);
    return value.int_get();
}

// A double is truncated before it is rounded: its integer view is 2, its float view 3.
TEST_F(repetition, gives_a_variable_with_both_its_views) {
    algebra.assign("a", 2.99999999);
    algebra.assign("b", 1);
    algebra.macro_define("same(x)", "x");
    for (const char* const text : {"a", "b ? a : 7", "b == 2 ? 7 : a", "max(a, b)", "min(9, a)",
                                   "same(a)", "max(same(a), b - 3)"}) {
        ASSERT_TRUE(algebra.parse(text)) << text;
        for (int i = 0; i < 20; ++i) {
            const result_t value = algebra.evaluate();
            ASSERT_EQ(integer_view(value), 2) << text << ", run " << i + 1;
            ASSERT_EQ(value.float_get(), 3.0F) << text << ", run " << i + 1;
        }
    }
}

TEST_F(repetition, computes_with_the_view_of_the_type_alone) {
    algebra.assign("a", 2.99999999);
    algebra.assign("b", 1);
    for (const char* const text : {"a + 0", "+a", "max(a, b) + 0", "(b ? a : 7) * b"}) {
        ASSERT_TRUE(algebra.parse(text)) << text;
        for (int i = 0; i < 20; ++i) {
            ASSERT_EQ(integer_view(algebra.evaluate()), 3) << text << ", run " << i + 1;
        }
    }
}

TEST_F(repetition, keeps_references_while_names_come_and_go) {
    result_t& a = algebra["a"];
    for (int i = 0; i < 500; ++i) {
        const std::string name = "n" + std::to_string(i);
        algebra.macro_define("set(x)", name + " = x");
        a = i;
        ASSERT_EQ(test::shown(algebra.evaluate("set(a) + a")), "(i) " + std::to_string(2 * i));
        ASSERT_FALSE(algebra.find(name));
    }
    EXPECT_EQ(&algebra["a"], &a);
}

// Number literals.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/evaluation.h"

namespace {

using integer_literal = test::evaluator_t;
using float_literal = test::evaluator_t;

std::string not_enough(const std::string& line) {
    return "syntax error in " + line + "  -- not enough operators";
}

constexpr const char* colon = "algebra_t::unknown() - unidentified character ':'";
constexpr const char* point = "algebra_t::unknown() - unidentified character '.'";

} // namespace

TEST_F(integer_literal, zero_stands_alone_before_a_blank_and_a_parenthesis) {
    expect({{"0", "(i) 0"}, {"0 ", "(i) 0"}, {"(0)", "(i) 0"}, {"0+1", "(i) 1"}});
}

TEST_F(integer_literal, is_decimal_after_1_to_9) {
    expect({{"7", "(i) 7"},
            {"42", "(i) 42"},
            {"9080", "(i) 9080"},
            {"2147483647", "(i) 2147483647"}});
}

TEST_F(integer_literal, is_octal_after_0) {
    expect({{"017", "(i) 15"}, {"00", "(i) 0"}, {"007", "(i) 7"}, {"0777", "(i) 511"}});
}

TEST_F(integer_literal, swallows_one_digit_that_is_not_octal) {
    // The first digit after the 0 belongs to the number whatever it is.
    expect({{"08", "(i) 0"}, {"09", "(i) 0"}, {"08 + 1", "(i) 1"}, {"0817", "(i) 0"}});
}

TEST_F(integer_literal, ends_at_a_later_digit_that_is_not_octal) {
    expect_parse_errors({{"018", not_enough("018")}, {"089", not_enough("089")}});
}

TEST_F(integer_literal, is_hexadecimal_after_0x) {
    expect({{"0x1f", "(i) 31"},
            {"0x1F", "(i) 31"},
            {"0xabcdef", "(i) 11259375"},
            {"0xABCDEF", "(i) 11259375"},
            {"0x0", "(i) 0"},
            {"0x7fffffff", "(i) 2147483647"}});
}

TEST_F(integer_literal, is_0_for_a_lone_prefix) {
    expect({{"0x", "(i) 0"}, {"0X", "(i) 0"}, {"0x + 1", "(i) 1"}, {"(0x)", "(i) 0"}});
}

TEST_F(integer_literal, ends_at_a_digit_that_is_not_hexadecimal) {
    expect_parse_errors({{"0xg", not_enough("0xg")}, {"0x1g", not_enough("0x1g")}});
    expect_parse_errors({{"0x1.5", point}});
}

TEST_F(integer_literal, takes_octal_digits_only_after_an_upper_case_x) {
    expect({{"0X1", "(i) 1"}, {"0X17", "(i) 23"}, {"0X77", "(i) 119"}});
    expect_parse_errors({{"0X1F", not_enough("0X1F")}, {"0X8", not_enough("0X8")}});
}

TEST_F(integer_literal, after_an_upper_case_x_is_followed_by_a_name) {
    ko::alg::list_t tokens;
    EXPECT_FALSE(algebra.parse("0X1F", tokens));
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens.front()->text, "0X1");
    EXPECT_EQ(tokens.back()->text, "F");
    EXPECT_EQ(outcome(tokens), "(i) 1");
}

TEST_F(integer_literal, is_clamped_at_32_bits) {
    expect({{"2147483648", "(i) 2147483647"},
            {"4294967295", "(i) 2147483647"},
            {"99999999999999999999", "(i) 2147483647"},
            {"0xFFFFFFFF", "(i) 2147483647"},
            {"0x80000000", "(i) 2147483647"},
            {"0xFFFFFFFFFFFFFFFFFF", "(i) 2147483647"},
            {"037777777777", "(i) 2147483647"},
            {"-2147483648", "(i) -2147483647"},
            {"-2147483647 - 1", "(i) -2147483648"}});
}

TEST_F(integer_literal, of_any_length_is_clamped) {
    expect({{std::string(100000, '9'), "(i) 2147483647"},
            {"0x" + std::string(100000, 'f'), "(i) 2147483647"},
            {"0" + std::string(100000, '0') + "7", "(i) 7"}});
}

TEST_F(integer_literal, keeps_its_digits_as_text) {
    for (const char* digits : {"08", "0x1F", "42", "0", "2147483648", "0x"}) {
        ko::alg::list_t tokens;
        ASSERT_TRUE(algebra.parse(digits, tokens));
        EXPECT_EQ(tokens.front()->text, digits);
    }
}

TEST_F(integer_literal, of_0_directly_before_a_colon_is_refused) {
    // Other digits before a colon are not refused.
    expect_parse_errors({{"0:", colon}, {"1 ? 0:1", colon}, {"1 ? 10+0:1", colon}});
    expect({{"1 ? 0 :1", "(i) 0"},
            {"1 ? 2:3", "(i) 2"},
            {"1 ? 10:3", "(i) 10"},
            {"1 ? 00:3", "(i) 0"},
            {"1 ? 0x0:3", "(i) 0"},
            {"1 ? (0):3", "(i) 0"},
            {"1 ? 0.0:3", "(f) 0"}});
}

TEST_F(integer_literal, takes_no_exponent) {
    ko::alg::list_t tokens;
    EXPECT_FALSE(algebra.parse("1e5", tokens));
    EXPECT_EQ(algebra.parse_error_get(), not_enough("1e5"));
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens.front()->text, "1");
    EXPECT_EQ(tokens.back()->text, "e5");
}

TEST_F(float_literal, has_a_point) {
    expect({{"0.25", "(f) 0.25"},
            {"1.5", "(f) 1.5"},
            {"7.", "(f) 7"},
            {"0.", "(f) 0"},
            {"12.0", "(f) 12"},
            {"1.5+1.5", "(f) 3"}});
}

TEST_F(float_literal, does_not_start_with_a_point) {
    expect_parse_errors({{".5", point}, {"1 + .5", point}, {"00.5", point}});
}

TEST_F(float_literal, has_one_point) {
    expect_parse_errors({{"1.2.3", point}, {"1..2", point}});
}

TEST_F(float_literal, takes_an_exponent) {
    expect({{"2.5e-1", "(f) 0.25"},
            {"2.5E2", "(f) 250"},
            {"2.5e2", "(f) 250"},
            {"2.5E-1", "(f) 0.25"},
            {"2.e2", "(f) 200"},
            {"0.5e1", "(f) 5"},
            {"1.0e007", "(f) 1e+07"}});
}

TEST_F(float_literal, takes_a_minus_but_no_plus_as_sign_of_its_exponent) {
    expect({{"2.5e+1", "(f) 3.5"}, {"1.5e+3", "(f) 4.5"}, {"1.5E+3", "(f) 4.5"}});
}

TEST_F(float_literal, ignores_an_exponent_without_digits) {
    expect({{"1.5e", "(f) 1.5"},
            {"1.5E", "(f) 1.5"},
            {"1.5e-", "(f) 1.5"},
            {"1.5e + 1", "(f) 2.5"},
            {"1.5e--2", "(f) -0.5"},
            {"1.5e-+2", "(f) 3.5"},
            {"(1.5e)*2", "(f) 3"}});
}

TEST_F(float_literal, ends_at_what_follows_its_exponent) {
    expect_parse_errors({{"1.5e3.2", point},
                         {"1.5e3e2", not_enough("1.5e3e2")},
                         {"1.5e 3", not_enough("1.5e 3")},
                         {"1.5f", not_enough("1.5f")}});
}

TEST_F(float_literal, overflows_to_infinity_and_underflows_to_0) {
    expect({{"1.5e999", "(f) inf"},
            {"1.0e39", "(f) inf"},
            {"1.0e-999", "(f) 0"},
            {"1.0e99999999999999999999", "(f) inf"},
            {"1.0e-99999999999999999999", "(f) 0"},
            {"0.0e99999999999999999999", "(f) 0"},
            {"-1.0e39", "(f) -inf"}});
    EXPECT_EQ(algebra.evaluate("1.0e-45").float_get(), std::numeric_limits<float>::denorm_min());
}

TEST_F(float_literal, is_rounded_once) {
    // By way of a double this would be rounded up, to even.
    EXPECT_EQ(algebra.evaluate("1.00000017881393432617187499").float_get(), 1.00000011920928955f);
    EXPECT_EQ(algebra.evaluate("1.00000017881393432617187500").float_get(), 1.0000002384185791f);
    EXPECT_EQ(algebra.evaluate("1.00000005960464477539062501").float_get(), 1.00000011920928955f);
    EXPECT_EQ(algebra.evaluate("0.1").float_get(), 0.1f);
    EXPECT_EQ(algebra.evaluate("16777217.0").float_get(), 16777216.0f);
}

TEST_F(float_literal, of_any_length_is_read) {
    expect({{"1." + std::string(100000, '0'), "(f) 1"},
            {"1" + std::string(1000, '0') + ".0", "(f) inf"},
            {"0." + std::string(100000, '9'), "(f) 1"},
            {"0." + std::string(1000, '0') + "1e1001", "(f) 1"}});
}

TEST_F(float_literal, keeps_its_digits_as_text) {
    for (const char* digits : {"1.50", "7.", "2.5e-1", "1.5e", "1.5e-"}) {
        ko::alg::list_t tokens;
        ASSERT_TRUE(algebra.parse(digits, tokens));
        EXPECT_EQ(tokens.front()->text, digits);
    }
}

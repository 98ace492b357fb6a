#include "algebra/lexer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "support/throws.h"

namespace ko::alg {

/// Reaches the lexer's steps that no line of text leads to.
struct lexer_probe_t {
    explicit lexer_probe_t(std::string text) : line(std::move(text)) {}

    char get() {
        lexer.nextc_get();
        return lexer.current;
    }
    char put_back() {
        lexer.nextc_putback();
        return lexer.current;
    }
    bool at_end() const { return !lexer.nextc_test(); }
    bool convert_int(const std::string& digits) {
        lexer.buffer = digits;
        return lexer.convert_int();
    }
    bool convert_float(const std::string& digits) {
        lexer.buffer = digits;
        return lexer.convert_float();
    }

    std::string line;
    function_table_t functions;
    lexer_settings_t settings{functions, false};
    list_t tokens;
    std::string error;
    lexer_t lexer{line, settings, tokens, error};
};

} // namespace ko::alg

namespace {

using ko::alg::float_convert;
using ko::alg::int_convert;
using ko::alg::lexer_probe_t;

TEST(lexer, appends_a_blank_to_the_line) {
    EXPECT_EQ(lexer_probe_t("ab").line, "ab ");
}

TEST(lexer, reading_past_the_end_of_the_line_throws) {
    lexer_probe_t lexer("");
    EXPECT_EQ(lexer.get(), ' ');
    EXPECT_TRUE(lexer.at_end());
    EXPECT_TRUE(
        test::throws([&] { lexer.get(); }, "algebra_t::nextc_get() - unexpected end-of-line"));
}

TEST(lexer, putting_back_more_than_was_read_throws) {
    lexer_probe_t lexer("a");
    EXPECT_TRUE(test::throws([&] { lexer.put_back(); },
                             "algebra_t::nextc_putback() - put back too many characters"));
}

TEST(lexer, putting_back_makes_the_character_before_the_current_one) {
    lexer_probe_t lexer("abc");
    lexer.get();
    lexer.get();
    EXPECT_EQ(lexer.put_back(), 'a');
    EXPECT_EQ(lexer.put_back(), 'a'); // the first one has none before it
    EXPECT_EQ(lexer.get(), 'a');
}

TEST(lexer, text_that_is_no_integer_is_a_failure) {
    lexer_probe_t lexer("x");
    lexer.get();
    EXPECT_FALSE(lexer.convert_int("x1"));
    EXPECT_EQ(lexer.error, "algebra_t::unknown() -- bad integer format, 'x1'");
    EXPECT_TRUE(lexer.tokens.empty());
}

TEST(lexer, text_that_is_no_float_is_a_failure) {
    lexer_probe_t lexer("x");
    lexer.get();
    EXPECT_FALSE(lexer.convert_float("e5"));
    EXPECT_EQ(lexer.error, "algebra_t::unknown() -- bad float format, 'e5'");
    EXPECT_TRUE(lexer.tokens.empty());
}

TEST(lexer, a_conversion_puts_the_end_of_the_number_back) {
    lexer_probe_t lexer("7+");
    lexer.get();
    lexer.get();
    EXPECT_TRUE(lexer.convert_int("7"));
    EXPECT_EQ(lexer.get(), '+');
    EXPECT_EQ(lexer.tokens.front()->text, "7");
}

TEST(lexer, a_failure_keeps_the_tokens_before_it) {
    lexer_probe_t lexer("1 + $");
    EXPECT_FALSE(lexer.lexer.run());
    EXPECT_EQ(lexer.tokens.size(), 2U);
    EXPECT_EQ(lexer.error, "algebra_t::unknown() - unidentified character '$'");
}

TEST(lexer, gives_each_token_its_strength_and_whether_it_is_unbound) {
    lexer_probe_t lexer("-f ? 'a' * 1.5 << abs : 2 , y = (z)");
    ASSERT_TRUE(lexer.lexer.run());
    const std::vector<std::pair<std::string, int>> expected = {
        {"-", 2},   {"f", -15}, {"?:", -10}, {"a", -15}, {"*", 0},   {"1.5", -15},
        {"<<", -2}, {"abs", 3}, {":", -15},  {"2", -15}, {",", -13}, {"y", -15},
        {"=", -11}, {"(", -15}, {"z", -15},  {")", -15},
    };
    std::vector<std::pair<std::string, int>> found;
    for (const ko::alg::token_t* const token : lexer.tokens) {
        found.emplace_back(token->text, token->strength);
        EXPECT_EQ(token->unbound, token->strength == -15 ? 0U : 1U) << token->text;
        EXPECT_EQ(token->depth, 0) << token->text;
    }
    EXPECT_EQ(found, expected);
}

struct int_case_t {
    const char* text;
    int value;
};

TEST(int_convert, reads_decimal_octal_and_hexadecimal_and_clamps) {
    const int_case_t cases[] = {
        {"7", 7},
        {"017", 15},
        {"08", 0},
        {"0817", 0},
        {"0x1f", 31},
        {"0X1", 1},
        {"0x", 0},
        {"0X", 0},
        {"0xg", 0},
        {"12z", 12},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"4294967295", 2147483647},
        {"0xFFFFFFFF", 2147483647},
        {"037777777777", 2147483647},
        {"99999999999999999999", 2147483647},
    };
    for (const int_case_t& c : cases) {
        int value = -1;
        EXPECT_TRUE(int_convert(c.text, value)) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
}

TEST(int_convert, refuses_what_does_not_begin_with_a_digit) {
    int value = 0;
    EXPECT_FALSE(int_convert("", value));
    EXPECT_FALSE(int_convert("-1", value));
}

struct float_case_t {
    const char* text;
    float value;
};

TEST(float_convert, reads_a_prefix_and_rounds_once) {
    const float_case_t cases[] = {
        {"7.", 7.0F},
        {"1.5e", 1.5F},
        {"1.5e-", 1.5F},
        {"2.5e-1", 0.25F},
        {"2.5E2", 250.0F},
        {"1.5.5", 1.5F},
        {"0.1", 0.1F},
        // Rounded by way of a double this would be 16777216.
        {"16777217.0000000000000000001", 16777218.0F},
        {"1.0e-40", 1.0e-40F},
    };
    for (const float_case_t& c : cases) {
        float value = -1;
        EXPECT_TRUE(float_convert(c.text, value)) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
}

TEST(float_convert, too_large_is_infinity_and_too_small_is_zero) {
    const std::string zeros(400, '0');
    const std::string large[] = {"1.0e39", "3.5e99999999999999999999", "1" + zeros + ".0"};
    const std::string small[] = {"1.0e-60", "3.5e-99999999999999999999", "0." + zeros + "1"};
    for (const std::string& text : large) {
        float value = -1;
        EXPECT_TRUE(float_convert(text, value)) << text;
        EXPECT_TRUE(std::isinf(value) && value > 0) << text;
    }
    for (const std::string& text : small) {
        float value = -1;
        EXPECT_TRUE(float_convert(text, value)) << text;
        EXPECT_EQ(value, 0.0F) << text;
    }
}

TEST(float_convert, a_long_whole_part_and_an_exponent_cancel_out) {
    float value = -1;
    EXPECT_TRUE(float_convert("1" + std::string(400, '0') + ".0e-400", value));
    EXPECT_EQ(value, 1.0F);
}

TEST(float_convert, refuses_what_has_no_digits) {
    float value = 0;
    EXPECT_FALSE(float_convert("", value));
    EXPECT_FALSE(float_convert(".e5", value));
}

} // namespace

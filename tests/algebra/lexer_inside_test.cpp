#include "algebra/lexer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "algebra/numbers.h"
#include "support/throws.h"

namespace {

using namespace ko::alg;

class lexer : public testing::Test {
protected:
    bool lex(const std::string& text) {
        syntax.clear();
        syntax.text = text;
        return line_lex(syntax, settings, error);
    }
    std::string text_of(std::size_t i) const {
        return std::string(syntax.text_of(syntax.items.at(i)));
    }

    ko::alg::family_t family;
    function_table_t functions{family};
    lexer_settings_t settings;
    syntax_t syntax;
    std::string error;
};

TEST_F(lexer, appends_a_blank_to_the_line) {
    EXPECT_TRUE(lex("ab"));
    EXPECT_EQ(syntax.text, "ab ");
}

TEST_F(lexer, reading_past_the_end_of_the_line_throws) {
    EXPECT_THROWS(lex("1 + 'abc"), "algebra_t::nextc_get() - unexpected end-of-line");
    EXPECT_EQ(syntax.items.size(), 2U);
}

TEST_F(lexer, a_failure_keeps_the_tokens_before_it) {
    EXPECT_FALSE(lex("1 + $"));
    EXPECT_EQ(syntax.items.size(), 2U);
    EXPECT_EQ(error, "algebra_t::unknown() - unidentified character '$'");
}

TEST_F(lexer, a_number_ends_before_the_character_behind_it) {
    EXPECT_TRUE(lex("7+0x1g"));
    EXPECT_EQ(text_of(0), "7");
    EXPECT_EQ(text_of(2), "0x1");
    EXPECT_EQ(text_of(3), "g");
}

TEST_F(lexer, knows_where_a_token_stands) {
    EXPECT_TRUE(lex(" ab <= 'text'"));
    EXPECT_EQ(syntax.items[0].text_begin, 1U);
    EXPECT_EQ(syntax.items[1].text_begin, 4U);
    EXPECT_EQ(syntax.items[2].text_begin, 8U); // behind the quote
    EXPECT_EQ(text_of(2), "text");
}

TEST_F(lexer, keeps_the_table_of_script_functions_only_where_it_is_asked_to) {
    ASSERT_TRUE(functions.script_define("f(x)", "x"));
    settings.functions = &functions;
    EXPECT_TRUE(lex("f(1)"));
    EXPECT_EQ(syntax.callees.at(0).scripts, nullptr);
    settings.keeps_scripts = true;
    EXPECT_TRUE(lex("f(1)"));
    EXPECT_EQ(syntax.callees.at(0).scripts, functions.scripts_get());
}

TEST_F(lexer, gives_each_token_its_strength_and_whether_it_is_unbound) {
    ASSERT_TRUE(lex("-f ? 'a' * 1.5 << abs : 2 , y = (z)"));
    const std::vector<std::pair<std::string, int>> expected = {
        {"-", 2},   {"f", -15}, {"?:", -10}, {"a", -15}, {"*", 0},   {"1.5", -15},
        {"<<", -2}, {"abs", 3}, {":", -15},  {"2", -15}, {",", -13}, {"y", -15},
        {"=", -11}, {"(", -15}, {"z", -15},  {")", -15},
    };
    std::vector<std::pair<std::string, int>> found;
    for (const item_t& item : syntax.items) {
        const int strength = syntax_t::strength_of(item);
        found.emplace_back(syntax.text_of(item), strength);
        EXPECT_EQ(syntax_t::is_unbound(item), strength != -15) << syntax.text_of(item);
        EXPECT_EQ(item.depth, 0) << syntax.text_of(item);
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

TEST(float_convert, long_digits_and_a_long_exponent_are_weighed_exactly) {
    const std::string zeros(1000000, '0');
    const std::pair<std::string, float> cases[] = {
        {"0." + zeros + "1e1000100", INFINITY}, // 1e99
        {"0." + zeros + "1e1000000", 0.1F},
        {"0." + zeros + "1e2000000", INFINITY},
        {"0." + zeros + "1e999000", 0.0F},
        {"1" + zeros + ".0e-1000000", 1.0F},
        {"1" + zeros + ".0e-999000", INFINITY},
        {"1" + zeros + ".0e-2000000", 0.0F},
        {"1" + zeros + ".0e-99999999999999999999", 0.0F},
    };
    for (const auto& [text, expected] : cases) {
        float value = -1;
        EXPECT_TRUE(float_convert(text, value));
        EXPECT_EQ(value, expected) << text.substr(0, 3) << ".." << text.substr(text.size() - 9);
    }
}

TEST(float_convert, refuses_what_has_no_digits) {
    float value = 0;
    EXPECT_FALSE(float_convert("", value));
    EXPECT_FALSE(float_convert(".e5", value));
}

} // namespace

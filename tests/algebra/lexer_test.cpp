// Characters, operators, strings and names of the expression language.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using lexer = test::evaluator_t;
using lexer_sign = test::evaluator_t;
using lexer_string = test::evaluator_t;
using lexer_name = test::evaluator_t;

std::string unidentified(const std::string& character) {
    return "algebra_t::unknown() - unidentified character '" + character + "'";
}

constexpr const char* end_of_line = "algebra_t::nextc_get() - unexpected end-of-line";

} // namespace

TEST_F(lexer, refuses_every_other_character) {
    expect_parse_errors({{"a^b", unidentified("^")},
                         {"~a", unidentified("~")},
                         {"#x", unidentified("#")},
                         {"$", unidentified("$")},
                         {"1 @ #", unidentified("@")},
                         {"[1]", unidentified("[")},
                         {"{1}", unidentified("{")},
                         {"a\\b", unidentified("\\")},
                         {"`", unidentified("`")},
                         {".", unidentified(".")},
                         {".5", unidentified(".")}});
}

TEST_F(lexer, refuses_a_semicolon_that_reaches_it) {
    // The statement reader copies whatever follows a slash.
    EXPECT_EQ(parse_error("1 /; 2"), unidentified(";"));
    algebra.macro_define("end", ";");
    EXPECT_EQ(parse_error("1 end 2"), unidentified(";"));
}

TEST_F(lexer, refuses_control_characters_and_bytes_beyond_ascii) {
    for (int byte = 1; byte < 255; ++byte) {
        if (byte >= 127 || (byte < 32 && (byte < 9 || byte > 13))) {
            const std::string character(1, static_cast<char>(byte));
            EXPECT_EQ(parse_error("1" + character), unidentified(character)) << byte;
        }
    }
}

TEST_F(lexer, refuses_a_zero_byte_and_tells_it) {
    EXPECT_EQ(parse_error(std::string("1\0", 2)), unidentified(std::string(1, '\0')));
}

TEST_F(lexer, takes_every_byte_beyond_ascii_for_no_letter) {
    EXPECT_EQ(parse_error("\xE4"), unidentified("\xE4"));
    EXPECT_EQ(parse_error("a\xE4"), unidentified("\xE4"));
    EXPECT_EQ(parse_error("1\xA0"), unidentified("\xA0"));
}

TEST_F(lexer, skips_white_space) {
    expect({{" 1\t+\r2\v*\f3 ", "(i) 7"}, {"\r1\r", "(i) 1"}, {"(\t1 )", "(i) 1"}});
}

TEST_F(lexer, ends_numbers_and_names_at_white_space) {
    expect_parse_errors({{"1 2", "syntax error in 1 2  -- not enough operators"},
                         {"a\tb", "syntax error in a\tb  -- not enough operators"},
                         {"1\r2", "syntax error in 1\r2  -- not enough operators"}});
}

TEST_F(lexer, takes_two_character_operators_greedily) {
    expect({{"1<=1", "(i) 1"},
            {"1<<3", "(i) 8"},
            {"2>=3", "(i) 0"},
            {"16>>2", "(i) 4"},
            {"1==1", "(i) 1"},
            {"1!=1", "(i) 0"},
            {"2&&1", "(i) 1"},
            {"0||2", "(i) 1"}});
}

TEST_F(lexer, reads_single_character_operators) {
    expect({{"1<2", "(i) 1"},
            {"1>2", "(i) 0"},
            {"6&3", "(i) 2"},
            {"6|3", "(i) 7"},
            {"!0", "(i) 1"},
            {"7%4", "(i) 3"},
            {"7/2", "(i) 3"},
            {"7*2", "(i) 14"},
            {"7-2", "(i) 5"},
            {"7+2", "(i) 9"},
            {"x=4", "(i) 4"},
            {"1?2:3", "(i) 2"}});
}

TEST_F(lexer, tears_operators_apart_at_a_blank) {
    const std::string right =
        "binary_t::construct() -- right operand does not evaluate to a term";
    expect_parse_errors(
        {{"1 < = 2", right},
         {"1 > = 2", right},
         {"1 < < 2", right},
         {"1 > > 2", right},
         {"1 & & 2", right},
         {"1 | | 2", right},
         {"1 = = 2", "assign_t::construct() -- right operand does not evaluate to a term"}});
}

TEST_F(lexer, reads_three_in_a_row_as_two_and_one) {
    const std::string left = "binary_t::construct() -- left operand does not evaluate to a term";
    const std::string right =
        "binary_t::construct() -- right operand does not evaluate to a term";
    expect_parse_errors({{"1 <<= 2", right}, {"1 >>= 2", right}, {"1 &&& 2", left}});
    expect({{"x ==! 0", "! label_t::evaluate() -- access to undefined term, 'x'"},
            {"1 ==!0", "(i) 1"}});
}

TEST_F(lexer, reads_an_operator_at_the_end_of_the_text) {
    for (const char* text : {"1|", "1&", "1<", "1>", "1*", "1%", "1+", "1-"}) {
        EXPECT_EQ(parse_error(text), "binary_t::construct() -- expected right operand") << text;
    }
    EXPECT_EQ(parse_error("1="), "assign_t::construct() -- expected right operand");
    EXPECT_EQ(parse_error("!"), "unary_t::construct() -- expected right operand");
}

TEST_F(lexer_sign, is_binary_after_an_operand) {
    algebra.assign("a", 5);
    expect({{"a-1", "(i) 4"},
            {"a -1", "(i) 4"},
            {"5-1", "(i) 4"},
            {"5.5-1", "(f) 4.5"},
            {"0-1", "(i) -1"},
            {"0x10-1", "(i) 15"},
            {"010-1", "(i) 7"},
            {"a+1", "(i) 6"},
            {"'a'+1", "(s) a1"},
            {"'a'-1", "! operator binary '-' -- illegal type"}});
}

TEST_F(lexer_sign, is_binary_after_a_closing_parenthesis) {
    expect({{"(5)-1", "(i) 4"}, {"(5)+1", "(i) 6"}});
}

TEST_F(lexer_sign, is_unary_at_the_start) {
    expect({{"-1", "(i) -1"}, {"+1", "(i) 1"}, {" -1", "(i) -1"}, {"-1.5", "(f) -1.5"}});
}

TEST_F(lexer_sign, is_unary_after_an_opening_parenthesis) {
    expect({{"(-1)", "(i) -1"}, {"(+1)", "(i) 1"}});
}

TEST_F(lexer_sign, is_unary_after_a_comma_and_a_colon) {
    expect({{"max(-2,-1)", "(i) -1"}, {"min(-2,+1)", "(i) -2"}, {"0 ? 1 :-1", "(i) -1"}});
}

TEST_F(lexer_sign, is_unary_after_an_operator) {
    expect({{"1?-1:2", "(i) -1"},
            {"2*-1", "(i) -2"},
            {"2--1", "(i) 3"},
            {"2-+1", "(i) 1"},
            {"2+-1", "(i) 1"},
            {"2<-1", "(i) 0"},
            {"2==-1", "(i) 0"},
            {"1&&-1", "(i) 1"},
            {"x=-1", "(i) -1"},
            {"8/-2", "(i) -4"},
            {"8%-3", "(i) 2"}});
}

TEST_F(lexer_sign, is_binary_after_a_function_name) {
    EXPECT_EQ(parse_error("abs -3"), "external function %s -- parse error");
    expect({{"abs(-3)", "(i) 3"}});
}

TEST_F(lexer_sign, of_plus_takes_no_string) {
    expect({{"+'a'", "! operator unary '+' -- illegal type"},
            {"-'a'", "! operator unary '-' -- illegal type"}});
}

TEST_F(lexer_string, runs_to_the_next_quote_of_its_kind) {
    expect({{"\"abc\"", "(s) abc"},
            {"'abc'", "(s) abc"},
            {"'it\"s'", "(s) it\"s"},
            {"\"it's\"", "(s) it's"},
            {"\"\"", "(s) "},
            {"''", "(s) "},
            {"'a' + \"b\"", "(s) ab"}});
}

TEST_F(lexer_string, with_the_other_quote_inside_is_one_token) {
    ko::alg::list_t tokens;
    ASSERT_TRUE(algebra.parse("'it\"s'", tokens));
    ASSERT_EQ(tokens.size(), 1u);
    EXPECT_TRUE(tokens.front()->is_string());
    EXPECT_EQ(tokens.front()->text, "it\"s");
}

TEST_F(lexer_string, has_no_escapes) {
    expect({{"'a\\'", "(s) a\\"}, {"'\\n'", "(s) \\n"}, {"\"a\\\\\"", "(s) a\\\\"}});
}

TEST_F(lexer_string, keeps_every_byte) {
    const std::string bytes("\0\x01;//\xE4~#\t", 9);
    EXPECT_EQ(algebra.evaluate("'" + bytes + "'").string_get(false, 0), bytes);
}

TEST_F(lexer_string, is_never_a_parenthesis_nor_a_colon_nor_a_comma) {
    expect(
        {{"'('", "(s) ("}, {"')' + '('", "(s) )("}, {"1 ? ':' : 2", "(s) :"}, {"','", "(s) ,"}});
}

TEST_F(lexer_string, without_an_end_throws) {
    // Such a text gets past the statement reader only from a macro or behind a slash.
    algebra.macro_define("open", "\"abc");
    EXPECT_THROWS(algebra.parse("open"), end_of_line);
    algebra.macro_define("open", "'");
    EXPECT_THROWS(algebra.parse("1 + open"), end_of_line);
    EXPECT_THROWS(algebra.parse("1 /\"abc"), end_of_line);
}

TEST_F(lexer_string, without_an_end_leaves_the_evaluator_usable) {
    EXPECT_THROWS(algebra.evaluate("1 /'abc"), end_of_line);
    expect({{"1 + 1", "(i) 2"}});
}

TEST_F(lexer_name, holds_letters_digits_and_underscores) {
    expect({{"aZ_09 = 3", "(i) 3"},
            {"_x = 4", "(i) 4"},
            {"_ = 5", "(i) 5"},
            {"aZ_09 + _x + _", "(i) 12"}});
}

TEST_F(lexer_name, is_case_sensitive) {
    algebra.assign("x", 1);
    expect({{"X", "! label_t::evaluate() -- access to undefined term, 'X'"}, {"x", "(i) 1"}});
}

TEST_F(lexer_name, does_not_start_with_a_digit) {
    EXPECT_EQ(parse_error("2x"), "syntax error in 2x  -- not enough operators");
}

TEST_F(lexer_name, of_a_function_is_the_function) {
    algebra.assign("abs", 5);
    expect({{"abs(-3)", "(i) 3"},
            {"ABS", "! label_t::evaluate() -- access to undefined term, 'ABS'"}});
}

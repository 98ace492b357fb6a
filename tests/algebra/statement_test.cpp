// How one statement is read out of a text.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using statement = test::evaluator_t;
using line_comment = test::evaluator_t;
using block_comment = test::evaluator_t;
using slash = test::evaluator_t;
using end_of_input = test::evaluator_t;

constexpr const char* eof = "unexpected EOF encountered";

std::string not_enough(const std::string& line) {
    return "syntax error in " + line + "  -- not enough operators";
}

} // namespace

TEST_F(statement, ends_at_a_semicolon) {
    algebra.assign("x", 1);
    expect({{"x; y", "(i) 1"}, {"x;", "(i) 1"}, {"x = 2; x = 3", "(i) 2"}, {"x", "(i) 2"}});
}

TEST_F(statement, may_be_followed_by_anything) {
    expect({{"1; # ' /*", "(i) 1"}, {"1;; 2", "(i) 1"}});
}

TEST_F(statement, keeps_a_semicolon_inside_quotes) {
    expect({{"'a;b'", "(s) a;b"}, {"\"a;b\" + 'c;'", "(s) a;bc;"}});
}

TEST_F(statement, keeps_everything_inside_quotes) {
    expect({{"'a // b'", "(s) a // b"},
            {"\"a /* b\"", "(s) a /* b"},
            {"'a\nb'", "(s) a\nb"},
            {"'a\"b' + \"c'd\"", "(s) a\"bc'd"},
            {"'a\xFF"
             "b'",
             "(s) a\xFF"
             "b"}});
}

TEST_F(statement, loses_its_line_feeds) {
    algebra.assign("ab", 7);
    expect({{"1\n+\n2", "(i) 3"}, {"1\n2", "(i) 12"}, {"a\nb", "(i) 7"}, {"1 <\n= 2", "(i) 1"}});
}

TEST_F(statement, joins_lines_directly) {
    EXPECT_EQ(parse_error("a\n+b #"), "algebra_t::unknown() - unidentified character '#'");
    EXPECT_EQ(parse_error("a\n+b c"), not_enough("a+b c"));
}

TEST_F(statement, keeps_its_carriage_returns) {
    EXPECT_EQ(outcome("1\r\n+ 2\r\n"), "(i) 3");
    EXPECT_EQ(parse_error("1\r\n2"), not_enough("1\r2"));
    EXPECT_EQ(outcome("'a\r\nb'"), "(s) a\r\nb");
}

TEST_F(statement, ends_at_byte_255) {
    expect({{"1 + 1\xFF + 5", "(i) 2"}, {"7\xFF", "(i) 7"}});
    EXPECT_FALSE(algebra.parse("\xFF"
                               "1"));
}

TEST_F(statement, goes_on_at_every_other_byte) {
    EXPECT_EQ(parse_error("1\xFE"), "algebra_t::unknown() - unidentified character '\xFE'");
    EXPECT_EQ(parse_error(std::string("1\0", 2)),
              "algebra_t::unknown() - unidentified character '" + std::string(1, '\0') + "'");
}

TEST_F(statement, that_is_blank_is_not_parsed) {
    for (const char* text : {"", " ", "\n", "\t\r\v\f ", ";", " ; 1", "\n\n;1", "// note\n",
                             "/* note */", "/* a */ // b\n\xFF 1"}) {
        EXPECT_FALSE(algebra.parse(text)) << text;
        EXPECT_EQ(algebra.parse_error_get(), "") << text;
    }
}

TEST_F(statement, that_is_blank_leaves_the_program) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    EXPECT_FALSE(algebra.parse(" ; 5"));
    EXPECT_EQ(program_outcome(), "(i) 2");
}

TEST_F(statement, after_blank_lines_is_read) {
    EXPECT_EQ(outcome("\n\n  1 + 1"), "(i) 2");
}

TEST_F(line_comment, is_dropped_with_its_line_feed) {
    algebra.assign("a", 1);
    algebra.assign("b", 2);
    expect({{"a // note\n+ b", "(i) 3"},
            {"a// ; ' \" /* \n+b", "(i) 3"},
            {"1//\n2", "(i) 12"},
            {"// first\na", "(i) 1"},
            {"a //\n", "(i) 1"}});
}

TEST_F(line_comment, needs_a_line_feed) {
    for (const char* text : {"a // note", "//", "1 //\r", "1 // ;", "1 // 'x'"}) {
        EXPECT_THROWS(algebra.parse(text), eof) << text;
    }
}

TEST_F(line_comment, behind_the_end_of_the_statement_is_not_read) {
    EXPECT_EQ(outcome("1; // note"), "(i) 1");
}

TEST_F(block_comment, is_dropped) {
    expect({{"1 /* x */ + 2", "(i) 3"},
            {"1/**/2", "(i) 12"},
            {"1 /* a ; ' \" // \n b */ + 2", "(i) 3"},
            {"/* a *//* b */ 5", "(i) 5"},
            {"1 /* / */ + 2", "(i) 3"},
            {"1 /*/ 5 */ + 2", "(i) 3"}});
}

TEST_F(block_comment, misses_an_end_right_behind_a_star) {
    // The character behind a star that ends nothing is skipped unseen; callers rely on it.
    expect({{"1 /* a **/ + 2 /* b */ + 3", "(i) 4"},
            {"1 /***/ + 2 */ + 3", "(i) 4"},
            {"1 /* *x*/ + 2", "(i) 3"},
            {"1 /* *x**/ + 2 */ + 3", "(i) 4"}});
}

TEST_F(block_comment, ends_behind_an_odd_number_of_stars) {
    expect({{"1 /****/ + 2", "(i) 3"},
            {"1 /* ***/ + 2", "(i) 3"},
            {"1 /* *****/ + 2", "(i) 3"},
            {"1 /* ****/ + 2 */ + 3", "(i) 4"}});
}

TEST_F(block_comment, needs_an_end) {
    for (const char* text :
         {"1 /*", "1 /* x", "1 /* x *", "1 /* x **/", "1 /***/", "1 /*/", "1 /* *x", "1 /* **"}) {
        EXPECT_THROWS(algebra.parse(text), eof) << text;
    }
}

TEST_F(slash, divides) {
    expect({{"6/3", "(i) 2"}, {"6 / 3", "(i) 2"}, {"8 / 2 / 2", "(i) 2"}, {"6\n/\n3", "(i) 2"}});
}

TEST_F(slash, takes_the_next_character_along) {
    // Whatever it is, it is copied as plain text.
    EXPECT_EQ(parse_error("1 /; 2"), "algebra_t::unknown() - unidentified character ';'");
    EXPECT_EQ(parse_error("1 /\xFF"
                          "2"),
              "algebra_t::unknown() - unidentified character '\xFF'");
    EXPECT_EQ(parse_error("6 /\n 3 4"), not_enough("6 /\n 3 4"));
    EXPECT_THROWS(algebra.parse("1 /'2'"), eof);
}

TEST_F(slash, apart_from_another_one_is_no_comment) {
    EXPECT_EQ(parse_error("6 / / 3"),
              "binary_t::construct() -- right operand does not evaluate to a term");
    EXPECT_EQ(outcome("6 / /* c */ 3"), "(i) 2");
}

TEST_F(slash, at_the_end_of_the_text_ends_the_line) {
    EXPECT_EQ(parse_error("1 /"), "binary_t::construct() -- expected right operand");
    EXPECT_EQ(parse_error("1 2 /"), "binary_t::construct() -- expected right operand");
    EXPECT_EQ(parse_error("/"), "binary_t::construct() -- expected left operand");
    EXPECT_EQ(parse_error("# /"), "algebra_t::unknown() - unidentified character '#'");
}

TEST_F(slash, at_the_end_of_the_text_is_not_doubled) {
    ko::alg::list_t tokens;
    EXPECT_FALSE(algebra.parse("'a' 'b' # /", tokens));
    EXPECT_EQ(tokens.size(), 2u);
    EXPECT_FALSE(algebra.parse("1 2 (/", tokens));
    EXPECT_EQ(algebra.parse_error_get(), "unmatched parenthesis");
    EXPECT_EQ(tokens.size(), 3u);
}

TEST_F(slash, at_the_end_of_the_text_keeps_macros_from_being_replaced) {
    algebra.macro_define("A", "#");
    EXPECT_EQ(parse_error("A /"), "binary_t::construct() -- expected right operand");
    EXPECT_EQ(parse_error("A / "), "algebra_t::unknown() - unidentified character '#'");
    algebra.macro_define("A", "A");
    EXPECT_EQ(parse_error("A /"), "binary_t::construct() -- expected right operand");
}

TEST_F(end_of_input, inside_quotes_throws) {
    for (const char* text :
         {"'abc", "\"abc", "'", "1 + \"", "'a' + 'b", "'it\"s", "'a\\'b'", "'a;"}) {
        EXPECT_THROWS(algebra.parse(text), eof) << text;
        EXPECT_THROWS(algebra.evaluate(text), eof) << text;
    }
}

TEST_F(end_of_input, inside_quotes_leaves_the_program_and_the_parse_error) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    EXPECT_THROW(algebra.parse("'abc"), ko::exception_t);
    EXPECT_EQ(algebra.parse_error_get(), "");
    EXPECT_EQ(program_outcome(), "(i) 2");
}

#include "tokenizer/tokenizer.h"

#include <gtest/gtest.h>

namespace {

using tokens_t = std::vector<std::string>;

tokens_t tokens_of(const std::string& line, const std::string& delims = " ") {
    ko::tokenizer_t tokenizer;
    const unsigned count = tokenizer.tokenize(line, delims);
    EXPECT_EQ(count, tokenizer.size());
    return tokenizer;
}

TEST(tokenizer, takes_delimiters_in_a_row_as_one) {
    EXPECT_EQ(tokens_of("a  b"), (tokens_t{"a", "b"}));
    EXPECT_EQ(tokens_of("  a b  "), (tokens_t{"a", "b"}));
}

TEST(tokenizer, splits_at_any_of_the_delimiters) {
    EXPECT_EQ(tokens_of("a,b;c,;d", ",;"), (tokens_t{"a", "b", "c", "d"}));
    EXPECT_EQ(tokens_of("a\xFF"
                        "b",
                        "\xFF"),
              (tokens_t{"a", "b"}));
}

TEST(tokenizer, gives_the_whole_line_without_delimiters) {
    EXPECT_EQ(tokens_of(" a b ", ""), (tokens_t{" a b "}));
}

TEST(tokenizer, gives_no_token_for_nothing_but_delimiters) {
    EXPECT_EQ(tokens_of(""), tokens_t{});
    EXPECT_EQ(tokens_of("   "), tokens_t{});
}

TEST(tokenizer, keeps_delimiters_inside_quotes) {
    EXPECT_EQ(tokens_of("x \"a b\" y"), (tokens_t{"x", "a b", "y"}));
    EXPECT_EQ(tokens_of("\" \""), (tokens_t{" "}));
}

TEST(tokenizer, gives_no_token_for_an_empty_pair_of_quotes) {
    EXPECT_EQ(tokens_of("\"\""), tokens_t{});
    EXPECT_EQ(tokens_of("a \"\" b"), (tokens_t{"a", "b"}));
}

TEST(tokenizer, runs_an_unterminated_quote_to_the_end) {
    EXPECT_EQ(tokens_of("a \"b c "), (tokens_t{"a", "b c "}));
    EXPECT_EQ(tokens_of("a \""), (tokens_t{"a"}));
}

TEST(tokenizer, goes_on_directly_after_the_closing_quote) {
    EXPECT_EQ(tokens_of("\"a\"b \"c\"\"d\""), (tokens_t{"a", "b", "c", "d"}));
}

TEST(tokenizer, takes_a_quote_within_a_token_as_a_character) {
    EXPECT_EQ(tokens_of("a\"b c\"d"), (tokens_t{"a\"b", "c\"d"}));
}

TEST(tokenizer, has_no_escape_character) {
    EXPECT_EQ(tokens_of("\"a\\\" b\""), (tokens_t{"a\\", "b\""}));
}

TEST(tokenizer, skips_a_quote_that_is_a_delimiter) {
    EXPECT_EQ(tokens_of("\"a b\"c", "\""), (tokens_t{"a b", "c"}));
}

TEST(tokenizer, stops_at_a_zero_byte) {
    EXPECT_EQ(tokens_of(std::string("a b\0c d", 7)), (tokens_t{"a", "b"}));
    EXPECT_EQ(tokens_of(std::string("\"a b\0c\" d", 9)), (tokens_t{"a b"}));
    EXPECT_EQ(tokens_of(std::string("a\0b", 3), std::string(1, '\0')), (tokens_t{"a"}));
    EXPECT_EQ(tokens_of(std::string("\0b", 2), std::string(1, '\0')), tokens_t{});
}

TEST(tokenizer, replaces_the_tokens_of_the_line_before) {
    ko::tokenizer_t tokenizer;
    tokenizer.tokenize("a b c", " ");
    EXPECT_EQ(tokenizer.tokenize("d", " "), 1U);
    EXPECT_EQ(tokenizer, tokens_t{"d"});
    EXPECT_EQ(tokenizer.tokenize("", " "), 0U);
    EXPECT_EQ(tokenizer, tokens_t{});
}

TEST(tokenizer, may_be_given_one_of_its_own_tokens) {
    ko::tokenizer_t tokenizer;
    tokenizer.tokenize("a,b c,d", " ");
    tokenizer.tokenize(tokenizer[1], ",");
    EXPECT_EQ(tokenizer, (tokens_t{"c", "d"}));
}

TEST(tokenizer, splits_a_million_characters) {
    std::string line;
    for (int i = 0; i < 250000; ++i) {
        line += "a \"\"";
    }
    EXPECT_EQ(tokens_of(line).size(), 250000U);
}

} // namespace

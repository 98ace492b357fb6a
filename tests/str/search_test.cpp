#include <gtest/gtest.h>

#include "str/str.h"

namespace {

TEST(starts_with, compares_bytes_at_the_start) {
    EXPECT_TRUE(ko::str::starts_with("abc", "ab"));
    EXPECT_TRUE(ko::str::starts_with("abc", "abc"));
    EXPECT_TRUE(ko::str::starts_with("", ""));
    EXPECT_FALSE(ko::str::starts_with("abc", "abcd"));
    EXPECT_FALSE(ko::str::starts_with("abc", "b"));
    EXPECT_FALSE(ko::str::starts_with("abc", "A"));
}

TEST(ends_with, compares_bytes_at_the_end) {
    EXPECT_TRUE(ko::str::ends_with("abc", "bc"));
    EXPECT_TRUE(ko::str::ends_with("abc", "abc"));
    EXPECT_TRUE(ko::str::ends_with("", ""));
    EXPECT_FALSE(ko::str::ends_with("abc", "xabc"));
    EXPECT_FALSE(ko::str::ends_with("abc", "b"));
    EXPECT_FALSE(ko::str::ends_with("abc", "C"));
}

struct delimited_case_t {
    const char* text;
    const char* word;
    const char* delims;
    int position;
};

class find_delimited_not_cases : public testing::TestWithParam<delimited_case_t> {};

TEST_P(find_delimited_not_cases, finds_a_word_that_touches_no_delimiter) {
    const delimited_case_t& c = GetParam();
    EXPECT_EQ(ko::str::find_delimited_not(c.text, c.word, c.delims), c.position)
        << c.word << " in " << c.text;
}

INSTANTIATE_TEST_SUITE_P(table, find_delimited_not_cases,
                         testing::Values(delimited_case_t{"word", "word", "xyz", 0},
                                         delimited_case_t{"a word", "word", "xyz", 2},
                                         delimited_case_t{"xword word", "word", "xyz", 6},
                                         delimited_case_t{"wordx word", "word", "xyz", 6},
                                         delimited_case_t{"wordx", "word", "xyz", -1},
                                         delimited_case_t{"xword", "word", "xyz", -1},
                                         delimited_case_t{"word", "word", "", 0},
                                         delimited_case_t{"", "word", "xyz", -1},
                                         delimited_case_t{"wor", "word", "xyz", -1},
                                         delimited_case_t{"abc", "", "xyz", -1},
                                         delimited_case_t{"", "", "", -1},
                                         delimited_case_t{"\xFFword word", "word", "\xFF", 6}));

TEST(find_delimited_not, goes_on_after_the_whole_of_a_failed_occurrence) {
    // The second "aa" overlaps the first, which fails, so it is not looked at.
    EXPECT_EQ(ko::str::find_delimited_not("xaaa", "aa", "x"), -1);
    EXPECT_EQ(ko::str::find_delimited_not("xaaaa", "aa", "x"), 3);
}

TEST(find_delimited_not, is_linear_in_a_million_characters) {
    const std::string text = std::string(1000000, 'a') + "x";
    EXPECT_EQ(ko::str::find_delimited_not(text, std::string(1000, 'a') + "b", "x"), -1);
    EXPECT_EQ(ko::str::find_delimited_not(text, "a", "ax"), -1);
}

} // namespace

#include <gtest/gtest.h>

#include "str/str.h"

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    ko::str::replace(text, from, to);
    return text;
}

TEST(replace, replaces_every_character) {
    std::string text = "a.b.";
    ko::str::replace(text, '.', '_');
    EXPECT_EQ(text, "a_b_");
}

TEST(replace, replaces_every_occurrence_of_a_text) {
    EXPECT_EQ(replaced("a--b--", "--", "+"), "a+b+");
    EXPECT_EQ(replaced("abab", "ab", ""), "");
    EXPECT_EQ(replaced("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaced("abc", "x", "y"), "abc");
    EXPECT_EQ(replaced("", "x", "y"), "");
}

TEST(replace, does_not_search_inserted_text) {
    EXPECT_EQ(replaced("a", "a", "aa"), "aa");
    EXPECT_EQ(replaced("aabb", "ab", "ba"), "abab");
    EXPECT_EQ(replaced("aabb", "ab", ""), "ab");
}

TEST(replace, changes_nothing_for_an_empty_text) {
    EXPECT_EQ(replaced("abc", "", "x"), "abc");
    EXPECT_EQ(replaced("", "", "x"), "");
}

TEST(replace, may_be_given_the_text_itself) {
    std::string text = "ab";
    ko::str::replace(text, text, "x");
    EXPECT_EQ(text, "x");
    ko::str::replace(text, "x", text);
    EXPECT_EQ(text, "x");
}

TEST(replace, is_linear_in_a_million_characters) {
    const std::string text(1000000, 'a');
    EXPECT_EQ(replaced(text, "a", "bc").size(), 2000000U);
    EXPECT_EQ(replaced(text, std::string(1000, 'a') + "b", "c"), text);
}

} // namespace

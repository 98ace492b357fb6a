#include <gtest/gtest.h>

#include "str/str.h"

namespace {

std::string stripped(std::string text, const std::string& part) {
    ko::str::strip(text, part);
    return text;
}

/// What `strip` means, done literally.
std::string stripped_from_the_start(std::string text, const std::string& part) {
    for (auto found = text.find(part); found != std::string::npos; found = text.find(part)) {
        text.erase(found, part.size());
    }
    return text;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(strip, removes_every_occurrence_of_a_character) {
    std::string text = "xaxxbx";
    ko::str::strip(text, 'x');
    EXPECT_EQ(text, "ab");
    text.assign("a\0b", 3);
    ko::str::strip(text, '\0');
    EXPECT_EQ(text, "ab");
}

TEST(strip, removes_occurrences_that_a_removal_creates) {
    EXPECT_EQ(stripped("aabb", "ab"), "");
    EXPECT_EQ(stripped("xaaabcbcbcy", "abc"), "xy");
    EXPECT_EQ(stripped("aab", "ab"), "a");
    EXPECT_EQ(stripped("aaa", "aa"), "a");
}

TEST(strip, changes_nothing_without_an_occurrence) {
    EXPECT_EQ(stripped("abc", "x"), "abc");
    EXPECT_EQ(stripped("ab", "abc"), "ab");
    EXPECT_EQ(stripped("", "a"), "");
}

TEST(strip, changes_nothing_for_an_empty_part) {
    EXPECT_EQ(stripped("abc", ""), "abc");
    EXPECT_EQ(stripped("", ""), "");
}

TEST(strip, empties_a_text_given_as_its_own_part) {
    std::string text = "abab";
    ko::str::strip(text, text);
    EXPECT_EQ(text, "");
}

TEST(strip, equals_searching_from_the_start_after_each_removal) {
    for (const std::string part : {"a", "ab", "aa", "aba", "aab", "abab", "bbb"}) {
        for (unsigned bits = 0; bits < 1U << 12; ++bits) {
            std::string text;
            for (unsigned i = 0; i < 12; ++i) {
                text.push_back((bits >> i & 1U) != 0 ? 'a' : 'b');
            }
            ASSERT_EQ(stripped(text, part), stripped_from_the_start(text, part)) << text;
        }
    }
}

TEST(strip, is_linear_in_a_million_characters) {
    EXPECT_EQ(stripped(repeated("a", 500000) + repeated("b", 500000), "ab"), "");
    EXPECT_EQ(stripped(repeated("a", 1000000), repeated("a", 1000) + "b").size(), 1000000U);
}

TEST(strip_all, removes_every_character_of_the_set) {
    std::string text("a\0b\xFF"
                     "c",
                     5);
    ko::str::strip_all(text, std::string("\0\xFF", 2));
    EXPECT_EQ(text, "abc");
    ko::str::strip_all(text, "");
    EXPECT_EQ(text, "abc");
    ko::str::strip_all(text, text);
    EXPECT_EQ(text, "");
}

std::string cut(std::string text, const std::string& part) {
    ko::str::strip_after(text, part);
    return text;
}

TEST(strip_after, cuts_at_the_first_occurrence) {
    EXPECT_EQ(cut("a//b//c", "//"), "a");
    EXPECT_EQ(cut("//b", "//"), "");
    EXPECT_EQ(cut("aaab", "aab"), "a");
}

TEST(strip_after, changes_nothing_without_an_occurrence_or_for_an_empty_text) {
    EXPECT_EQ(cut("abc", "x"), "abc");
    EXPECT_EQ(cut("abc", ""), "abc");
    EXPECT_EQ(cut("", "x"), "");
}

std::string kept(std::string text, const std::string& set) {
    ko::str::keep_after_last(text, set);
    return text;
}

TEST(keep_after_last, keeps_what_follows_the_last_character_of_the_set) {
    EXPECT_EQ(kept("dir/sub/file", "/"), "file");
    EXPECT_EQ(kept("dir/sub\\file", "\\/"), "file");
    EXPECT_EQ(kept("dir/", "/"), "");
}

TEST(keep_after_last, changes_nothing_when_none_occurs) {
    EXPECT_EQ(kept("file", "/"), "file");
    EXPECT_EQ(kept("file", ""), "file");
    EXPECT_EQ(kept("", "/"), "");
}

} // namespace

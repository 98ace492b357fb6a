#include <gtest/gtest.h>

#include "str/str.h"

namespace {

const std::string all_spaces = " \t\n\v\f\r";

TEST(to_upper, changes_the_letters_a_to_z_alone) {
    EXPECT_EQ(ko::str::to_upper("azAZ09_`{@["), "AZAZ09_`{@[");
    EXPECT_EQ(ko::str::to_upper("\xE4\xFF\x80"), "\xE4\xFF\x80");
    EXPECT_EQ(ko::str::to_upper(std::string("a\0b", 3)), std::string("A\0B", 3));
}

TEST(to_lower, changes_the_letters_a_to_z_alone) {
    EXPECT_EQ(ko::str::to_lower("azAZ09_`{@["), "azaz09_`{@[");
    EXPECT_EQ(ko::str::to_lower("\xC4\xFF\x80"), "\xC4\xFF\x80");
}

TEST(all_whitespace, holds_for_the_empty_string_and_the_six_spaces) {
    EXPECT_TRUE(ko::str::all_whitespace(""));
    EXPECT_TRUE(ko::str::all_whitespace(all_spaces));
}

TEST(all_whitespace, fails_with_any_other_character) {
    for (const char* text : {"x", " x", "x ", " \x85", "\xA0", " \x01"}) {
        EXPECT_FALSE(ko::str::all_whitespace(text)) << text;
    }
    EXPECT_FALSE(ko::str::all_whitespace(std::string(1, '\0')));
}

std::string without_trailing(std::string text) {
    ko::str::strip_trailing_whitespace(text);
    return text;
}

std::string without_leading(std::string text) {
    ko::str::strip_leading_whitespace(text);
    return text;
}

TEST(strip_trailing_whitespace, removes_white_space_at_the_end_alone) {
    EXPECT_EQ(without_trailing(" a b" + all_spaces), " a b");
    EXPECT_EQ(without_trailing("a"), "a");
    EXPECT_EQ(without_trailing(all_spaces), "");
    EXPECT_EQ(without_trailing(""), "");
    EXPECT_EQ(without_trailing("a\xA0 "), "a\xA0");
}

TEST(strip_leading_whitespace, removes_white_space_at_the_start_alone) {
    EXPECT_EQ(without_leading(all_spaces + "a b "), "a b ");
    EXPECT_EQ(without_leading("a"), "a");
    EXPECT_EQ(without_leading(all_spaces), "");
    EXPECT_EQ(without_leading(""), "");
    EXPECT_EQ(without_leading(" \xA0"), "\xA0");
}

TEST(first_nonwhite, is_the_first_character_that_is_not_white) {
    EXPECT_EQ(ko::str::first_nonwhite(all_spaces + "xy"), 'x');
    EXPECT_EQ(ko::str::first_nonwhite("\xA0"), '\xA0');
}

TEST(first_nonwhite, is_zero_for_a_blank_string) {
    EXPECT_EQ(ko::str::first_nonwhite("   "), '\0');
    EXPECT_EQ(ko::str::first_nonwhite(""), '\0');
}

} // namespace

#include "algebra/label_scan.h"

#include <gtest/gtest.h>

namespace {

using ko::alg::char_get;
using ko::alg::valid_label_get;

struct label_case_t {
    std::string text;
    bool found;
    std::string label;
    std::string rest;
};

TEST(label_scan, takes_a_name_and_the_white_space_before_it) {
    const label_case_t cases[] = {
        {" \t\nab_1(x)", true, "ab_1", "(x)"},
        {"_a", true, "_a", ""},
        {"a b", true, "a", " b"},
        {" 1a", false, "", " 1a"},
        {"(a)", false, "", "(a)"},
        {"  ", false, "", "  "},
        {"", false, "", ""},
        {"\xE4", false, "", "\xE4"},
    };
    for (const label_case_t& c : cases) {
        std::string_view text = c.text;
        std::string label = "old";
        EXPECT_EQ(valid_label_get(text, label), c.found) << c.text;
        EXPECT_EQ(label, c.label) << c.text;
        EXPECT_EQ(text, c.rest) << c.text;
    }
}

TEST(label_scan, takes_a_character_and_the_white_space_before_it) {
    std::string_view text = " \n,b";
    EXPECT_TRUE(char_get(text, ','));
    EXPECT_EQ(text, "b");
}

TEST(label_scan, leaves_the_text_where_the_character_does_not_come_first) {
    for (const std::string original : {"  x,", "   ", ""}) {
        std::string_view text = original;
        EXPECT_FALSE(char_get(text, ','));
        EXPECT_EQ(text, original);
    }
}

} // namespace

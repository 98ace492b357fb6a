#include <gtest/gtest.h>

#include "str/str.h"

namespace {

/// A clump and what is left of the text after it is taken.
using taken_t = std::pair<std::string, std::string>;

taken_t take(std::string text) {
    const std::string clump = ko::str::get_clump(text);
    return {clump, text};
}

taken_t take(std::string text, const std::string& delims) {
    const std::string clump = ko::str::get_clump(text, delims);
    return {clump, text};
}

TEST(get_clump, leaves_the_blank_after_the_clump) {
    EXPECT_EQ(take("  ab  cd"), taken_t("ab", "  cd"));
    EXPECT_EQ(take("ab cd"), taken_t("ab", " cd"));
    EXPECT_EQ(take("ab"), taken_t("ab", ""));
}

TEST(get_clump, knows_the_space_character_alone) {
    EXPECT_EQ(take("\tab\n cd"), taken_t("\tab\n", " cd"));
}

TEST(get_clump, empties_a_text_of_blanks) {
    EXPECT_EQ(take("   "), taken_t("", ""));
    EXPECT_EQ(take(""), taken_t("", ""));
}

TEST(get_clump, with_separators_leaves_the_next_clump_first) {
    EXPECT_EQ(take(",;ab;,cd,", ",;"), taken_t("ab", "cd,"));
    EXPECT_EQ(take("ab,,", ",;"), taken_t("ab", ""));
    EXPECT_EQ(take("ab cd", ",;"), taken_t("ab cd", ""));
}

TEST(get_clump, empties_a_text_of_separators) {
    EXPECT_EQ(take(",;,", ",;"), taken_t("", ""));
    EXPECT_EQ(take("", ",;"), taken_t("", ""));
}

TEST(get_clump, without_separators_takes_everything) {
    EXPECT_EQ(take(" ab cd ", ""), taken_t(" ab cd ", ""));
}

struct line_case_t {
    std::string text;
    unsigned pos;
    std::string line;
    int next;
};

TEST(get_line, gives_the_line_and_the_position_after_its_break) {
    const line_case_t cases[] = {
        {"a\nb", 0, "a", 2},    {"a\rb", 0, "a", 2},   {"a\r\nb", 0, "a", 3},
        {"a\n\rb", 0, "a", 2},  {"a\r\rb", 0, "a", 2}, {"a\nb", 2, "b", -1},
        {"abc\nd", 1, "bc", 4}, {"\n", 0, "", 1},      {"a\r\n", 2, "", 3},
        {"a\r", 0, "a", 2},     {"a\n", 0, "a", 2},    {"a\r\n", 0, "a", 3},
    };
    for (const line_case_t& c : cases) {
        std::string line = "old content";
        EXPECT_EQ(ko::str::get_line(c.text, c.pos, line), c.next) << c.text;
        EXPECT_EQ(line, c.line) << c.text;
    }
}

TEST(get_line, gives_an_empty_last_line_at_and_behind_the_end) {
    for (const unsigned pos : {2U, 3U, 0xFFFFFFFFU}) {
        std::string line = "old content";
        EXPECT_EQ(ko::str::get_line("a\n", pos, line), -1) << pos;
        EXPECT_EQ(line, "") << pos;
    }
}

TEST(get_line, may_write_into_the_text_itself) {
    std::string text = "ab\ncd";
    EXPECT_EQ(ko::str::get_line(text, 1, text), 3);
    EXPECT_EQ(text, "b");
}

TEST(get_line, walks_through_a_text) {
    const std::string text = "one\r\ntwo\n\nthree";
    std::vector<std::string> lines;
    std::string line;
    for (int pos = 0; pos >= 0; lines.push_back(line)) {
        pos = ko::str::get_line(text, static_cast<unsigned>(pos), line);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two", "", "three"}));
}

} // namespace

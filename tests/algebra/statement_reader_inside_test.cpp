#include "algebra/statement_reader.h"

#include <gtest/gtest.h>

#include "support/throws.h"

namespace {

struct statement_t {
    std::string text;
    bool substitute;
};

statement_t statement_read(const std::string& text) {
    statement_t statement{"old", false};
    statement.substitute = ko::alg::statement_read(text, statement.text);
    return statement;
}

struct case_t {
    std::string text;
    std::string statement;
};

void expect(std::initializer_list<case_t> cases) {
    for (const case_t& c : cases) {
        EXPECT_EQ(statement_read(c.text).text, c.statement) << c.text;
        EXPECT_TRUE(statement_read(c.text).substitute) << c.text;
    }
}

TEST(statement_reader, ends_at_a_semicolon_or_byte_255) {
    expect({{"a;b", "a"},
            {";a", ""},
            {"a\xFF"
             "b",
             "a"},
            {"", ""}});
}

TEST(statement_reader, joins_lines_and_keeps_carriage_returns) {
    expect({{"a\n+b", "a+b"}, {"a\r\nb", "a\rb"}});
}

TEST(statement_reader, keeps_quoted_text_whole) {
    expect({{"\"a;'b\n\" c", "\"a;'b\n\" c"}, {"'a//\"\xFF';x", "'a//\"\xFF'"}});
}

TEST(statement_reader, drops_comments) {
    expect({{"a// x;'\nb", "ab"}, {"a/* x;'\n */b", "ab"}, {"a/**/b", "ab"}});
}

TEST(statement_reader, skips_the_character_after_a_star_in_a_comment) {
    expect({{"a/* **/ x */b", "ab"}, {"a/***/ */b", "ab"}, {"a/* *x*/b", "ab"}});
}

TEST(statement_reader, copies_the_character_after_a_slash_as_it_is) {
    expect({{"a/;b", "a/;b"}, {"a/\nb", "a/\nb"}, {"a/\"b", "a/\"b"}, {"a/\xFF;b", "a/\xFF"}});
}

TEST(statement_reader, a_text_that_ends_in_a_slash_goes_without_macros) {
    EXPECT_EQ(statement_read("a/").text, "a/");
    EXPECT_FALSE(statement_read("a/").substitute);
}

TEST(statement_reader, the_end_inside_a_string_or_comment_throws) {
    for (const std::string text :
         {"'a", "\"", "a // b", "a /* b", "a /* *", "a /* *x", "/*/", "a/* *x**/b"}) {
        EXPECT_THROWS(statement_read(text), "unexpected EOF encountered") << text;
    }
}

} // namespace

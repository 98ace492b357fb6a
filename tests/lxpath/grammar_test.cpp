#include <gtest/gtest.h>

#include "lxpath/lxpath.h"
#include "support/throws.h"

namespace {

using namespace ko::lxml;

std::string shown(const xpath_t& path);

std::string shown(const xname_t& name) {
    return std::string(name.kind ? "@" : "") + (name.quoted ? "Q" : "") + "{" + name.ns + "}" +
           name.name;
}

std::string shown(const xfilter_t& filter) {
    const std::string value = filter.value.empty() ? "" : "=" + filter.value;
    return filter.predicate == nullptr ? "" : "[" + shown(*filter.predicate) + value + "]";
}

/// A parsed path, its steps in angle brackets.
std::string shown(const xpath_t& path) {
    std::string out;
    for (const auto& step : path.steps) {
        out += "<" + shown(step->name) + shown(step->filter) + ">";
    }
    return out;
}

std::string parsed(const std::string& text) {
    xpath_t path;
    path.parse(text.c_str());
    return shown(path);
}

struct path_case_t {
    const char* text;
    const char* meaning;
};

TEST(path, is_a_sequence_of_steps) {
    const path_case_t cases[] = {
        {"a", "<{}a>"},
        {"/a", "<{}a>"},
        {"///a", "<{}a>"},
        {"a/b/c", "<{}a><{}b><{}c>"},
        {"", "<{}>"},
        {"/", "<{}>"},
        {"a/", "<{}a><{}>"},
        {"a//b", "<{}a><{}><{}b>"},
        {"A.z_09", "<{}A.z_09>"},
    };
    for (const path_case_t& c : cases) {
        EXPECT_EQ(parsed(c.text), c.meaning) << c.text;
    }
}

TEST(path, tests_names_with_kind_namespace_and_quotes) {
    const path_case_t cases[] = {
        {"@id", "<@{}id>"},
        {"p:x", "<{p}x>"},
        {"@p:x", "<@{p}x>"},
        {":x", "<{}x>"},
        {"p:", "<{p}>"},
        {"@", "<@{}>"},
        {"\"x y\"", "<Q{}x y>"},
        {"\"\"", "<Q{}>"},
        {"\"urn:z\":x", "<Q{urn:z}x>"},
        {"\"urn:z\":\"x/y\"", "<Q{urn:z}x/y>"},
        {"p:\"x y\"", "<{p}x y>"},
        {"@\"urn:z\":x", "<@Q{urn:z}x>"},
    };
    for (const path_case_t& c : cases) {
        EXPECT_EQ(parsed(c.text), c.meaning) << c.text;
    }
}

TEST(path, has_a_filter_a_step) {
    const path_case_t cases[] = {
        {"b[c]", "<{}b[<{}c>]>"},
        {"b[@id=\"7\"]", "<{}b[<@{}id>=7]>"},
        {"b[@id=\"\"]", "<{}b[<@{}id>]>"},
        {"b[@id=\"]\"]", "<{}b[<@{}id>=]]>"},
        {"b[c/@d]/e", "<{}b[<{}c><@{}d>]><{}e>"},
        {"b[/c]", "<{}b[<{}c>]>"},
        {"b[]", "<{}b[<{}>]>"},
        {"a[b[c=\"1\"]/d]", "<{}a[<{}b[<{}c>=1]><{}d>]>"},
    };
    for (const path_case_t& c : cases) {
        EXPECT_EQ(parsed(c.text), c.meaning) << c.text;
    }
}

TEST(path, that_goes_on_is_an_error_expecting_its_end) {
    for (const char* text : {"a b", "a-b", "*", "..*", "a]", "a=\"1\"", "p:q:r", "a[b]c",
                             "a[b][c]", "@@a", "\xC3\xA4", "a\"b\"", "a:@b"}) {
        EXPECT_THROWS(parsed(text), "parse error : expecting ") << text;
    }
}

TEST(path, ends_at_a_zero_byte) {
    EXPECT_EQ(parsed(std::string("a\0]b", 4)), "<{}a>");
}

struct error_case_t {
    const char* text;
    const char* message;
};

TEST(path, with_a_wrong_filter_is_an_error_with_both_characters) {
    const error_case_t cases[] = {
        {"a[b", "parse error : expecting ], got "},
        {"a[", "parse error : expecting ], got "},
        {"a[b)", "parse error : expecting ], got )"},
        {"a[b=\"1\"", "parse error : expecting ], got "},
        {"a[b=7]", "parse error : expecting \", got 7"},
        {"a[b=]", "parse error : expecting \", got ]"},
        {"a[b=", "parse error : expecting \", got "},
        {"a[b c]", "parse error : expecting ], got  "},
        {"a[b\xC3]", "parse error : expecting ], got \xC3"},
    };
    for (const error_case_t& c : cases) {
        EXPECT_THROWS(parsed(c.text), c.message) << c.text;
    }
}

TEST(path, with_an_unterminated_quote_is_an_error_expecting_a_quote) {
    for (const char* text : {"\"", "\"abc", "a/\"b", "\"urn:z", "p:\"x", "@\"x", "a[\"b]",
                             "a[b=\"7]", "a[b=\"", "\"urn:z\":\""}) {
        EXPECT_THROWS(parsed(text), "parse error : expecting \", got ") << text;
    }
}

TEST(path, can_be_read_again_into_the_same_object) {
    xpath_t path;
    path.parse("@\"p\":a[b=\"1\"]/c");
    path.parse("d");
    EXPECT_EQ(shown(path), "<{}d>");
    xname_t name;
    name._parse("@\"p\":a");
    name._parse("b");
    EXPECT_EQ(shown(name), "{}b");
    xfilter_t filter;
    filter._parse("[b=\"1\"]");
    filter._parse("");
    EXPECT_EQ(shown(filter), "");
    EXPECT_EQ(filter.value, "");
}

TEST(path, that_is_null_is_an_error) {
    EXPECT_THROWS(xpath_t().parse(nullptr), "path is null");
    EXPECT_THROWS(xname_t()._parse(nullptr), "path is null");
}

TEST(path, that_is_null_leaves_an_earlier_one) {
    xpath_t path;
    path.parse("a/b[c]");
    EXPECT_THROWS(path.parse(nullptr), "path is null");
    EXPECT_EQ(path.steps.size(), 2U);
}

TEST(path_parts, tell_where_they_end) {
    xname_t name;
    EXPECT_STREQ(name._parse("@p:x[y]"), "[y]");
    xfilter_t filter;
    EXPECT_STREQ(filter._parse("[y]/z"), "/z");
    EXPECT_STREQ(filter._parse("/z"), "/z");
    xnode_t step;
    EXPECT_STREQ(step._parse("x[y]/z"), "/z");
    xpath_t path;
    EXPECT_STREQ(path._parse("/x[y]/z=1"), "=1");
    EXPECT_EQ(shown(step.name) + shown(step.filter), "{}x[<{}y>]");
}

/// `count` filters, each inside the one before.
std::string nested(std::size_t count) {
    std::string text = "a";
    for (std::size_t i = 0; i < count; ++i) {
        text += "[a";
    }
    return text + std::string(count, ']');
}

TEST(path, may_nest_filters_200_levels_deep) {
    EXPECT_EQ(parsed(nested(200)).size(), 200 * 7 + 5u);
}

TEST(path, with_filters_nested_deeper_is_an_error) {
    const char* const message = "path filters nested more than 200 levels deep";
    EXPECT_THROWS(parsed(nested(201)), message);
    EXPECT_THROWS(parsed(nested(1000000)), message);
}

TEST(path, counts_only_filters_that_are_open) {
    std::string text = nested(150);
    for (int i = 0; i < 3; ++i) {
        text += "/" + nested(150);
    }
    EXPECT_NO_THROW(parsed(text));
}

TEST(acceptable, marks_letters_digits_the_point_and_the_underscore) {
    const std::string names = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._";
    for (int byte = 0; byte < 256; ++byte) {
        const bool expected = names.find(static_cast<char>(byte)) != std::string::npos;
        EXPECT_EQ(acceptable[byte], expected ? 1 : 0) << byte;
    }
}

TEST(path_cursor, consumes_the_character_that_is_next) {
    const char* p = "ab";
    EXPECT_TRUE(peek_char(p, 'a'));
    EXPECT_FALSE(peek_char(p, 'b'));
    EXPECT_STREQ(p, "ab");
    EXPECT_FALSE(check_char(p, 'b'));
    EXPECT_TRUE(check_char(p, 'a'));
    EXPECT_STREQ(p, "b");
    assert_char(p, 'b');
    EXPECT_STREQ(p, "");
}

TEST(path_cursor, stays_where_it_is_when_another_character_is_next) {
    const char* p = "ab";
    EXPECT_THROWS(assert_char(p, 'x'), "parse error : expecting x, got a");
    EXPECT_STREQ(p, "ab");
}

TEST(path_cursor, never_leaves_the_text) {
    const char* const end = "";
    const char* p = end;
    assert_char(p, '\0');
    EXPECT_TRUE(check_char(p, '\0'));
    EXPECT_TRUE(peek_char(p, '\0'));
    EXPECT_EQ(p, end);
}

TEST(path_cursor, that_is_null_is_an_error) {
    const char* p = nullptr;
    std::string out = "before";
    EXPECT_THROWS(assert_char(p, 'x'), "path is null");
    EXPECT_THROWS(check_char(p, 'x'), "path is null");
    EXPECT_THROWS(peek_char(p, 'x'), "path is null");
    EXPECT_THROWS(copy_str(p, out), "path is null");
    EXPECT_EQ(out, "before");
}

TEST(path_cursor, reads_a_name_in_place_of_the_one_before) {
    std::string out = "before";
    const char* p = "a.b-c";
    copy_str(p, out);
    EXPECT_EQ(out, "a.b");
    EXPECT_STREQ(p, "-c");
    copy_str(p, out);
    EXPECT_EQ(out, "");
    p = "\"a b\"c";
    copy_str(p, out);
    EXPECT_EQ(out, "a b");
    EXPECT_STREQ(p, "c");
}

} // namespace

#include "str/str.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <locale.h>
#include <sstream>

#include "support/comma_locale.h"

namespace {

std::string to_stream(const char* format, const std::string& argument) {
    std::ostringstream out;
    EXPECT_EQ(&sprintf(out, format, argument.c_str()), &out);
    return out.str();
}

std::string to_string(const char* format, const std::string& argument) {
    std::string out = "old content";
    EXPECT_EQ(&sprintf(out, format, argument.c_str()), &out);
    return out;
}

std::string through_va_list(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = ko::str::safe_sprintf(format, arguments);
    va_end(arguments);
    return text;
}

/// A character that the "C" locale cannot write.
const wchar_t euro[] = L"\x20AC";

TEST(sprintf, writes_to_a_stream_and_returns_it) {
    EXPECT_EQ(to_stream("[%s]", "x"), "[x]");
}

TEST(sprintf, replaces_the_content_of_a_string_and_returns_it) {
    EXPECT_EQ(to_string("[%s]", "x"), "[x]");
}

TEST(sprintf, adds_to_what_the_stream_holds) {
    std::ostringstream out;
    sprintf(out << "a", "%d", 1) << "b";
    EXPECT_EQ(out.str(), "a1b");
}

TEST(sprintf, may_have_its_own_target_as_an_argument) {
    std::string text = "abc";
    sprintf(text, "<%s>", text.c_str());
    EXPECT_EQ(text, "<abc>");
}

TEST(sprintf, cuts_after_510_characters) {
    for (const std::size_t length : {509U, 510U, 511U, 512U, 600U}) {
        const std::string text(length, 'x');
        const std::string kept(std::min<std::size_t>(length, 510), 'x');
        EXPECT_EQ(to_stream("%s", text), kept) << length;
        EXPECT_EQ(to_string("%s", text), kept) << length;
        EXPECT_EQ(ko::string_t("%s", text.c_str()), kept) << length;
    }
}

TEST(sprintf, cuts_at_a_zero_byte) {
    std::string text;
    std::ostringstream out;
    EXPECT_EQ(sprintf(text, "ab%ccd", 0), "ab");
    sprintf(out, "ab%ccd", 0);
    EXPECT_EQ(out.str(), "ab");
    EXPECT_EQ(ko::string_t("ab%ccd", 0), "ab");
}

TEST(sprintf, gives_the_text_before_what_cannot_be_formatted) {
    std::string text = "old content";
    std::ostringstream out;
    EXPECT_EQ(sprintf(text, "ab%lscd", euro), "ab");
    sprintf(out, "ab%lscd", euro);
    EXPECT_EQ(out.str(), "ab");
    EXPECT_EQ(ko::string_t("ab%lscd", euro), "ab");
}

TEST(string_t, is_a_string_with_formatted_content) {
    const ko::string_t text("%s=%d", "a", 7);
    const std::string& base = text;
    EXPECT_EQ(base, "a=7");
}

TEST(safe_sprintf, keeps_texts_of_up_to_511_characters_whole) {
    for (const std::size_t length : {0U, 1U, 100U, 510U, 511U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(ko::str::safe_sprintf("%s", text.c_str()), text) << length;
    }
}

TEST(safe_sprintf, puts_a_zero_byte_for_the_last_of_512_characters_and_more) {
    for (const std::size_t length : {512U, 513U, 600U, 100000U}) {
        std::string expected(length, 'x');
        expected.back() = '\0';
        const std::string text(length, 'x');
        EXPECT_EQ(ko::str::safe_sprintf("%s", text.c_str()), expected) << length;
    }
}

TEST(safe_sprintf, reads_a_va_list_for_short_and_long_texts) {
    EXPECT_EQ(through_va_list("%s %d", "a", 1), "a 1");
    std::string expected = std::string(600, 'x') + "12";
    expected.back() = '\0';
    EXPECT_EQ(through_va_list("%s%d", std::string(600, 'x').c_str(), 12), expected);
}

TEST(safe_sprintf, takes_a_literal_zero_as_a_number) {
    EXPECT_EQ(ko::str::safe_sprintf("<%d>", 0), "<0>");
}

TEST(safe_sprintf, keeps_a_zero_byte_within_the_text) {
    EXPECT_EQ(ko::str::safe_sprintf("ab%ccd", 0), std::string("ab\0cd", 5));
}

TEST(safe_sprintf, gives_the_text_before_what_cannot_be_formatted) {
    EXPECT_EQ(ko::str::safe_sprintf("ab%lscd", euro), "ab");
    const std::string text(600, 'x');
    EXPECT_EQ(ko::str::safe_sprintf("%s%ls", text.c_str(), euro), std::string(511, 'x'));
}

TEST(format, has_a_decimal_point_whatever_the_locale) {
    const test::comma_cpp_locale_t cpp_locale;
    const test::comma_c_locale_t c_locale;
    if (!c_locale.is_active()) {
        GTEST_SKIP() << "the C library takes no locale with a decimal comma";
    }
    std::string text;
    std::ostringstream out;
    EXPECT_EQ(sprintf(text, "%.2f", 1.5), "1.50");
    sprintf(out, "%.2f %d", 1.5, 1234567);
    EXPECT_EQ(out.str(), "1.50 1234567");
    EXPECT_EQ(ko::string_t("%g", 0.25), "0.25");
    EXPECT_EQ(ko::str::safe_sprintf("%g", 0.25), "0.25");
}

TEST(format, leaves_the_locale_of_the_hosts_thread_alone) {
    const locale_t own = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t thread_wide = duplocale(own);
    const locale_t before = uselocale(thread_wide);
    const std::string text = ko::str::safe_sprintf("%g", 0.25);
    EXPECT_EQ(uselocale(before), thread_wide);
    EXPECT_EQ(text, "0.25");
    freelocale(thread_wide);
    freelocale(own);
}

TEST(format, takes_a_null_format) {
    const char* none = nullptr;
    std::string text;
    EXPECT_EQ(sprintf(text, none, 0), "(null)");
    EXPECT_EQ(ko::string_t(none, 0), "(null)");
    EXPECT_EQ(ko::str::safe_sprintf(none, 1), "(null)");
}

TEST(format, leaves_the_locale_of_the_host_alone) {
    const test::comma_c_locale_t c_locale;
    if (!c_locale.is_active()) {
        GTEST_SKIP() << "the C library takes no locale with a decimal comma";
    }
    EXPECT_EQ(ko::str::safe_sprintf("%g", 0.25), "0.25");
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

} // namespace

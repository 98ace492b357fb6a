#include "exception/exception.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "support/comma_locale.h"

namespace {

TEST(exception_t, keeps_a_string_whole) {
    const std::string text(2000, 'x');
    EXPECT_EQ(ko::exception_t(text).what(), text);
    EXPECT_STREQ(ko::exception_t(std::string()).what(), "");
}

TEST(exception_t, keeps_percent_signs_of_a_string) {
    const std::string text = "100%s %n %d %%";
    EXPECT_EQ(ko::exception_t(text).what(), text);
}

TEST(exception_t, formats_its_arguments) {
    EXPECT_STREQ(ko::exception_t("%s: %d %%", "a%sb", -5).what(), "a%sb: -5 %");
    EXPECT_STREQ(ko::exception_t("plain").what(), "plain");
}

TEST(exception_t, cuts_a_formatted_text_after_510_characters) {
    for (const std::size_t length : {509U, 510U, 511U, 512U, 600U}) {
        const std::string text(length, 'x');
        const std::string kept(std::min<std::size_t>(length, 510), 'x');
        EXPECT_EQ(ko::exception_t("%s", text.c_str()).what(), kept) << length;
    }
}

TEST(exception_t, cuts_a_formatted_text_at_a_zero_byte) {
    EXPECT_STREQ(ko::exception_t("ab%ccd", 0).what(), "ab");
}

TEST(exception_t, gives_the_text_before_what_cannot_be_formatted) {
    EXPECT_STREQ(ko::exception_t("ab%lscd", L"\x20AC").what(), "ab");
}

TEST(exception_t, takes_a_null_format) {
    const char* format = nullptr;
    EXPECT_STREQ(ko::exception_t(format, 0).what(), "(null)");
}

TEST(exception_t, has_a_decimal_point_whatever_the_locale) {
    const test::comma_cpp_locale_t cpp_locale;
    const test::comma_c_locale_t c_locale;
    if (!c_locale.is_active()) {
        GTEST_SKIP() << "the C library takes no locale with a decimal comma";
    }
    EXPECT_STREQ(ko::exception_t("%.2f %d", 1.5, 1234567).what(), "1.50 1234567");
}

TEST(exception_t, copies_its_text) {
    auto source = std::make_unique<ko::exception_t>("%s", "text");
    const ko::exception_t copy(*source);
    ko::exception_t assigned("other");
    assigned = *source;
    EXPECT_NE(copy.what(), source->what());
    source.reset();
    EXPECT_STREQ(copy.what(), "text");
    EXPECT_STREQ(assigned.what(), "text");
}

TEST(exception_t, gives_the_same_pointer_each_time) {
    const ko::exception_t e("text");
    EXPECT_EQ(e.what(), e.what());
}

TEST(exception_t, is_caught_as_a_standard_exception) {
    try {
        throw ko::exception_t("%d", 7);
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "7");
    }
}

static_assert(!std::is_convertible_v<std::string, ko::exception_t>);

} // namespace

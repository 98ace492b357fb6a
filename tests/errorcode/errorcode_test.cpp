#include "errorcode/errorcode.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "support/comma_locale.h"
#include "support/throws.h"

namespace {

TEST(errorcode_t, has_the_description_of_its_code) {
    const ko::errorcode_t e(0x20000205);
    EXPECT_STREQ(e.what(), "xml file open failure");
    EXPECT_EQ(e.code_get(), 0x20000205U);
    EXPECT_STREQ(ko::errorcode_t(0).what(), "this is not an error");
}

TEST(errorcode_t, puts_a_text_before_the_description) {
    const ko::errorcode_t e(0x20000205, "config.xml");
    EXPECT_STREQ(e.what(), "config.xml: xml file open failure");
    EXPECT_EQ(e.code_get(), 0x20000205U);
    EXPECT_STREQ(ko::errorcode_t(0x20000205, "").what(), ": xml file open failure");
}

TEST(errorcode_t, has_its_text_alone_when_the_text_comes_first) {
    const ko::errorcode_t e("config.xml", 0x20000205);
    EXPECT_STREQ(e.what(), "config.xml");
    EXPECT_EQ(e.code_get(), 0x20000205U);
}

TEST(errorcode_t, reads_the_first_description_of_a_shared_code) {
    using namespace ko::errorcode;
    EXPECT_STREQ(ko::errorcode_t(regent_bad_config_file).what(), "no configuration file");
    EXPECT_STREQ(ko::errorcode_t(konet_bad_address).what(), "malformed network address");
}

TEST(errorcode_t, names_an_unknown_code_in_upper_case_digits) {
    const std::pair<unsigned long, const char*> cases[] = {
        {0x20000999, "unkown ko::errorcode 0x20000999"},
        {0x12345678, "unkown ko::errorcode 0x12345678"},
        {0xABC, "unkown ko::errorcode 0xABC"},
        {0xFFFFFFFF, "unkown ko::errorcode 0xFFFFFFFF"},
    };
    for (const auto& [code, message] : cases) {
        EXPECT_STREQ(ko::errorcode_t(code).what(), message);
    }
    EXPECT_STREQ(ko::errorcode_t(7, "x").what(), "x: unkown ko::errorcode 0x7");
    EXPECT_STREQ(ko::errorcode_t("x", 7).what(), "x");
}

TEST(errorcode_t, has_a_code_of_32_bits) {
    const unsigned long minus_one = ~0UL;
    EXPECT_EQ(ko::errorcode_t(minus_one).code_get(), 0xFFFFFFFFU);
    EXPECT_STREQ(ko::errorcode_t(minus_one).what(), "unkown ko::errorcode 0xFFFFFFFF");
    EXPECT_EQ(ko::errorcode_t("x", minus_one).code_get(), 0xFFFFFFFFU);
    EXPECT_STREQ(ko::errorcode_t(minus_one, "x").what(), "x: unkown ko::errorcode 0xFFFFFFFF");
}

TEST(errorcode_t, keeps_its_text_whole_whatever_it_holds) {
    const std::string text = "%s%n" + std::string(1000, 'x');
    EXPECT_EQ(ko::errorcode_t(text, 7).what(), text);
    EXPECT_EQ(ko::errorcode_t(0x20000207, text).what(), text + ": xml parse error");
}

TEST(errorcode_t, leaves_a_null_text_to_the_standard_library) {
    const char* none = nullptr;
    EXPECT_THROW(ko::errorcode_t(none, 7), std::logic_error);
    EXPECT_THROW(ko::errorcode_t(7, none), std::logic_error);
}

TEST(errorcode_t, fails_by_appending_to_the_longest_possible_text) {
    if (std::string().max_size() > 0x7FFFFFFF) {
        GTEST_SKIP() << "no memory holds the longest text of this platform";
    }
    try {
        const ko::errorcode_t e(7, std::string(std::string().max_size(), 'x'));
        FAIL() << "threw nothing";
    } catch (const std::length_error& e) {
        EXPECT_STREQ(e.what(), "basic_string::append");
    } catch (const std::bad_alloc&) {
        GTEST_SKIP() << "needs 2 GB of memory";
    }
}

TEST(errorcode_t, writes_the_code_without_grouping_in_any_locale) {
    const test::comma_cpp_locale_t cpp_locale;
    const test::comma_c_locale_t c_locale;
    if (!c_locale.is_active()) {
        GTEST_SKIP() << "the C library takes no locale with a decimal comma";
    }
    EXPECT_STREQ(ko::errorcode_t(0x12345678).what(), "unkown ko::errorcode 0x12345678");
}

TEST(errorcode_t, copies_text_and_code) {
    auto source = std::make_unique<ko::errorcode_t>(0x20000207, "x");
    const ko::errorcode_t copy(*source);
    ko::errorcode_t assigned(0);
    assigned = *source;
    source.reset();
    for (const ko::errorcode_t& e : {copy, assigned}) {
        EXPECT_STREQ(e.what(), "x: xml parse error");
        EXPECT_EQ(e.code_get(), 0x20000207U);
    }
}

TEST(errorcode_t, is_caught_as_the_base_exception) {
    try {
        throw ko::errorcode_t(0x20000206);
    } catch (const ko::exception_t& e) {
        EXPECT_STREQ(e.what(), "xml file read failure");
        EXPECT_NE(dynamic_cast<const ko::errorcode_t*>(&e), nullptr);
    }
}

} // namespace

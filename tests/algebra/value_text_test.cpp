// The value as text and on streams, whatever locale the host has set.

#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

#include "algebra/result.h"
#include "support/comma_locale.h"
#include "support/evaluation.h"

using ko::alg::result_t;
using test::shown;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

struct text_case_t {
    result_t value;
    bool scientific;
    unsigned precision;
    std::string text;
};

const text_case_t texts[] = {
    {0.5f, false, 0, "0.5"},
    {1e10f, false, 0, "1e+10"},
    {0.5f, false, 2, "0.50"},
    {1234.5f, true, 3, "1.234e+03"},
    {1234.5f, true, 0, "1.234500e+03"},
    {1234.5f, false, 0, "1234.5"},
    {1234567.0f, false, 0, "1.23457e+06"},
    {123456.0f, false, 0, "123456"},
    {1.0f, false, 0, "1"},
    {1.0f, false, 1, "1.0"},
    {0.0001f, false, 0, "0.0001"},
    {0.00001f, false, 0, "1e-05"},
    {-0.0f, false, 0, "-0"},
    {0.1f, false, 20, "0.10000000149011611938"},
    {0.1f, true, 12, "1.000000014901e-01"},
    {2.5f, false, 1, "2.5"},
    {0.125f, false, 2, "0.12"},
    {3e9f, false, 1, "3000000000.0"},
    {std::numeric_limits<float>::denorm_min(), false, 0, "1.4013e-45"},
    {std::numeric_limits<float>::max(), false, 0, "3.40282e+38"},
    {infinity, false, 0, "inf"},
    {-infinity, false, 2, "-inf"},
    {infinity, true, 2, "inf"},
    {not_a_number, false, 0, "nan"},
    {not_a_number, false, 3, "nan"},
    {not_a_number, true, 3, "nan"},
};

} // namespace

TEST(value_text, of_a_float_follows_the_format) {
    for (const text_case_t& c : texts) {
        EXPECT_EQ(c.value.string_get(c.scientific, c.precision), c.text);
    }
}

TEST(value_text, of_an_integer_ignores_the_format) {
    for (const bool scientific : {false, true}) {
        for (const unsigned precision : {0u, 1u, 9u}) {
            EXPECT_EQ(result_t(12).string_get(scientific, precision), "12");
            EXPECT_EQ(result_t(INT_MIN).string_get(scientific, precision), "-2147483648");
            EXPECT_EQ(result_t(1234567).string_get(scientific, precision), "1234567");
        }
    }
}

TEST(value_text, of_an_integer_12_in_scientific_format_is_12) {
    EXPECT_EQ(result_t(12).string_get(true, 0), "12");
}

TEST(value_text, of_a_string_ignores_the_format) {
    for (const bool scientific : {false, true}) {
        for (const unsigned precision : {0u, 2u}) {
            EXPECT_EQ(result_t("1.50000").string_get(scientific, precision), "1.50000");
        }
    }
}

TEST(value_text, takes_many_decimals) {
    EXPECT_EQ(result_t(0.5f).string_get(false, 1000), "0.5" + std::string(999, '0'));
    EXPECT_EQ(result_t(0.5f).string_get(true, 600), "5." + std::string(600, '0') + "e-01");
}

TEST(value_stream, tags_an_integer) {
    EXPECT_EQ(shown(5), "(i) 5");
    EXPECT_EQ(shown(-5), "(i) -5");
}

TEST(value_stream, tags_a_float) {
    EXPECT_EQ(shown(0.5f), "(f) 0.5");
    EXPECT_EQ(shown(not_a_number), "(f) nan");
    EXPECT_EQ(shown(-infinity), "(f) -inf");
}

TEST(value_stream, tags_a_string) {
    EXPECT_EQ(shown("x"), "(s) x");
    EXPECT_EQ(shown(""), "(s) ");
}

TEST(value_stream, tags_an_unknown_type_as_an_integer) {
    result_t value(5);
    value.type_set(3);
    EXPECT_EQ(shown(value), "(i) 5");
}

TEST(value_text, that_is_too_long_for_a_string_is_out_of_memory) {
    if (sizeof(std::size_t) > 4) {
        GTEST_SKIP() << "memory runs out before";
    }
    EXPECT_THROW(result_t(1.5F).string_get(false, INT_MAX), std::bad_alloc);
}

TEST(value_stream, uses_the_precision_of_the_stream) {
    std::ostringstream out;
    out << std::setprecision(3) << result_t(3.14159f) << ' ' << std::fixed << result_t(2.0f)
        << ' ' << std::scientific << result_t(1234.5f) << ' ' << result_t(7);
    EXPECT_EQ(out.str(), "(f) 3.14 (f) 2.000 (f) 1.234e+03 (i) 7");
}

TEST(value_stream, uses_the_base_and_the_signs_of_the_stream) {
    std::ostringstream out;
    out << std::hex << result_t(255) << ' ' << std::uppercase << std::showbase << result_t(-1)
        << ' ' << std::dec << std::showpos << result_t(5) << ' ' << result_t(0.5f);
    EXPECT_EQ(out.str(), "(i) ff (i) 0XFFFFFFFF (i) +5 (f) +0.5");
}

TEST(value_stream, writes_a_string_whatever_the_format) {
    std::ostringstream out;
    out << std::hex << std::showpos << std::setprecision(1) << result_t("255.25");
    EXPECT_EQ(out.str(), "(s) 255.25");
}

TEST(value_stream, pads_the_tag_and_not_the_value) {
    std::ostringstream out;
    out << std::setw(8) << std::setfill('*') << result_t(5) << '|' << std::left << std::setw(6)
        << result_t("x") << '|' << std::setw(6) << result_t(0.5f);
    EXPECT_EQ(out.str(), "****(i) 5|(s) **x|(f) **0.5");
    EXPECT_EQ(out.width(), 0);
}

TEST(value_stream, writes_no_line_end_and_can_be_chained) {
    std::ostringstream out;
    EXPECT_EQ(&(out << result_t(1)), &out);
    EXPECT_EQ(out.str(), "(i) 1");
}

TEST(value_stream, leaves_the_format_of_the_stream_alone) {
    std::ostringstream out;
    out.imbue(test::comma_cpp_locale_t::make());
    out << std::hex << std::setprecision(3) << result_t(0.5f);
    EXPECT_EQ(out.precision(), 3);
    EXPECT_EQ(out.flags() & std::ios::basefield, std::ios::hex);
    out.str("");
    out << 0.5;
    EXPECT_EQ(out.str(), "0,5");
}

TEST(value_in_a_locale, has_a_decimal_point_in_its_text) {
    const test::comma_cpp_locale_t comma;
    for (const text_case_t& c : texts) {
        EXPECT_EQ(c.value.string_get(c.scientific, c.precision), c.text);
    }
    EXPECT_EQ(result_t(1234567).string_get(false, 0), "1234567");
}

TEST(value_in_a_locale, is_written_with_a_decimal_point) {
    const test::comma_cpp_locale_t comma;
    std::ostringstream out;
    out << result_t(1.5f) << ' ' << result_t(1234567) << ' ' << std::fixed << std::setprecision(1)
        << result_t(123456.0f);
    EXPECT_EQ(out.str(), "(f) 1.5 (i) 1234567 (f) 123456.0");
}

TEST(value_in_a_locale, is_written_with_a_decimal_point_on_an_imbued_stream) {
    std::ostringstream out;
    out.imbue(test::comma_cpp_locale_t::make());
    out << result_t(1.5f) << ' ' << result_t(1234567);
    EXPECT_EQ(out.str(), "(f) 1.5 (i) 1234567");
}

TEST(value_in_a_locale, concatenates_and_compares_with_a_decimal_point) {
    const test::comma_cpp_locale_t comma;
    EXPECT_EQ(shown(result_t(1.5f) + result_t("x")), "(s) 1.5x");
    EXPECT_EQ(shown(result_t(123456) + result_t("x")), "(s) 123456x");
    EXPECT_EQ(shown(result_t(1.5f) == result_t("1.5")), "(i) 1");
}

TEST(value_in_a_locale, of_c_has_a_decimal_point) {
    const test::comma_c_locale_t comma;
    if (!comma.is_active()) {
        GTEST_SKIP() << "no locale with a decimal comma";
    }
    for (const text_case_t& c : texts) {
        EXPECT_EQ(c.value.string_get(c.scientific, c.precision), c.text);
    }
    EXPECT_EQ(shown(1.5f), "(f) 1.5");
}

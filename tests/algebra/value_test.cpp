// The value: its constructors, its two numeric views and its accessors.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "algebra/result.h"

using ko::alg::result_t;

namespace {

constexpr float float_infinity = std::numeric_limits<float>::infinity();
constexpr double double_infinity = std::numeric_limits<double>::infinity();

// Beyond the known type codes both accessors give the stored views unconverted.
constexpr unsigned unknown_type = 3;

int stored_int(result_t value) {
    value.type_set(unknown_type);
    return value.int_get();
}

float stored_float(result_t value) {
    value.type_set(unknown_type);
    return value.float_get();
}

std::string stored_string(result_t value) {
    value.type_set(2);
    return value.string_get(false, 0);
}

void expect_views(const result_t& value, unsigned type, int i, float f, const std::string& s) {
    EXPECT_EQ(value.type_get(), type);
    EXPECT_EQ(stored_int(value), i);
    EXPECT_EQ(stored_float(value), f);
    EXPECT_EQ(stored_string(value), s);
}

} // namespace

TEST(value, is_the_integer_0_by_default) {
    expect_views(result_t(), 0, 0, 0.0f, "");
}

TEST(value, of_a_boolean_is_the_integer_0_or_1) {
    expect_views(result_t(true), 0, 1, 1.0f, "");
    expect_views(result_t(false), 0, 0, 0.0f, "");
}

TEST(value, of_an_integer_has_both_views) {
    expect_views(result_t(-7), 0, -7, -7.0f, "");
    expect_views(result_t(INT_MAX), 0, INT_MAX, 2147483648.0f, "");
    expect_views(result_t(INT_MIN), 0, INT_MIN, -2147483648.0f, "");
    expect_views(result_t(16777217), 0, 16777217, 16777216.0f, "");
}

TEST(value, of_a_long_is_an_integer) {
    expect_views(result_t(123456L), 0, 123456, 123456.0f, "");
    expect_views(result_t(-1L), 0, -1, -1.0f, "");
    expect_views(result_t(static_cast<long>(INT_MIN)), 0, INT_MIN, -2147483648.0f, "");
}

TEST(value, of_a_long_keeps_32_bits_of_it) {
    if (sizeof(long) == 4) {
        GTEST_SKIP() << "a long has 32 bits here";
    }
    const auto wide = static_cast<long>(0x1234567800000005LL);
    expect_views(result_t(wide), 0, 5, 5.0f, "");
    expect_views(result_t(static_cast<long>(0xFFFFFFFFLL)), 0, -1, -1.0f, "");
}

TEST(value, of_the_other_integer_types_is_an_integer_where_32_bits_hold_it) {
    expect_views(result_t(5U), 0, 5, 5.0f, "");
    expect_views(result_t(5UL), 0, 5, 5.0f, "");
    expect_views(result_t(-5LL), 0, -5, -5.0f, "");
    expect_views(result_t(5ULL), 0, 5, 5.0f, "");
    expect_views(result_t(2147483647U), 0, INT_MAX, 2147483648.0f, "");
    expect_views(result_t(-2147483648LL), 0, INT_MIN, -2147483648.0f, "");
    expect_views(result_t(std::size_t{16777217}), 0, 16777217, 16777216.0f, "");
}

TEST(value, of_an_integer_beyond_32_bits_is_the_nearest_float) {
    expect_views(result_t(2147483648U), 1, INT_MAX, 2147483648.0f, "");
    expect_views(result_t(4294967295UL), 1, INT_MAX, 4294967296.0f, "");
    expect_views(result_t(-2147483649LL), 1, INT_MIN, -2147483648.0f, "");
    expect_views(result_t(std::numeric_limits<long long>::min()), 1, INT_MIN, -0x1p63f, "");
    expect_views(result_t(std::numeric_limits<std::uint64_t>::max()), 1, INT_MAX, 0x1p64f, "");
    // Rounded once: by way of a double it would be 2^40.
    expect_views(result_t(0x10000010001ULL), 1, INT_MAX, 0x1.000002p40f, "");
}

TEST(value, of_a_small_type_is_an_integer_by_promotion) {
    enum count_t { five = 5 };
    enum class byte_t : std::uint8_t {};
    expect_views(result_t(std::uint8_t{200}), 0, 200, 200.0f, "");
    expect_views(result_t(std::int16_t{-3}), 0, -3, -3.0f, "");
    expect_views(result_t('a'), 0, 97, 97.0f, "");
    expect_views(result_t(five), 0, 5, 5.0f, "");
    EXPECT_FALSE((std::is_constructible_v<result_t, byte_t>));
}

TEST(value, of_a_float_is_truncated_towards_zero_as_integer) {
    expect_views(result_t(2.75f), 1, 2, 2.75f, "");
    expect_views(result_t(-2.75f), 1, -2, -2.75f, "");
    expect_views(result_t(-0.5f), 1, 0, -0.5f, "");
}

TEST(value, of_a_double_is_rounded_to_single_precision) {
    expect_views(result_t(0.1), 1, 0, 0.1f, "");
    expect_views(result_t(-3.5), 1, -3, -3.5f, "");
}

TEST(value, of_a_double_truncates_the_double_itself) {
    // Callers rely on the two views differing here.
    expect_views(result_t(2.9999999999), 1, 2, 3.0f, "");
    expect_views(result_t(-2.9999999999), 1, -2, -3.0f, "");
    EXPECT_EQ(stored_int(result_t(16777217.0)), 16777217);
    EXPECT_EQ(stored_int(result_t(2147483646.0)), 2147483646);
}

TEST(value, of_a_double_reads_as_the_truncated_float) {
    EXPECT_EQ(result_t(2.9999999999).int_get(), 3);
    EXPECT_EQ(result_t(2147483646.0).int_get(), INT_MAX);
}

TEST(value, of_a_string_reads_as_0) {
    expect_views(result_t(std::string("12")), 2, 0, 0.0f, "12");
    EXPECT_EQ(result_t(std::string("12")).int_get(), 0);
    EXPECT_EQ(result_t(std::string("12.5")).float_get(), 0.0f);
}

TEST(value, of_a_literal_is_a_string_and_no_boolean) {
    expect_views(result_t("12"), 2, 0, 0.0f, "12");
    expect_views(result_t(""), 2, 0, 0.0f, "");
}

TEST(value, takes_the_memory_of_a_string_that_is_given_away) {
    std::string text(1000, 'x');
    result_t value(std::move(text));
    expect_views(value, 2, 0, 0.0f, std::string(1000, 'x'));
    EXPECT_TRUE(text.empty()); // NOLINT(bugprone-use-after-move): the point of the test
    const result_t moved(std::move(value));
    EXPECT_EQ(moved.string_get(false, 0), std::string(1000, 'x'));
    value = 3;
    expect_views(value, 0, 3, 3.0f, "");
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<result_t>);
}

TEST(value, of_a_string_keeps_every_byte) {
    const std::string bytes("a\0b\xFF", 4);
    EXPECT_EQ(result_t(bytes).string_get(false, 0), bytes);
}

TEST(value, saturates_a_float_beyond_the_integers) {
    const struct {
        float given;
        int expected;
    } cases[] = {{3e9f, INT_MAX},
                 {-3e9f, INT_MIN},
                 {2147483648.0f, INT_MAX},
                 {2147483520.0f, 2147483520},
                 {-2147483648.0f, INT_MIN},
                 {float_infinity, INT_MAX},
                 {-float_infinity, INT_MIN},
                 {std::numeric_limits<float>::max(), INT_MAX}};
    for (const auto& c : cases) {
        EXPECT_EQ(result_t(c.given).int_get(), c.expected) << c.given;
        EXPECT_EQ(stored_int(result_t(c.given)), c.expected) << c.given;
    }
}

TEST(value, saturates_a_double_beyond_the_integers) {
    EXPECT_EQ(stored_int(result_t(1e300)), INT_MAX);
    EXPECT_EQ(stored_int(result_t(-1e300)), INT_MIN);
    EXPECT_EQ(stored_int(result_t(double_infinity)), INT_MAX);
    EXPECT_EQ(stored_int(result_t(-double_infinity)), INT_MIN);
    EXPECT_EQ(stored_int(result_t(2147483647.9)), INT_MAX);
    EXPECT_EQ(stored_int(result_t(-2147483648.9)), INT_MIN);
}

TEST(value, of_a_double_beyond_single_precision_is_infinite) {
    EXPECT_EQ(result_t(1e300).float_get(), float_infinity);
    EXPECT_EQ(result_t(-1e300).float_get(), -float_infinity);
    EXPECT_EQ(result_t(1e-300).float_get(), 0.0f);
}

TEST(value, reads_not_a_number_as_the_integer_0) {
    EXPECT_EQ(result_t(std::numeric_limits<float>::quiet_NaN()).int_get(), 0);
    EXPECT_EQ(stored_int(result_t(std::numeric_limits<float>::quiet_NaN())), 0);
    EXPECT_EQ(stored_int(result_t(std::numeric_limits<double>::quiet_NaN())), 0);
    EXPECT_TRUE(std::isnan(result_t(std::numeric_limits<double>::quiet_NaN()).float_get()));
}

TEST(value, tells_its_type) {
    const struct {
        result_t value;
        bool is_int;
        bool is_float;
        bool is_string;
    } cases[] = {{1, true, false, false}, {1.0f, false, true, false}, {"1", false, false, true}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.value.is_int(), c.is_int);
        EXPECT_EQ(c.value.is_float(), c.is_float);
        EXPECT_EQ(c.value.is_string(), c.is_string);
    }
}

TEST(value, of_an_unknown_type_is_of_no_type) {
    result_t value(1);
    value.type_set(unknown_type);
    EXPECT_FALSE(value.is_int() || value.is_float() || value.is_string());
    EXPECT_EQ(value.type_get(), unknown_type);
}

TEST(value, changes_nothing_but_the_code_when_its_type_is_set) {
    result_t value(2.9999999999);
    value.type_set(0);
    EXPECT_EQ(value.int_get(), 2);
    EXPECT_EQ(value.float_get(), 2.0f);
    value.type_set(1);
    EXPECT_EQ(value.int_get(), 3);
    EXPECT_EQ(value.float_get(), 3.0f);
}

TEST(value, takes_the_larger_of_two_type_codes) {
    const struct {
        unsigned a, b, expected;
    } cases[] = {{0, 0, 0}, {0, 1, 1}, {1, 0, 1}, {1, 2, 2}, {2, 1, 2}, {2, 2, 2}, {0, 7, 7}};
    for (const auto& c : cases) {
        result_t value("kept");
        value.type_set(c.a, c.b);
        EXPECT_EQ(value.type_get(), c.expected) << c.a << ' ' << c.b;
        EXPECT_EQ(stored_string(value), "kept");
    }
}

TEST(value, converts_an_integer_when_read_as_float) {
    result_t value("text");
    value.type_set(0);
    EXPECT_EQ(value.float_get(), 0.0f);
    EXPECT_EQ(result_t(16777219).float_get(), 16777220.0f);
}

TEST(value, is_copied_and_assigned_whole) {
    const result_t source(2.9999999999);
    const result_t copy(source);
    expect_views(copy, 1, 2, 3.0f, "");
    result_t target("text");
    target = source;
    expect_views(target, 1, 2, 3.0f, "");
    target = result_t("other");
    expect_views(target, 2, 0, 0.0f, "other");
}

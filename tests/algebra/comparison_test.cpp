// The comparisons of values.

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "algebra/result.h"
#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::result_t;
using test::shown;

namespace {

constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

// The outcomes of <, <=, >, >=, == and != as six digits.
std::string comparisons(const result_t& a, const result_t& b) {
    std::string digits;
    for (const result_t& r : {a<b, a <= b, a> b, a >= b, a == b, a != b}) {
        EXPECT_TRUE(r.is_int());
        digits += r.string_get(false, 0);
    }
    return digits;
}

constexpr const char* less = "110001";
constexpr const char* equal = "010110";
constexpr const char* greater = "001101";
constexpr const char* unordered = "000001";

struct comparison_case_t {
    result_t a;
    result_t b;
    const char* outcome;
};

template <std::size_t N> void expect(const comparison_case_t (&cases)[N]) {
    for (const comparison_case_t& c : cases) {
        EXPECT_EQ(comparisons(c.a, c.b), c.outcome) << shown(c.a) << ", " << shown(c.b);
    }
}

result_t of_unknown_type(const result_t& source) {
    result_t value(source);
    value.type_set(3);
    return value;
}

} // namespace

TEST(comparison, of_integers_is_by_value) {
    expect({{1, 2, less},
            {2, 2, equal},
            {3, 2, greater},
            {-1, 1, less},
            {INT_MIN, INT_MAX, less},
            {16777217, 16777216, greater}});
}

TEST(comparison, with_a_float_has_single_precision) {
    expect({{1.5f, 2, less},
            {2, 1.5f, greater},
            {2, 2.0f, equal},
            {16777217, 16777216.0f, equal},
            {INT_MAX, 2147483648.0f, equal},
            {-0.0f, 0.0f, equal},
            {0.1f, 0.1, equal}});
}

TEST(comparison, with_not_a_number_is_unordered) {
    expect({{not_a_number, not_a_number, unordered},
            {not_a_number, 1, unordered},
            {1, not_a_number, unordered}});
}

TEST(comparison, with_infinity_is_ordered) {
    expect({{infinity, INT_MAX, greater}, {-infinity, 0.0f, less}, {infinity, infinity, equal}});
}

TEST(comparison, of_strings_is_by_bytes) {
    expect({{"abc", "abd", less},
            {"abc", "abc", equal},
            {"ab", "abc", less},
            {"", "a", less},
            {"", "", equal},
            {"Z", "a", less},
            {"\xFF", "a", greater},
            {"\x80", "\x7F", greater},
            {"10", "9", less}});
}

TEST(comparison, of_strings_goes_beyond_a_zero_byte) {
    expect({{std::string("a\0b", 3), std::string("a\0c", 3), less},
            {std::string("a\0", 2), "a", greater}});
}

TEST(comparison, of_a_number_with_a_string_is_by_the_text_of_the_number) {
    expect({{1, "1", equal},
            {1.0f, "1", equal},
            {10, "9", less},
            {"9", 10, greater},
            {1.5f, "1.5", equal},
            {1e10f, "1e+10", equal},
            {1, "1.0", less},
            {-1, "", greater},
            {not_a_number, "nan", equal}});
}

TEST(comparison, for_equality_refuses_an_unknown_type) {
    const result_t unknown = of_unknown_type(1);
    EXPECT_THROWS(return unknown == unknown, "operator '==' -- illegal type");
    EXPECT_THROWS(return unknown == result_t("a"), "operator '==' -- illegal type");
    EXPECT_THROWS(return result_t(1) != unknown, "operator '!=' -- illegal type");
}

TEST(comparison, for_order_takes_an_unknown_type_by_its_text) {
    const result_t unknown = of_unknown_type(7);
    const bool less_by_text = unknown.string_get(false, 0) < "b";
    EXPECT_EQ((unknown < result_t("b")).int_get(), less_by_text ? 1 : 0);
    EXPECT_EQ((unknown >= result_t("b")).int_get(), less_by_text ? 0 : 1);
    EXPECT_EQ(shown(unknown <= unknown), "(i) 1");
    EXPECT_EQ(shown(unknown > unknown), "(i) 0");
}

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <typeinfo>

#include "cmd_arg_parser/cmd_arg_parser.h"
#include "support/comma_locale.h"

namespace {

/// Outcome of reading a number.
template <class T> struct read_t {
    bool is_read;
    T value;
};

template <class T> bool operator==(const read_t<T>& a, const read_t<T>& b) {
    return a.is_read == b.is_read && a.value == b.value;
}

template <class T> std::ostream& operator<<(std::ostream& out, const read_t<T>& outcome) {
    return out << outcome.is_read << " " << +outcome.value;
}

/// Reads "-n `word`" into a variable that holds `value`.
template <class T> read_t<T> read(std::string word, T value) {
    std::string program = "program";
    std::string option = "-n";
    char* argv[] = {program.data(), option.data(), word.data()};
    ko::util::cmd_arg_parser_t parser(3, argv);
    EXPECT_TRUE(parser.find("-n"));
    read_t<T> outcome{false, value};
    outcome.is_read = parser.next(outcome.value);
    return outcome;
}

constexpr int int_max = std::numeric_limits<int>::max();

struct int_case_t {
    const char* word;
    bool is_read;
    int value;
};

class next_int : public testing::TestWithParam<int_case_t> {};

TEST_P(next_int, reads_the_longest_valid_prefix) {
    const int_case_t& c = GetParam();
    EXPECT_EQ(read(c.word, 7), (read_t<int>{c.is_read, c.value})) << c.word;
}

INSTANTIATE_TEST_SUITE_P(decimal, next_int,
                         testing::Values(int_case_t{"12", true, 12},
                                         int_case_t{"12abc", true, 12}, int_case_t{"+5", true, 5},
                                         int_case_t{"010", true, 10}, int_case_t{" 3", true, 3},
                                         int_case_t{" -3", true, -3}, int_case_t{"1.9", true, 1},
                                         int_case_t{"1x2", true, 1}, int_case_t{"0x", true, 0},
                                         int_case_t{"00x5", true, 0},
                                         int_case_t{"2147483647", true, int_max},
                                         int_case_t{"2147483648", false, int_max},
                                         int_case_t{" -2147483649", false, -int_max - 1},
                                         int_case_t{"99999999999999999999", false, int_max},
                                         int_case_t{"abc", false, 0}, int_case_t{"+", false, 0},
                                         int_case_t{"", false, 7}, int_case_t{"  ", false, 7}));

INSTANTIATE_TEST_SUITE_P(
    hexadecimal, next_int,
    testing::Values(int_case_t{"0x1F", true, 31}, int_case_t{"0X1f", true, 31},
                    int_case_t{"0x1Fgh", true, 31}, int_case_t{"0x7FFFFFFF", true, int_max},
                    int_case_t{"0x80000000", true, -int_max - 1},
                    int_case_t{"0xFFFFFFFF", true, -1}, int_case_t{"0x100000000", true, -1},
                    int_case_t{"0x123456789abcdef0123", true, -1}, int_case_t{"0xZZ", true, 0},
                    int_case_t{"0x-5", true, 0}, int_case_t{"0x0x5", true, 0},
                    int_case_t{"0x 5", true, 0}));

TEST(next, consumes_a_word_that_is_no_number) {
    std::string words[] = {"program", "abc", "5"};
    char* argv[] = {words[0].data(), words[1].data(), words[2].data()};
    ko::util::cmd_arg_parser_t parser(3, argv);
    int value = 7;
    EXPECT_FALSE(parser.next(value));
    EXPECT_TRUE(parser.next(value));
    EXPECT_EQ(value, 5);
}

TEST(next, reads_floats) {
    EXPECT_EQ(read("1.5", 7.0F), (read_t<float>{true, 1.5F}));
    EXPECT_EQ(read("1.5e2dB", 7.0F), (read_t<float>{true, 150.0F}));
    EXPECT_EQ(read(".25", 7.0F), (read_t<float>{true, 0.25F}));
    EXPECT_EQ(read("0x1F", 7.0F), (read_t<float>{true, 0.0F}));
    EXPECT_EQ(read("1e-60", 7.0F), (read_t<float>{true, 0.0F}));
}

TEST(next, clamps_a_float_out_of_range_and_fails) {
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(read("1e50", 7.0F), (read_t<float>{false, largest}));
    EXPECT_EQ(read(" -1e50", 7.0F), (read_t<float>{false, -largest}));
}

TEST(next, fails_where_there_is_no_float) {
    for (const char* word : {"abc", "inf", "nan", ".", "1e", "1.5em"}) {
        EXPECT_EQ(read(word, 7.0F), (read_t<float>{false, 0.0F})) << word;
    }
    EXPECT_EQ(read("", 7.0F), (read_t<float>{false, 7.0F}));
    EXPECT_EQ(read("-1", 7.0F), (read_t<float>{false, 7.0F}));
}

TEST(next, reads_doubles_in_single_precision) {
    EXPECT_EQ(read("1.5", 7.0), (read_t<double>{true, 1.5}));
    EXPECT_EQ(read("0.1", 7.0), (read_t<double>{true, static_cast<double>(0.1F)}));
    EXPECT_EQ(read("1e50", 7.0),
              (read_t<double>{false, double{std::numeric_limits<float>::max()}}));
}

TEST(next, rounds_a_double_to_single_precision_when_nothing_is_read) {
    const double largest = std::numeric_limits<float>::max();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, double> cases[] = {
        {0.1, static_cast<double>(0.1F)},
        {-0.1, static_cast<double>(-0.1F)},
        {1e300, infinity},
        {-1e300, -infinity},
        {largest + 0x1p103, infinity},
        {-largest - 0x1p103, -infinity},
        {largest + 0x1p102, largest},
        {-largest - 0x1p102, -largest},
        {infinity, infinity},
        {1e-300, 0.0},
    };
    for (const auto& [before, after] : cases) {
        EXPECT_EQ(read("-x", before), (read_t<double>{false, after})) << before;
    }
    EXPECT_TRUE(std::isnan(read("-x", std::numeric_limits<double>::quiet_NaN()).value));
}

template <class T> class next_integer : public testing::Test {};

using integers_t =
    testing::Types<unsigned int, long, unsigned long, char, unsigned char, short, unsigned short>;

/// Names the tests of a type by the letters that the compiler gives it.
struct letters_t {
    template <class T> static std::string GetName(int) { return typeid(T).name(); }
};

TYPED_TEST_SUITE(next_integer, integers_t, letters_t);

TYPED_TEST(next_integer, reads_numbers) {
    EXPECT_EQ(read("65", TypeParam{7}), (read_t<TypeParam>{true, 65}));
    EXPECT_EQ(read("0x41", TypeParam{7}), (read_t<TypeParam>{true, 65}));
}

TYPED_TEST(next_integer, keeps_its_value_when_there_is_no_word) {
    EXPECT_EQ(read("-5", TypeParam{7}), (read_t<TypeParam>{false, 7}));
    EXPECT_EQ(read("", TypeParam{7}), (read_t<TypeParam>{false, 7}));
    constexpr bool is_signed = std::is_signed_v<TypeParam>;
    const TypeParam ones = static_cast<TypeParam>(is_signed ? -1L : 0xFFFFFFFFL);
    EXPECT_EQ(read("-5", ones), (read_t<TypeParam>{false, ones}));
}

TYPED_TEST(next_integer, becomes_zero_when_the_word_is_no_number) {
    EXPECT_EQ(read("abc", TypeParam{7}), (read_t<TypeParam>{false, 0}));
}

TEST(next, truncates_to_the_type) {
    EXPECT_EQ(read("321", 'x'), (read_t<char>{true, 'A'}));
    EXPECT_EQ(read("255", 'x'), (read_t<char>{true, '\xFF'}));
    EXPECT_EQ(read<unsigned char>("256", 7), (read_t<unsigned char>{true, 0}));
    EXPECT_EQ(read<short>("65535", 7), (read_t<short>{true, -1}));
    EXPECT_EQ(read<short>("0x18000", 7), (read_t<short>{true, -32768}));
    EXPECT_EQ(read<unsigned short>("65537", 7), (read_t<unsigned short>{true, 1}));
}

TEST(next, reads_long_integers_in_32_bits) {
    EXPECT_EQ(read("0xFFFFFFFF", 7U), (read_t<unsigned>{true, 0xFFFFFFFFU}));
    EXPECT_EQ(read("0xFFFFFFFF", 7UL), (read_t<unsigned long>{true, 0xFFFFFFFFUL}));
    EXPECT_EQ(read("0xFFFFFFFF", 7L), (read_t<long>{true, -1}));
}

TEST(next, clamps_decimals_to_int_even_for_unsigned_types) {
    EXPECT_EQ(read("4294967295", 7U), (read_t<unsigned>{false, 0x7FFFFFFFU}));
    EXPECT_EQ(read("4294967295", 7UL), (read_t<unsigned long>{false, 0x7FFFFFFFUL}));
    EXPECT_EQ(read("4294967295", 7L), (read_t<long>{false, 0x7FFFFFFFL}));
}

TEST(next, has_a_decimal_point_whatever_the_locale) {
    const test::comma_cpp_locale_t cpp_locale;
    const test::comma_c_locale_t c_locale;
    if (!c_locale.is_active()) {
        GTEST_SKIP() << "the C library takes no locale with a decimal comma";
    }
    EXPECT_EQ(read("1.5", 7.0F), (read_t<float>{true, 1.5F}));
    EXPECT_EQ(read("1,5", 7.0F), (read_t<float>{true, 1.0F}));
    EXPECT_EQ(read("1.234", 7), (read_t<int>{true, 1}));
}

} // namespace

#include "algebra/arm_arithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace arm = ko::alg::arm;

namespace {

constexpr std::uint32_t signalling = 0x7F800001U;
constexpr std::uint32_t negative_quiet = 0xFFC00002U;

TEST(arm_arithmetic, wraps_integers) {
    EXPECT_EQ(arm::add(arm::int_max, 1), arm::int_min);
    EXPECT_EQ(arm::subtract(arm::int_min, 1), arm::int_max);
    EXPECT_EQ(arm::multiply(arm::int_max, 2), -2);
    EXPECT_EQ(arm::negate(arm::int_min), arm::int_min);
    EXPECT_EQ(arm::absolute(arm::int_min), arm::int_min);
    EXPECT_EQ(arm::divide(arm::int_min, -1), arm::int_min);
    EXPECT_EQ(arm::remainder(arm::int_min, -1), 0);
}

TEST(arm_arithmetic, shifts_by_the_low_eight_bits_of_the_count) {
    EXPECT_EQ(arm::shift_left(1, 31), arm::int_min);
    EXPECT_EQ(arm::shift_left(1, 32), 0);
    EXPECT_EQ(arm::shift_left(1, 256), 1);
    EXPECT_EQ(arm::shift_left(3, -1), 0);
    EXPECT_EQ(arm::shift_right(-8, 1), -4);
    EXPECT_EQ(arm::shift_right(-8, 40), -1);
    EXPECT_EQ(arm::shift_right(8, 255), 0);
}

TEST(arm_arithmetic, truncates_and_saturates) {
    EXPECT_EQ(arm::truncate(2.9), 2);
    EXPECT_EQ(arm::truncate(-2.9), -2);
    EXPECT_EQ(arm::truncate(2147483647.0), arm::int_max);
    EXPECT_EQ(arm::truncate(1e30), arm::int_max);
    EXPECT_EQ(arm::truncate(-1e30), arm::int_min);
    EXPECT_EQ(arm::truncate(std::numeric_limits<double>::infinity()), arm::int_max);
    EXPECT_EQ(arm::truncate(std::nan("")), 0);
}

TEST(arm_arithmetic, an_operation_makes_the_positive_nan) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(arm::bits_of(arm::subtract(infinity, infinity)), arm::made_nan);
    EXPECT_EQ(arm::bits_of(arm::multiply(infinity, 0.0F)), arm::made_nan);
    EXPECT_EQ(arm::bits_of(arm::divide(infinity, infinity)), arm::made_nan);
}

TEST(arm_arithmetic, the_first_nan_operand_is_the_result) {
    const float a = arm::float_of(negative_quiet);
    const float b = arm::float_of(arm::made_nan);
    EXPECT_EQ(arm::bits_of(arm::add(a, b)), negative_quiet);
    EXPECT_EQ(arm::bits_of(arm::add(b, a)), arm::made_nan);
    EXPECT_EQ(arm::bits_of(arm::add(1.0F, a)), negative_quiet);
}

TEST(arm_arithmetic, a_signalling_nan_goes_first_and_becomes_quiet) {
    const float quiet = arm::float_of(negative_quiet);
    const float loud = arm::float_of(signalling);
    EXPECT_EQ(arm::bits_of(arm::add(quiet, loud)), signalling | arm::quiet_bit);
}

TEST(arm_arithmetic, negation_flips_the_sign_of_a_nan) {
    EXPECT_EQ(arm::bits_of(arm::negate(arm::float_of(arm::made_nan))), 0xFFC00000U);
    EXPECT_TRUE(std::signbit(arm::negate(0.0F)));
}

} // namespace

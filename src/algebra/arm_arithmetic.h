/// @file
/// Integer and float arithmetic that answers as a 32-bit ARM processor does, on every platform
/// and without undefined behaviour.
///
/// Integers wrap at 32 bits. A float that becomes an integer is truncated and saturates; NaN
/// gives 0. An operation with a NaN operand gives the first signalling NaN operand, made quiet,
/// or else the first quiet one; an operation that makes a NaN by itself makes the positive one.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>

namespace ko::alg::arm {

constexpr int int_min = std::numeric_limits<int>::min();
constexpr int int_max = std::numeric_limits<int>::max();

constexpr int wrapped(unsigned bits) {
    return static_cast<int>(bits);
}

constexpr int add(int a, int b) {
    return wrapped(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

constexpr int subtract(int a, int b) {
    return wrapped(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

constexpr int multiply(int a, int b) {
    return wrapped(static_cast<unsigned>(a) * static_cast<unsigned>(b));
}

constexpr int negate(int a) {
    return subtract(0, a);
}

constexpr int absolute(int a) {
    return a < 0 ? negate(a) : a;
}

/// The quotient, truncated towards zero; `b` is not 0.
constexpr int divide(int a, int b) {
    return b == -1 ? negate(a) : a / b;
}

/// The remainder of `divide`; `b` is not 0.
constexpr int remainder(int a, int b) {
    return b == -1 ? 0 : a % b;
}

/// Only the low 8 bits of a shift count reach the shifter.
constexpr unsigned shift_count(int count) {
    return static_cast<unsigned>(count) & 0xFFU;
}

constexpr int shift_left(int a, int count) {
    const unsigned n = shift_count(count);
    return n > 31 ? 0 : wrapped(static_cast<unsigned>(a) << n);
}

constexpr int shift_right(int a, int count) {
    const unsigned n = shift_count(count);
    return a >> (n > 31 ? 31 : n);
}

/// Truncates towards zero; saturates, and gives 0 for NaN.
inline int truncate(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= 2147483647.0) {
        return int_max;
    }
    if (value <= -2147483648.0) {
        return int_min;
    }
    return static_cast<int>(value);
}

[[gnu::always_inline]] inline int truncate(float value) {
    if (std::fabs(value) < 2147483648.0F) { // a NaN is not
        return static_cast<int>(value);
    }
    return value > 0.0F ? int_max : value < 0.0F ? int_min : 0;
}

inline std::uint32_t bits_of(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline float float_of(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// The bit that tells a quiet NaN from a signalling one.
constexpr std::uint32_t quiet_bit = 0x00400000U;
/// The NaN that an operation makes by itself.
constexpr std::uint32_t made_nan = 0x7FC00000U;

inline bool is_nan(std::uint32_t bits) {
    return (bits & 0x7FFFFFFFU) > 0x7F800000U;
}

/// The result of an operation: `result` itself, but for a NaN the one that ARM would give.
inline float settle_nan(float result, std::initializer_list<float> operands) {
    if (!std::isnan(result)) {
        return result;
    }
    std::uint32_t first_quiet = 0;
    for (const float operand : operands) {
        const std::uint32_t bits = bits_of(operand);
        if (!is_nan(bits)) {
            continue;
        }
        if ((bits & quiet_bit) == 0) {
            return float_of(bits | quiet_bit);
        }
        first_quiet = first_quiet == 0 ? bits : first_quiet;
    }
    return float_of(first_quiet == 0 ? made_nan : first_quiet);
}

inline float add(float a, float b) {
    return settle_nan(a + b, {a, b});
}

inline float subtract(float a, float b) {
    return settle_nan(a - b, {a, b});
}

inline float multiply(float a, float b) {
    return settle_nan(a * b, {a, b});
}

/// `b` is not 0.
inline float divide(float a, float b) {
    return settle_nan(a / b, {a, b});
}

/// Flips the sign, a NaN's too.
inline float negate(float a) {
    return float_of(bits_of(a) ^ 0x80000000U);
}

} // namespace ko::alg::arm

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "algebra/arm_arithmetic.h"
#include "algebra/character_tables.h"
#include "algebra/lexer.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

/// Exponents beyond this make no difference to a float: no text has as many digits.
constexpr std::int64_t exponent_max = std::int64_t{1} << 62;

/// The digits of an integer literal and their base.
struct digits_t {
    const char* begin;
    int base;
};

digits_t digits_of(const std::string& text) {
    const char* const begin = text.c_str();
    if (begin[0] == '0' && (begin[1] == 'x' || begin[1] == 'X')) {
        return {begin + 2, 16};
    }
    return {begin, begin[0] == '0' ? 8 : 10};
}

/// The written exponent of a float, 0 without one.
std::int64_t exponent_of(std::string_view text) {
    const std::size_t mark = text.find_first_of("eE");
    if (mark == std::string_view::npos) {
        return 0;
    }
    const std::string_view digits = text.substr(mark + 1);
    std::int64_t exponent = 0;
    const std::from_chars_result end =
        std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (end.ec == std::errc::result_out_of_range) {
        return digits.front() == '-' ? -exponent_max : exponent_max;
    }
    return std::clamp(exponent, -exponent_max, exponent_max);
}

/// The power of ten of the first digit that is not 0, without the written exponent.
std::int64_t leading_power(std::string_view text) {
    const std::size_t point = std::min(text.find('.'), text.find_first_of("eE"));
    const std::size_t whole = std::min(point, text.size());
    const std::size_t first = text.find_first_of("123456789");
    return static_cast<std::int64_t>(whole) - static_cast<std::int64_t>(first);
}

} // namespace

bool int_convert(const std::string& text, int& value) {
    if (text.empty() || !ascii::is_digit(text.front())) {
        return false;
    }
    const digits_t digits = digits_of(text);
    value = 0; // what a lone "0x" gives
    const std::from_chars_result end =
        std::from_chars(digits.begin, text.c_str() + text.size(), value, digits.base);
    if (end.ec == std::errc::result_out_of_range) {
        value = arm::int_max;
    }
    return true;
}

bool float_convert(const std::string& text, float& value) {
    const char* const begin = text.c_str();
    const std::from_chars_result end = std::from_chars(begin, begin + text.size(), value);
    if (end.ec == std::errc::invalid_argument) {
        return false;
    }
    if (end.ec == std::errc::result_out_of_range) {
        const bool is_large = leading_power(text) + exponent_of(text) > 0;
        value = is_large ? std::numeric_limits<float>::infinity() : 0.0F;
    }
    return true;
}

} // namespace ko::alg

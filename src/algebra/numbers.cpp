#include "algebra/numbers.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "algebra/arm_arithmetic.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

/// Digits of an integer that cannot exceed its 32 bits.
constexpr std::size_t digits_safe = 9;

/// The digits of an integer literal and their base.
struct digits_t {
    std::string_view text;
    int base;
};

digits_t digits_of(std::string_view text) {
    if (text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        return {text.substr(2), 16};
    }
    return {text, text[0] == '0' ? 8 : 10};
}

/// The written exponent of a float, 0 without one. Beyond `bound`, it is `bound`.
long long exponent_of(std::string_view text, long long bound) {
    const std::size_t mark = text.find_first_of("eE");
    if (mark == std::string_view::npos) {
        return 0;
    }
    const std::string_view digits = text.substr(mark + 1);
    long long exponent = 0;
    const std::from_chars_result end =
        std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (end.ec == std::errc::result_out_of_range) {
        return digits.front() == '-' ? -bound : bound;
    }
    return std::min(std::max(exponent, -bound), bound);
}

/// The power of ten of the first digit that is not 0, without the written exponent.
long long leading_power(std::string_view text) {
    const std::size_t point = std::min(text.find('.'), text.find_first_of("eE"));
    const std::size_t whole = std::min(point, text.size());
    const std::size_t first = text.find_first_of("123456789");
    return static_cast<long long>(whole) - static_cast<long long>(first);
}

/// Infinity or 0, whichever a number is that no float can hold.
float beyond_floats(std::string_view text) {
    // No number of digits in the text makes up for an exponent of twice its length.
    const long long bound = 2 * static_cast<long long>(text.size()) + 1000;
    const bool is_large = leading_power(text) + exponent_of(text, bound) > 0;
    return is_large ? std::numeric_limits<float>::infinity() : 0.0F;
}

} // namespace

bool int_convert(std::string_view text, int& value) {
    if (text.empty() || !ascii::is_digit(text.front())) {
        return false;
    }
    const digits_t digits = digits_of(text);
    value = 0; // what a lone "0x" gives
    if (digits.base == 10 && text.size() <= digits_safe) {
        for (std::size_t i = 0; i < text.size() && ascii::is_digit(text[i]); ++i) {
            value = 10 * value + (text[i] - '0');
        }
        return true;
    }
    const char* const end = digits.text.data() + digits.text.size();
    if (std::from_chars(digits.text.data(), end, value, digits.base).ec ==
        std::errc::result_out_of_range) {
        value = arm::int_max;
    }
    return true;
}

bool float_convert(std::string_view text, float& value) {
    const char* const begin = text.data();
    const std::from_chars_result end = std::from_chars(begin, begin + text.size(), value);
    if (end.ec == std::errc::invalid_argument) {
        return false;
    }
    if (end.ec == std::errc::result_out_of_range) {
        value = beyond_floats(text);
    }
    return true;
}

} // namespace ko::alg

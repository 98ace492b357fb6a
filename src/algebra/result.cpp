#include "algebra/result.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <locale>
#include <new>
#include <ostream>
#include <sstream>
#include <utility>

#include "algebra/arm_arithmetic.h"
#include "algebra/result_text.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Room for any float in any notation beside its requested decimals.
constexpr std::size_t float_digits_max = 64;

/// Number of decimals where none is asked for.
constexpr int default_precision = 6;

/// A precision that the target's 32-bit stream would take as negative counts as none.
int precision_of(unsigned precision) {
    return precision == 0 || precision > INT_MAX ? default_precision
                                                 : static_cast<int>(precision);
}

/// A float with a number of decimals, with an exponent or without.
std::string float_text(float value, bool scientific, unsigned precision) {
    const std::chars_format format =
        scientific ? std::chars_format::scientific : std::chars_format::fixed;
    const int decimals = precision_of(precision);
    std::string text;
    const std::size_t size = float_digits_max + static_cast<std::size_t>(decimals);
    if (size > text.max_size()) {
        throw std::bad_alloc(); // on a 32-bit system, before memory runs out
    }
    text.resize(size);
    char* const begin = text.data();
    const std::to_chars_result end =
        std::to_chars(begin, begin + text.size(), static_cast<double>(value), format, decimals);
    text.resize(static_cast<std::size_t>(end.ptr - begin));
    return text;
}

const char* checked(const char* text) {
    if (text == nullptr) {
        throw exception_t("result_t::result_t() -- null text");
    }
    return text;
}

/// The text of a number in the format of `out`, without its locale and its field width.
template <class T> std::string number_text(const std::ostream& out, T value) {
    std::ostringstream number;
    number.imbue(std::locale::classic());
    number.flags(out.flags());
    number.precision(out.precision());
    number << value;
    return number.str();
}

} // namespace

result_t::result_t() : int_value(0), float_value(0), type(type_int) {}

result_t::result_t(bool value)
    : int_value(value ? 1 : 0), float_value(value ? 1.0F : 0.0F), type(type_int) {}

result_t::result_t(int value)
    : int_value(value), float_value(static_cast<float>(value)), type(type_int) {}

result_t::result_t(long value) : result_t(arm::wrapped(static_cast<unsigned>(value))) {}

result_t::result_t(unsigned value) : result_t(static_cast<unsigned long long>(value)) {}

result_t::result_t(unsigned long value) : result_t(static_cast<unsigned long long>(value)) {}

result_t::result_t(long long value)
    : result_t(value >= arm::int_min && value <= arm::int_max
                   ? result_t(static_cast<int>(value))
                   : result_t(static_cast<float>(value))) {}

result_t::result_t(unsigned long long value)
    : result_t(value <= static_cast<unsigned>(arm::int_max)
                   ? result_t(static_cast<int>(value))
                   : result_t(static_cast<float>(value))) {}

result_t::result_t(float value)
    : int_value(arm::truncate(value)), float_value(value), type(type_float) {}

result_t::result_t(double value)
    : int_value(arm::truncate(value)), float_value(static_cast<float>(value)), type(type_float) {}

result_t::result_t(const std::string& value)
    : int_value(0), float_value(0), string_value(value), type(type_string) {}

result_t::result_t(std::string&& value) noexcept
    : int_value(0), float_value(0), string_value(std::move(value)), type(type_string) {}

result_t::result_t(const char* value)
    : int_value(0), float_value(0), string_value(checked(value)), type(type_string) {}

unsigned result_t::type_get() const {
    return type;
}

void result_t::type_set(unsigned new_type) {
    type = new_type;
}

void result_t::type_set(unsigned a, unsigned b) {
    type = std::max(a, b);
}

bool result_t::is_int() const {
    return type == type_int;
}

bool result_t::is_float() const {
    return type == type_float;
}

bool result_t::is_string() const {
    return type == type_string;
}

int result_t::int_get() const {
    if (is_float()) {
        return arm::truncate(float_value);
    }
    return is_string() ? 0 : int_value;
}

float result_t::float_get() const {
    if (is_int()) {
        return static_cast<float>(int_value);
    }
    return is_string() ? 0.0F : float_value;
}

std::string result_t::string_get(bool scientific, unsigned precision) const {
    if (is_string()) {
        return string_value;
    }
    if (is_float() && (scientific || precision != 0)) {
        return float_text(float_value, scientific, precision);
    }
    return std::string(result_text_t(*this).view());
}

std::ostream& operator<<(std::ostream& out, const result_t& value) {
    if (value.is_float()) {
        return out << "(f) " << number_text(out, value.float_get());
    }
    if (value.is_string()) {
        return out << "(s) " << value.string_get(false, 0);
    }
    return out << "(i) " << number_text(out, value.int_get());
}

} // namespace ko::alg

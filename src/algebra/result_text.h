/// @file
/// The text of a value without a copy of it, and the parts of a value for the rooms that compute.
#pragma once

#include <string>
#include <string_view>

#include "algebra/result.h"

namespace ko::alg {

/// The stored members of a value, whatever its type code says.
struct result_parts_t {
    static unsigned type(const result_t& value) { return value.type; }
    static int int_value(const result_t& value) { return value.int_value; }
    static float float_value(const result_t& value) { return value.float_value; }
    static const std::string& text(const result_t& value) { return value.string_value; }
    static std::string& text(result_t& value) { return value.string_value; }
    static void numbers_clear(result_t& value) {
        value.int_value = 0;
        value.float_value = 0;
    }
};

/// The text of a value: a string's own bytes, or the characters of a number, which it holds.
/// Its view is valid as long as both the value and this object are.
class result_text_t {
public:
    explicit result_text_t(const result_t& value);
    result_text_t(const result_text_t&) = delete;
    result_text_t& operator=(const result_text_t&) = delete;

    std::string_view view() const { return text; }

private:
    /// Longer than any 32-bit integer, and than any float with 6 significant digits.
    static constexpr std::size_t number_size_max = 24;

    char number[number_size_max];
    std::string_view text;
};

} // namespace ko::alg

/// @file
/// The parts of a value for the rooms that compute: its members, and its text without a copy.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "algebra/result.h"

namespace ko::alg {

/// The members of a `result_t`: both views of a number, which need not agree, and the text.
struct result_members_t {
    static unsigned type(const result_t& value) { return value.type; }
    static int integer(const result_t& value) { return value.int_value; }
    static float real(const result_t& value) { return value.float_value; }
    static const std::string& text(const result_t& value) { return value.string_value; }
    static std::string& text(result_t& value) { return value.string_value; }

    /// Gives a value all but its text.
    static void set(result_t& value, unsigned type, int integer, float real) {
        value.int_value = integer;
        value.float_value = real;
        value.type = type;
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

/// @file
/// The text of a value without a copy of it.
#pragma once

#include <cstddef>
#include <string_view>

#include "algebra/result.h"

namespace ko::alg {

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

/// @file
/// The one door to the members of a value, for the machine.
#pragma once

#include <string>

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

} // namespace ko::alg

/// @file
/// A number while it is computed with.
#pragma once

#include <cstdint>

#include "algebra/arm_arithmetic.h"
#include "algebra/result_text.h"

namespace ko::alg {

/// An integer or a float in eight bytes: the view of its own type alone.
class number_t { // NOLINT(cppcoreguidelines-pro-type-member-init): of a union, one member is
public:
    number_t() = default; // NOLINT(cppcoreguidelines-pro-type-member-init): the same
    static number_t of_int(int value) {
        number_t made;
        made.integer = value;
        return made;
    }
    static number_t of_float(float value) {
        number_t made;
        made.type = 1;
        made.real = value;
        return made;
    }
    /// The number of a value whose type is that of a number.
    static number_t of_value(const result_t& value) {
        return result_members_t::type(value) == result_t::type_int
                   ? of_int(result_members_t::integer(value))
                   : of_float(result_members_t::real(value));
    }
    /// True where a value is a number and nothing else: one that has a text, which a host can
    /// bring about, is not.
    static bool is_number(const result_t& value) {
        return result_members_t::type(value) <= result_t::type_float &&
               result_members_t::text(value).empty();
    }
    /// True where the other view of a number is what would be computed from its own one. A
    /// `double` has been truncated before it was rounded, and a host may set any type.
    static bool is_plain(const result_t& value) {
        const number_t number = of_value(value);
        return number.int_of_number() == result_members_t::integer(value) &&
               arm::bits_of(number.float_of_number()) ==
                   arm::bits_of(result_members_t::real(value));
    }

    int int_view() const { return integer; }
    float float_view() const { return real; }
    /// The float reading.
    float float_of_number() const {
        return type == 0 ? static_cast<float>(int_view()) : float_view();
    }
    /// The integer reading.
    int int_of_number() const { return type == 0 ? int_view() : arm::truncate(float_view()); }
    bool is_integer() const { return type == 0; }
    static bool are_integers(const number_t& a, const number_t& b) {
        return (a.type | b.type) == 0;
    }
    static bool are_reals(const number_t& a, const number_t& b) { return (a.type & b.type) != 0; }

    result_t value() const { return type == 0 ? result_t(int_view()) : result_t(float_view()); }

private:
    std::uint32_t type = 0; ///< 1 for a float
    union {
        std::int32_t integer = 0;
        float real;
    };
};

} // namespace ko::alg

/// @file
/// The value of the expression evaluator and its operators.
#pragma once

#include <iosfwd>
#include <string>

#include "export.h"

namespace ko::alg {

/// The value of the expression evaluator: an integer, a float or a string.
///
/// A number carries both an integer and a float view of itself; a string reads as 0 in both.
/// There is no boolean type: truth is the integer 0 or 1. Conversions, wrapping and rounding are
/// those of a 32-bit ARM processor on every platform.
///
/// @par Owns
/// Its text.
/// @par Lives
/// As a plain value; one that was moved from can be assigned to and destroyed.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// It can be assigned to and destroyed.
///
/// @code
/// const alg::result_t gain = 0.5;
/// std::cout << alg::result_t(3) * gain << '\n';                 // (f) 1.5
/// std::cout << alg::result_t("zone ") + alg::result_t(3) << '\n'; // (s) zone 3
/// std::cout << gain.int_get() << '\n';                          // 0
/// @endcode
class KO_API result_t {
public:
    /// Type codes, in the order of promotion: the larger one wins.
    enum type_e : unsigned { type_int = 0, type_float = 1, type_string = 2 };

    result_t();             ///< the integer 0
    result_t(bool value);   ///< the integer 0 or 1
    result_t(int value);    ///< an integer
    result_t(long value);   ///< an integer, the low 32 bits of `value`
    result_t(float value);  ///< a float; the integer view is truncated towards zero
    result_t(double value); ///< a float rounded from `value`; the integer view is truncated
                            ///< from `value` itself; callers rely on it (quirk "double's
                            ///< integer")
    result_t(const std::string& value);     ///< a string
    result_t(std::string&& value) noexcept; ///< a string, whose text is moved
    result_t(const char* value);            ///< a string; null throws a `ko::exception_t`

    /// @name From the other integer types
    /// An integer where 32 bits hold the value, otherwise the nearest float. A `long` has 32
    /// bits on the target; where it has more, the constructor above keeps the low ones.
    /// @{

    /// An integer or, where 32 bits do not hold the value, the nearest float.
    result_t(unsigned value);
    result_t(unsigned long value);
    result_t(long long value);
    result_t(unsigned long long value);
    /// @}

    /// The type code.
    unsigned type_get() const;
    /// Stores the type code and changes nothing else.
    void type_set(unsigned type);
    /// Stores the larger of two type codes.
    void type_set(unsigned a, unsigned b);

    bool is_int() const;    ///< the type code is 0
    bool is_float() const;  ///< the type code is 1
    bool is_string() const; ///< the type code is 2

    /// The integer reading: a float truncated towards zero (saturating, 0 for NaN), 0 for a
    /// string.
    int int_get() const;
    /// The float reading: an integer converted, 0 for a string.
    float float_get() const;

    /// The value as text.
    ///
    /// A string gives itself and an integer its decimal digits, whatever the arguments.
    /// @param scientific true writes a float with an exponent
    /// @param precision number of decimals of a float; 0 gives 6 of them with `scientific` true,
    ///        and otherwise the general form with 6 significant digits
    std::string string_get(bool scientific, unsigned precision) const;

private:
    friend struct ko::layout_t;
    friend struct result_members_t;

    int int_value;
    float float_value;
    std::string string_value;
    unsigned type;
};

/// Writes a tag, "(i) ", "(f) " or "(s) ", and the value; a number in the stream's own format,
/// but always with the digits and the decimal point of the "C" locale.
KO_API std::ostream& operator<<(std::ostream& out, const result_t& value);

/// @name Operators
///
/// The type of a result is the larger type code of the operands. Integers wrap at 32 bits, floats
/// have single precision. `%`, `<<`, `>>`, `&`, `^`, `|`, `&&`, `||` read both operands as
/// integers and give an integer; comparisons give the integer 0 or 1 and compare a number with a
/// string by the number's text. Of a shift count only the low 8 bits count.
///
/// Throws `ko::exception_t` for an operand type that an operator does not take ("operator '*' --
/// illegal type" and alike), "divide by zero" and "modulo by zero".
/// @{

/// What the language gives for this operator; see above.
KO_API result_t operator!(const result_t& a);
KO_API result_t operator-(const result_t& a);
KO_API result_t operator+(const result_t& a);
KO_API result_t operator~(const result_t& a);
KO_API result_t operator*(const result_t& a, const result_t& b);
KO_API result_t operator/(const result_t& a, const result_t& b);
KO_API result_t operator%(const result_t& a, const result_t& b);
KO_API result_t operator-(const result_t& a, const result_t& b);
KO_API result_t operator+(const result_t& a, const result_t& b);
KO_API result_t operator<<(const result_t& a, const result_t& b);
KO_API result_t operator>>(const result_t& a, const result_t& b);
KO_API result_t operator&(const result_t& a, const result_t& b);
KO_API result_t operator^(const result_t& a, const result_t& b);
KO_API result_t operator|(const result_t& a, const result_t& b);
KO_API result_t operator&&(const result_t& a, const result_t& b);
KO_API result_t operator||(const result_t& a, const result_t& b);
KO_API result_t operator<(const result_t& a, const result_t& b);
KO_API result_t operator<=(const result_t& a, const result_t& b);
KO_API result_t operator>(const result_t& a, const result_t& b);
KO_API result_t operator>=(const result_t& a, const result_t& b);
KO_API result_t operator==(const result_t& a, const result_t& b);
KO_API result_t operator!=(const result_t& a, const result_t& b);
/// @}

} // namespace ko::alg

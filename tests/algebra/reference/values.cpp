#include "algebra/reference/values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace test::reference {

value_t of_int(std::int64_t i) {
    value_t value;
    value.i = static_cast<int>(static_cast<std::uint32_t>(i));
    return value;
}

value_t of_float(float f) {
    value_t value;
    value.type = 1;
    value.f = f;
    return value;
}

value_t of_text(const std::string& s) {
    value_t value;
    value.type = 2;
    value.s = s;
    return value;
}

int int_of(const value_t& v) {
    if (v.type != 1) {
        return v.type == 0 ? v.i : 0;
    }
    if (std::isnan(v.f)) {
        return 0;
    }
    constexpr float limit = 2147483648.0F;
    return v.f >= limit    ? std::numeric_limits<int>::max()
           : v.f <= -limit ? std::numeric_limits<int>::min()
                           : static_cast<int>(v.f);
}

float float_of(const value_t& v) {
    return v.type == 0 ? static_cast<float>(v.i) : v.type == 1 ? v.f : 0;
}

std::string text_of(const value_t& v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(v.f));
    return v.type == 0 ? std::to_string(v.i) : v.type == 1 ? text : v.s;
}

namespace {

/// A NaN is that of an operand, the left one first, or a positive one.
value_t of_operation(float result, float a, float b) {
    if (!std::isnan(result)) {
        return of_float(result);
    }
    return of_float(std::isnan(a)   ? a
                    : std::isnan(b) ? b
                                    : std::numeric_limits<float>::quiet_NaN());
}

[[noreturn]] void illegal(const std::string& op) {
    throw error_t("operator " + op + " -- illegal type");
}

value_t quotient(const value_t& a, const value_t& b, int type) {
    if (type == 2) {
        illegal("'/'");
    }
    if (type == 0 ? int_of(b) == 0 : float_of(b) == 0) {
        throw error_t("divide by zero");
    }
    if (type == 0) {
        return of_int(std::int64_t{int_of(a)} / int_of(b));
    }
    return of_operation(float_of(a) / float_of(b), float_of(a), float_of(b));
}

value_t arithmetic(const std::string& op, const value_t& a, const value_t& b) {
    const int type = std::max(a.type, b.type);
    if (op == "/") {
        return quotient(a, b, type);
    }
    if (type == 2) {
        return op == "+" ? of_text(text_of(a) + text_of(b))
                         : (illegal(op == "*" ? "'*'" : "binary '-'"), value_t());
    }
    const float x = float_of(a);
    const float y = float_of(b);
    const std::int64_t i = int_of(a);
    const std::int64_t j = int_of(b);
    if (type == 0) {
        return of_int(op == "*" ? i * j : op == "+" ? i + j : i - j);
    }
    return of_operation(op == "*" ? x * y : op == "+" ? x + y : x - y, x, y);
}

/// The operators that read both sides as integers.
value_t bitwise(const std::string& op, std::int64_t i, std::int64_t j) {
    if (op == "%" && j == 0) {
        throw error_t("modulo by zero");
    }
    const std::int64_t count = j & 0xFF;
    return of_int(op == "%"    ? i % j
                  : op == "<<" ? (count > 31 ? 0 : i * (std::int64_t{1} << count))
                  : op == ">>" ? (i >> (count > 31 ? 31 : count))
                  : op == "&"  ? (i & j)
                  : op == "|"  ? (i | j)
                  : op == "&&" ? i != 0 && j != 0
                               : i != 0 || j != 0);
}

template <class T> bool holds(const std::string& op, const T& a, const T& b) {
    return op == "<"    ? a < b
           : op == "<=" ? a <= b
           : op == ">"  ? a > b
           : op == ">=" ? a >= b
           : op == "==" ? a == b
                        : a != b;
}

} // namespace

bool compared(const std::string& op, const value_t& a, const value_t& b) {
    const int type = std::max(a.type, b.type);
    return type == 0   ? holds(op, a.i, b.i)
           : type == 1 ? holds(op, float_of(a), float_of(b))
                       : holds(op, text_of(a), text_of(b));
}

value_t binary(const std::string& op, const value_t& a, const value_t& b) {
    if (op == "*" || op == "/" || op == "+" || op == "-") {
        return arithmetic(op, a, b);
    }
    if (op == "==" || op == "!=" || op == "<=" || op == ">=" || op == "<" || op == ">") {
        return of_int(compared(op, a, b) ? 1 : 0);
    }
    return bitwise(op, int_of(a), int_of(b));
}

value_t unary(const std::string& op, const value_t& a) {
    if (op == "!") {
        return of_int(int_of(a) == 0 ? 1 : 0);
    }
    if (a.type == 2) {
        illegal("unary '" + op + "'");
    }
    if (op == "+") {
        return a;
    }
    return a.type == 0 ? of_int(-std::int64_t{a.i}) : of_float(-a.f);
}

} // namespace test::reference

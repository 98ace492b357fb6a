#include <algorithm>
#include <new>
#include <string>

#include "algebra/arm_arithmetic.h"
#include "algebra/result.h"
#include "algebra/result_text.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

unsigned type_of(const result_t& a, const result_t& b) {
    return std::max(a.type_get(), b.type_get());
}

/// The text of `a` followed by that of `b`, in memory asked for once.
std::string joined(const result_t& a, const result_t& b) {
    const result_text_t left(a);
    const result_text_t right(b);
    std::string text;
    if (right.view().size() > text.max_size() - left.view().size()) {
        throw std::bad_alloc(); // on a 32-bit system, before memory runs out
    }
    text.reserve(left.view().size() + right.view().size());
    text += left.view();
    text += right.view();
    return text;
}

/// Both operands as text, compared byte by byte.
int compared(const result_t& a, const result_t& b) {
    return result_text_t(a).view().compare(result_text_t(b).view());
}

/// An arithmetic operator that takes numbers only.
template <class I, class F>
result_t numeric(const result_t& a, const result_t& b, I of_ints, F of_floats,
                 const char* message) {
    switch (type_of(a, b)) {
    case result_t::type_int:
        return of_ints(a.int_get(), b.int_get());
    case result_t::type_float:
        return of_floats(a.float_get(), b.float_get());
    default:
        throw exception_t(std::string(message));
    }
}

/// One of the four relations; every type that is no number compares as text.
template <class C> result_t relation(const result_t& a, const result_t& b, C compare) {
    switch (type_of(a, b)) {
    case result_t::type_int:
        return compare(a.int_get(), b.int_get());
    case result_t::type_float:
        return compare(a.float_get(), b.float_get());
    default:
        return compare(compared(a, b), 0);
    }
}

bool equal(const result_t& a, const result_t& b, const char* message) {
    switch (type_of(a, b)) {
    case result_t::type_int:
        return a.int_get() == b.int_get();
    case result_t::type_float:
        return a.float_get() == b.float_get();
    case result_t::type_string:
        return result_text_t(a).view() == result_text_t(b).view();
    default:
        throw exception_t(std::string(message));
    }
}

int int_quotient(int a, int b) {
    if (b == 0) {
        throw exception_t("divide by zero");
    }
    return arm::divide(a, b);
}

float float_quotient(float a, float b) {
    if (b == 0.0F) {
        throw exception_t("divide by zero");
    }
    return arm::divide(a, b);
}

} // namespace

result_t operator!(const result_t& a) {
    return a.int_get() == 0;
}

result_t operator-(const result_t& a) {
    switch (a.type_get()) {
    case result_t::type_int:
        return arm::negate(a.int_get());
    case result_t::type_float:
        return arm::negate(a.float_get());
    default:
        throw exception_t("operator unary '-' -- illegal type");
    }
}

result_t operator+(const result_t& a) {
    switch (a.type_get()) {
    case result_t::type_int:
        return a.int_get();
    case result_t::type_float:
        return a.float_get();
    default:
        throw exception_t("operator unary '+' -- illegal type");
    }
}

result_t operator~(const result_t& a) {
    if (!a.is_int()) {
        throw exception_t("operator '~' -- illegal type");
    }
    return ~a.int_get();
}

result_t operator*(const result_t& a, const result_t& b) {
    return numeric(
        a, b, [](int x, int y) { return arm::multiply(x, y); },
        [](float x, float y) { return arm::multiply(x, y); }, "operator '*' -- illegal type");
}

result_t operator/(const result_t& a, const result_t& b) {
    return numeric(a, b, int_quotient, float_quotient, "operator '/' -- illegal type");
}

result_t operator%(const result_t& a, const result_t& b) {
    if (b.int_get() == 0) {
        throw exception_t("modulo by zero");
    }
    return arm::remainder(a.int_get(), b.int_get());
}

result_t operator-(const result_t& a, const result_t& b) {
    return numeric(
        a, b, [](int x, int y) { return arm::subtract(x, y); },
        [](float x, float y) { return arm::subtract(x, y); },
        "operator binary '-' -- illegal type");
}

result_t operator+(const result_t& a, const result_t& b) {
    if (type_of(a, b) == result_t::type_string) {
        return joined(a, b);
    }
    return numeric(
        a, b, [](int x, int y) { return arm::add(x, y); },
        [](float x, float y) { return arm::add(x, y); }, "operator binary '+' -- illegal type");
}

result_t operator<<(const result_t& a, const result_t& b) {
    return arm::shift_left(a.int_get(), b.int_get());
}

result_t operator>>(const result_t& a, const result_t& b) {
    return arm::shift_right(a.int_get(), b.int_get());
}

result_t operator&(const result_t& a, const result_t& b) {
    return a.int_get() & b.int_get();
}

result_t operator^(const result_t& a, const result_t& b) {
    return a.int_get() ^ b.int_get();
}

result_t operator|(const result_t& a, const result_t& b) {
    return a.int_get() | b.int_get();
}

result_t operator&&(const result_t& a, const result_t& b) {
    return a.int_get() != 0 && b.int_get() != 0;
}

result_t operator||(const result_t& a, const result_t& b) {
    return a.int_get() != 0 || b.int_get() != 0;
}

result_t operator<(const result_t& a, const result_t& b) {
    return relation(a, b, [](auto x, auto y) { return x < y; });
}

result_t operator<=(const result_t& a, const result_t& b) {
    return relation(a, b, [](auto x, auto y) { return x <= y; });
}

result_t operator>(const result_t& a, const result_t& b) {
    return relation(a, b, [](auto x, auto y) { return x > y; });
}

result_t operator>=(const result_t& a, const result_t& b) {
    return relation(a, b, [](auto x, auto y) { return x >= y; });
}

result_t operator==(const result_t& a, const result_t& b) {
    return equal(a, b, "operator '==' -- illegal type");
}

result_t operator!=(const result_t& a, const result_t& b) {
    return !equal(a, b, "operator '!=' -- illegal type");
}

} // namespace ko::alg

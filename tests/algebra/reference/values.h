/// @file
/// Values and operators of the reference evaluator.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace test::reference {

struct value_t {
    int type = 0; ///< 0 an integer, 1 a float, 2 a text
    int i = 0;
    float f = 0;
    std::string s;
};

/// A failure, with its message.
struct error_t : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A failure of lexing or binding, which an evaluator remembers.
struct parse_error_t : error_t {
    using error_t::error_t;
};

value_t of_int(std::int64_t i); ///< wraps at 32 bits
value_t of_float(float f);
value_t of_text(const std::string& s);

int int_of(const value_t& v);
float float_of(const value_t& v);
std::string text_of(const value_t& v);

bool compared(const std::string& op, const value_t& a, const value_t& b);
value_t binary(const std::string& op, const value_t& a, const value_t& b);
value_t unary(const std::string& op, const value_t& a);

} // namespace test::reference

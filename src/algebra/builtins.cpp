#include "algebra/builtins.h"

#include <cmath>
#include <iostream>
#include <sstream>
#include <utility>

#include "algebra/arm_arithmetic.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

// Functions of one float.

template <float (*function)(float)> float at(float x) {
    return arm::settle_nan(function(x), {x});
}

template <float (*function)(float)> float of_real(float a, float /*b*/) {
    return function(a);
}

template <float (*function)(float)> number_t of_number(number_t a, number_t /*b*/) {
    return number_t::of_float(at<function>(a.float_of_number()));
}

template <float (*function)(float)> result_t of_any(const builtin_call_t& call) {
    return at<function>(call.arguments[0].float_get());
}

// Other functions of numbers.

float abs_of_real(float a, float /*b*/) {
    return std::fabs(a);
}

number_t abs_of_number(number_t a, number_t /*b*/) {
    return a.is_integer() ? number_t::of_int(arm::absolute(a.int_view()))
                          : number_t::of_float(std::fabs(a.float_view()));
}

result_t abs_of(const builtin_call_t& call) {
    const result_t& a = call.arguments[0];
    return a.is_float() ? result_t(std::fabs(a.float_get())) : arm::absolute(a.int_get());
}

bool is_less(number_t a, number_t b) {
    return number_t::are_integers(a, b) ? a.int_view() < b.int_view()
                                        : a.float_of_number() < b.float_of_number();
}

float max_of_reals(float a, float b) {
    return a < b ? b : a;
}

number_t max_of_numbers(number_t a, number_t b) {
    return is_less(a, b) ? b : a;
}

result_t max_of(const builtin_call_t& call) {
    result_t* const a = call.arguments;
    return std::move((a[1] > a[0]).int_get() != 0 ? a[1] : a[0]);
}

float min_of_reals(float a, float b) {
    return b < a ? b : a;
}

number_t min_of_numbers(number_t a, number_t b) {
    return is_less(b, a) ? b : a;
}

result_t min_of(const builtin_call_t& call) {
    result_t* const a = call.arguments;
    return std::move((a[1] < a[0]).int_get() != 0 ? a[1] : a[0]);
}

result_t pow_of(const builtin_call_t& call) {
    const float x = call.arguments[0].float_get();
    const float y = call.arguments[1].float_get();
    return arm::settle_nan(::powf(x, y), {x, y});
}

result_t quad_of(const builtin_call_t& call) {
    const float a = call.arguments[0].float_get();
    const float b = call.arguments[1].float_get();
    const float c = call.arguments[2].float_get();
    // One square in single and the rest in double precision; callers rely on it (quirk "quad").
    const float square = b * b;
    const auto discriminant = static_cast<float>(
        static_cast<double>(square) - 4.0 * static_cast<double>(a) * static_cast<double>(c));
    if (discriminant < 0.0F) {
        throw exception_t("quadratic -- non-real result");
    }
    return arm::settle_nan((::sqrtf(discriminant) - b) / (a + a), {b, a, c});
}

// Functions that report.

result_t error_of(const builtin_call_t& call) {
    if (call.arguments[0].is_string()) {
        throw exception_t("algebra evaluator -- %s",
                          call.arguments[0].string_get(false, 0).c_str());
    }
    throw exception_t("algebra evaluator");
}

result_t output_of(const builtin_call_t& call) {
    const result_t& a = call.arguments[0];
    if (call.output == nullptr) {
        std::cout << a << std::endl;
    } else {
        std::ostringstream line;
        line << a << '\n';
        call.output(line.str());
    }
    return std::move(call.arguments[0]);
}

// Functions of strings and variables.

result_t strlen_of(const builtin_call_t& call) {
    return static_cast<int>(
        text_argument(call.arguments[0], "algebra_t::strlen_f() -- non-string argument passed")
            .size());
}

result_t defined_of(const builtin_call_t& call) {
    return call.variables.find(text_argument(
               call.arguments[0],
               "algebra_t::defined_f() -- non-string argument to 'defined'")) != nullptr;
}

result_t exists_of(const builtin_call_t& call) {
    // The message names the other function; callers rely on it (quirk "exists' message").
    const result_t* const value = call.variables.find(text_argument(
        call.arguments[0], "algebra_t::exists_f() -- non-string argument to 'defined'"));
    return value == nullptr ? result_t(0) : *value;
}

} // namespace

constexpr builtin_t builtins[] = {
    // name, function of floats, of numbers, of any values, number of arguments, instruction
    {"abs", abs_of_real, abs_of_number, abs_of, 1},
    {"sqrt", of_real<::sqrtf>, of_number<::sqrtf>, of_any<::sqrtf>, 1},
    {"sin", of_real<::sinf>, of_number<::sinf>, of_any<::sinf>, 1},
    {"cos", of_real<::cosf>, of_number<::cosf>, of_any<::cosf>, 1},
    {"tan", of_real<::tanf>, of_number<::tanf>, of_any<::tanf>, 1},
    {"max", max_of_reals, max_of_numbers, max_of, 2},
    {"min", min_of_reals, min_of_numbers, min_of, 2},
    {"pow", nullptr, nullptr, pow_of, 2},
    {"log", of_real<::logf>, of_number<::logf>, of_any<::logf>, 1},
    {"log10", of_real<::log10f>, of_number<::log10f>, of_any<::log10f>, 1},
    {"floor", of_real<::floorf>, of_number<::floorf>, of_any<::floorf>, 1},
    {"ceil", of_real<::ceilf>, of_number<::ceilf>, of_any<::ceilf>, 1},
    {"quad", nullptr, nullptr, quad_of, 3},
    {"func_error", nullptr, nullptr, error_of, 1},
    {"func_output", nullptr, nullptr, output_of, 1},
    {"return", nullptr, nullptr, nullptr, 1, opcode_e::give_back},
    {"evaluate", nullptr, nullptr, nullptr, 1, opcode_e::evaluate, true},
    {"assign", nullptr, nullptr, nullptr, 2, opcode_e::assign, true},
    {"strlen", nullptr, nullptr, strlen_of, 1},
    {"defined", nullptr, nullptr, defined_of, 1},
    {"exists", nullptr, nullptr, exists_of, 1},
};

namespace {

/// The lengths of the names that begin with each letter, a bit for each.
struct lengths_t {
    constexpr lengths_t() : by_letter() {
        for (const builtin_t& row : builtins) {
            by_letter[static_cast<unsigned>(row.name[0] - 'a')] |= 1U << row.name.size();
        }
    }
    constexpr bool has(std::string_view name) const {
        return name.size() < 32 && name[0] >= 'a' && name[0] <= 'z' &&
               (by_letter[static_cast<unsigned>(name[0] - 'a')] >> name.size() & 1U) != 0;
    }

    unsigned by_letter[26];
};

constexpr lengths_t lengths;

constexpr bool are_long_enough() {
    for (const builtin_t& row : builtins) {
        if (row.name.size() < builtin_name_min) {
            return false;
        }
    }
    return true;
}
static_assert(are_long_enough());

} // namespace

void builtin_names_get(std::vector<std::string>& out) {
    for (const builtin_t& builtin : builtins) {
        out.emplace_back(builtin.name);
    }
}

const builtin_t* builtin_search(std::string_view name) {
    if (!lengths.has(name)) {
        return nullptr;
    }
    for (const builtin_t& row : builtins) {
        if (row.name == name) { // compares the lengths first
            return &row;
        }
    }
    return nullptr;
}

const std::string& text_argument(const result_t& argument, const char* message) {
    if (!argument.is_string()) {
        throw exception_t(std::string(message));
    }
    return result_members_t::text(argument);
}

} // namespace ko::alg

// The evaluator under a host's locale with a decimal comma.

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/comma_locale.h"
#include "support/evaluation.h"

namespace {

using evaluator_in_a_locale = test::evaluator_t;

const std::initializer_list<test::case_t> locale_cases = {
    {"1.5", "(f) 1.5"},
    {"1.5 + 1", "(f) 2.5"},
    {"2.5e-1", "(f) 0.25"},
    {"1.5 + 'x'", "(s) 1.5x"},
    {"1234567", "(i) 1234567"},
    {"0x1F", "(i) 31"},
    {"max(1, 5)", "(i) 5"},
    {"assign('x', 1.25)", "(f) 1.25"},
    {"1234.5 + ''", "(s) 1234.5"},
    {"max(1)", "! external function max -- 1 arguments found, 2 expected"},
};

} // namespace

TEST_F(evaluator_in_a_locale, of_cpp_reads_and_writes_a_decimal_point) {
    const test::comma_cpp_locale_t comma;
    expect(locale_cases);
}

TEST_F(evaluator_in_a_locale, of_c_reads_and_writes_a_decimal_point) {
    const test::comma_c_locale_t comma;
    if (!comma.is_active()) {
        GTEST_SKIP() << "no locale with a decimal comma";
    }
    expect(locale_cases);
}

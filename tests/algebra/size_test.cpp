// Expressions as long and as deep as a file may hold. The time bounds are generous: they catch a
// cost that grows with the square of the length.
#include <ctime>
#include <functional>
#include <ostream>

#include "support/evaluation.h"

namespace {

using test::outcome_of;
using test::repeated;
using test::shown;

constexpr int thousand = 1000;
constexpr int lots = 100 * thousand;
constexpr int million = 10 * lots;

/// An expression with `n` parts.
struct shape_t {
    const char* name;
    std::function<std::string(std::size_t)> text;
    std::size_t parts; ///< number of parts of the largest one
    std::string value; ///< of the largest one
};

/// Shown by its name: its bytes are not all defined.
std::ostream& operator<<(std::ostream& out, const shape_t& shape) {
    return out << shape.name;
}

const shape_t shapes[] = {
    {"terms", [](std::size_t n) { return "1" + repeated("+1", n - 1); }, million, "(i) 1000000"},
    {"parentheses", [](std::size_t n) { return repeated("(", n) + "1" + repeated(")", n); },
     million, "(i) 1"},
    {"unary_operators", [](std::size_t n) { return repeated("-(", n) + "1" + repeated(")", n); },
     million, "(i) 1"},
    {"comparisons", [](std::size_t n) { return "1" + repeated("<2", n); }, lots, "(i) 1"},
    {"conditions", [](std::size_t n) { return "1" + repeated("?1:2", n); }, lots, "(i) 1"},
    {"right_leaning_sums",
     [](std::size_t n) { return repeated("1+(", n) + "1" + repeated(")", n); }, lots,
     "(i) 100001"},
    {"calls", [](std::size_t n) { return repeated("max(1,", n) + "2" + repeated(")", n); }, lots,
     "(i) 2"},
};

/// Processor time, which other programs on the machine do not change.
double seconds_of(const std::function<void()>& action) {
    const std::clock_t begin = std::clock();
    action();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// Everything that can be done with an expression.
void whole_life(const std::string& text) {
    ko::alg::algebra_t algebra;
    ASSERT_TRUE(algebra.parse(text)) << algebra.parse_error_get();
    algebra.evaluate();
    ko::alg::algebra_t copy(algebra);
    copy.evaluate();
}

class size : public testing::TestWithParam<shape_t> {};

TEST_P(size, of_an_expression_has_no_limit) {
    const shape_t& shape = GetParam();
    ko::alg::algebra_t algebra;
    ASSERT_TRUE(algebra.parse(shape.text(shape.parts))) << algebra.parse_error_get();
    EXPECT_EQ(shown(algebra.evaluate()), shape.value);
    const ko::alg::algebra_t copy(algebra);
    algebra = copy;
    EXPECT_EQ(shown(algebra.evaluate()), shape.value);
}

TEST_P(size, costs_no_more_than_its_length) {
    const std::string text = GetParam().text(lots);
    EXPECT_LT(seconds_of([&] { whole_life(text); }), 20.0);
}

std::string name_of(const testing::TestParamInfo<shape_t>& shape) {
    return shape.param.name;
}

INSTANTIATE_TEST_SUITE_P(shapes, size, testing::ValuesIn(shapes), name_of);

class long_input : public test::evaluator_t {};

TEST_F(long_input, any_number_of_arguments_is_collected) {
    algebra.define(
        "count",
        [](ko::alg::algebra_t&, std::vector<ko::alg::result_t> values) {
            return ko::alg::result_t(static_cast<int>(values.size()));
        },
        lots);
    EXPECT_EQ(outcome("count(1" + repeated(",1", lots - 1) + ")"), "(i) 100000");
}

TEST_F(long_input, a_text_is_joined_in_one_pass) {
    const std::string text = "'ab'" + repeated("+'cd'", lots);
    ASSERT_TRUE(algebra.parse(text));
    ko::alg::result_t value;
    EXPECT_LT(seconds_of([&] { value = algebra.evaluate(); }), 5.0);
    EXPECT_EQ(value.string_get(false, 0), "ab" + repeated("cd", lots));
}

TEST_F(long_input, a_text_and_numbers_are_joined_in_one_pass) {
    algebra.assign("s", repeated("x", million));
    ASSERT_TRUE(algebra.parse("s" + repeated("+1+2.5", 50 * thousand)));
    ko::alg::result_t value;
    EXPECT_LT(seconds_of([&] { value = algebra.evaluate(); }), 5.0);
    EXPECT_EQ(value.string_get(false, 0),
              repeated("x", million) + repeated("12.5", 50 * thousand));
}

TEST_F(long_input, a_failed_parse_of_many_terms_can_be_evaluated) {
    EXPECT_FALSE(algebra.parse("1" + repeated("+1", lots) + " 2"));
    EXPECT_EQ(program_outcome(), "(i) 100001");
}

TEST_F(long_input, numbers_names_and_strings_of_a_million_characters) {
    const std::string digits = repeated("7", million);
    const std::string name = repeated("n", million);
    EXPECT_EQ(outcome(digits), "(i) 2147483647");
    EXPECT_EQ(outcome(name + " = 3"), "(i) 3");
    EXPECT_EQ(outcome("strlen('" + digits + "')"), "(i) 1000000");
    EXPECT_EQ(outcome(digits + ".5"), "(f) inf");
    EXPECT_EQ(outcome("0." + repeated("0", million) + "1"), "(f) 0");
}

TEST_F(long_input, an_exponent_outweighs_any_number_of_digits) {
    const std::string zeros = "0." + repeated("0", million);
    EXPECT_EQ(outcome(zeros + "1e1000041"), "(f) inf");
    EXPECT_EQ(outcome(zeros + "1e1000001"), "(f) 1") << "a literal within the range";
    EXPECT_EQ(outcome(zeros + "1e2000000"), "(f) inf");
    EXPECT_EQ(outcome(zeros + "1e999900"), "(f) 0");
    EXPECT_EQ(outcome("0." + repeated("0", million - 1) + "1e1000100"), "(f) inf");
    EXPECT_EQ(outcome("1" + repeated("0", million) + ".0e-1000100"), "(f) 0");
    EXPECT_EQ(outcome("1" + repeated("0", million) + ".0e-99999999999"), "(f) 0");
    EXPECT_EQ(outcome(zeros + "1e99999999999"), "(f) inf");
}

TEST_F(long_input, many_macros_cost_no_more_than_the_text) {
    for (int i = 0; i < 20 * thousand; ++i) {
        algebra.macro_define("M" + std::to_string(i), "1");
    }
    std::string text = "M7" + repeated("+x", 20 * thousand);
    std::string decoded;
    EXPECT_LT(seconds_of([&] { algebra.macro_decode(text, decoded); }), 5.0);
    EXPECT_EQ(decoded, text.replace(0, 2, "1"));
}

TEST_F(long_input, many_variables_in_the_order_of_their_names_cost_no_more_than_their_number) {
    constexpr int first = lots; // names of one length
    EXPECT_LT(seconds_of([&] {
                  for (int i = 0; i < 50 * thousand; ++i) {
                      algebra.assign("v" + std::to_string(first + i), i);
                  }
                  for (int i = 0; i < 50 * thousand; ++i) {
                      algebra.get("v" + std::to_string(first + i));
                  }
              }),
              10.0);
    EXPECT_EQ(outcome("v149999"), "(i) 49999");
}

TEST_F(long_input, many_names_are_told_apart) {
    std::string sum = "0";
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "v" + std::to_string(i);
        algebra.assign(name, i);
        sum += " + " + name;
    }
    EXPECT_EQ(outcome(sum), "(i) 1999000");
    EXPECT_EQ(outcome(sum + " - (v7 = 0) - v1999 + v7 " + sum.substr(1)), "(i) 3995994");
}

TEST_F(long_input, many_script_functions_are_found_and_called) {
    for (int i = 0; i < 10 * thousand; ++i) {
        algebra.macro_define("f" + std::to_string(i) + "(x)", "x+" + std::to_string(i));
    }
    EXPECT_LT(seconds_of([&] {
                  for (int i = 0; i < thousand; ++i) {
                      algebra.evaluate("f9999(1)");
                  }
              }),
              10.0);
    EXPECT_EQ(outcome("f9999(1)"), "(i) 10000");
}

TEST_F(long_input, the_head_of_a_function_costs_no_more_than_its_length) {
    const std::string head = "f(" + repeated("p , ", 2 * lots) + "p)";
    EXPECT_LT(seconds_of([&] { algebra.macro_define(head, "p"); }), 5.0);
    EXPECT_EQ(outcome("f(1)"), "! internal function f -- 1 arguments found, 200001 expected");
}

TEST_F(long_input, defining_after_each_call_costs_no_copy_of_the_tables) {
    EXPECT_LT(seconds_of([&] {
                  for (int i = 0; i < 10 * thousand; ++i) {
                      algebra.macro_define("f" + std::to_string(i) + "(x)", "x");
                      algebra.evaluate("f0(1)");
                  }
              }),
              20.0);
}

} // namespace

// The numeric-only mode.

#include <gtest/gtest.h>

#include <string>

#include "support/evaluation.h"

namespace {

class numeric_only : public test::evaluator_t {
protected:
    numeric_only() { algebra.numeric_only_set(true); }
};

std::string not_enough(const std::string& line) {
    return "syntax error in " + line + "  -- not enough operators";
}

} // namespace

TEST_F(numeric_only, computes_with_numbers_and_strings) {
    expect({{"1 + 2 * 3", "(i) 7"},
            {"-1.5e1", "(f) -15"},
            {"'a' + 1", "(s) a1"},
            {"0x1F", "(i) 31"}});
}

TEST_F(numeric_only, refuses_an_assignment) {
    expect_parse_errors({{"x = 1", "algebra_t::unknown() - parse error at '= '"},
                         {"1=2", "algebra_t::unknown() - parse error at '=2'"},
                         {"1=", "algebra_t::unknown() - parse error at '= '"},
                         {"1=%", "algebra_t::unknown() - parse error at '=%'"}});
}

TEST_F(numeric_only, compares) {
    expect({{"1==1", "(i) 1"}, {"1!=1", "(i) 0"}, {"1<=2", "(i) 1"}, {"2>=3", "(i) 0"}});
}

TEST_F(numeric_only, skips_names) {
    expect({{"abc+1", "(i) 1"}, {"abs(-1)", "(i) -1"}, {"_5", "(i) 5"}, {"1 x_y", "(i) 1"}});
}

TEST_F(numeric_only, reads_the_digits_inside_a_name) {
    expect({{"a12", "(i) 12"}});
    expect_parse_errors({{"1e5", not_enough("1e5")}, {"a1b2", not_enough("a1b2")}});
}

TEST_F(numeric_only, reads_a_sign_after_a_name_by_what_stood_before_it) {
    expect({{"abc-1", "(i) -1"}, {"5 abc-1", "(i) 4"}});
}

TEST_F(numeric_only, gives_nothing_for_names_alone) {
    expect_parse_errors({{"abc", not_enough("abc")}, {"abc()", not_enough("abc()")}});
}

TEST_F(numeric_only, skips_commas) {
    expect_parse_errors({{"1,2", not_enough("1,2")}});
    expect({{"1,", "(i) 1"}, {",1,", "(i) 1"}, {"1,-2", "(i) -1"}});
}

TEST_F(numeric_only, leaves_the_numbers_around_a_comma_side_by_side) {
    ko::alg::list_t tokens;
    EXPECT_FALSE(algebra.parse("1,2", tokens));
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens.front()->text, "1");
    EXPECT_EQ(tokens.back()->text, "2");
}

TEST_F(numeric_only, drops_a_string_that_is_a_comma) {
    // Every token spelled "," goes, strings included.
    expect_parse_errors({{"','", not_enough("','")},
                         {"',' + 1", "binary_t::construct() -- expected left operand"},
                         {"1 + ','", "binary_t::construct() -- expected right operand"}});
    expect({{"1 ','", "(i) 1"}, {"', '", "(s) , "}});
}

TEST_F(numeric_only, can_be_turned_off) {
    algebra.assign("x", 5);
    expect({{"x+1", "(i) 1"}});
    algebra.numeric_only_set(false);
    expect({{"x+1", "(i) 6"}, {"x=1", "(i) 1"}, {"max(1,2)", "(i) 2"}});
}

TEST_F(numeric_only, leaves_a_parsed_program_alone) {
    algebra.numeric_only_set(false);
    algebra.macro_define("sq(x)", "x*x");
    ASSERT_TRUE(algebra.parse("sq(y = 3)"));
    algebra.numeric_only_set(true);
    EXPECT_EQ(program_outcome(), "(i) 9");
}

TEST_F(numeric_only, replaces_macros) {
    algebra.macro_define("two", "2");
    expect({{"two + 1", "(i) 3"}});
}

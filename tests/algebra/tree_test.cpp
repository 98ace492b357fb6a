// What the nodes of a tree do when they are evaluated and assigned to.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

namespace {

using variable_term = test::evaluator_t;
using comma = test::evaluator_t;
using assignment = test::evaluator_t;
using sum = test::evaluator_t;
using expression = test::evaluator_t;

class evaluation_order : public test::evaluator_t {
protected:
    evaluation_order() {
        algebra.assign("log_", "");
        algebra.define("note", [](algebra_t& a, result_t value) {
            a.assign("log_", a.get("log_") + value);
            return value;
        });
    }

    std::string order_of(const std::string& text) {
        outcome(text);
        return algebra.get("log_").string_get(false, 0);
    }
};

class failed_parse : public test::evaluator_t {
protected:
    // What the evaluation of the tokens that a failed parse left comes to.
    std::string outcome_after(const std::string& text) {
        EXPECT_FALSE(algebra.parse(text)) << text;
        return program_outcome();
    }
};

std::string undefined(const std::string& name) {
    return "label_t::evaluate() -- access to undefined term, '" + name + "'";
}

} // namespace

TEST_F(expression, reaches_every_operator) {
    expect({{"7 / 2", "(i) 3"},
            {"-7 / 2", "(i) -3"},
            {"-7 % 2", "(i) -1"},
            {"7.0 / 2", "(f) 3.5"},
            {"1 / 0", "! divide by zero"},
            {"1 % 0", "! modulo by zero"},
            {"1.0 / 0", "! divide by zero"},
            {"'a' / 0", "! operator '/' -- illegal type"},
            {"5 % 0.5", "! modulo by zero"},
            {"5 % 'x'", "! modulo by zero"},
            {"(-2147483647 - 1) / -1", "(i) -2147483648"},
            {"(-2147483647 - 1) % -1", "(i) 0"},
            {"1 << 32", "(i) 0"},
            {"-8 >> 40", "(i) -1"},
            {"1 << 256", "(i) 1"},
            {"'ab' + 1", "(s) ab1"},
            {"2.5 + 'x'", "(s) 2.5x"},
            {"'a' * 2", "! operator '*' -- illegal type"},
            {"-'a'", "! operator unary '-' -- illegal type"},
            {"'abc' == 'abc'", "(i) 1"},
            {"1 == '1'", "(i) 1"},
            {"1.0 == '1'", "(i) 1"},
            {"10 < '9'", "(i) 1"},
            {"'x' && 1", "(i) 0"},
            {"'x' || 0", "(i) 0"},
            {"!'x'", "(i) 1"},
            {"!0.5", "(i) 1"}});
}

TEST_F(expression, writes_a_made_not_a_number_without_a_sign) {
    expect({{"sqrt(-1)", "(f) nan"},
            {"1.0e39 - 1.0e39", "(f) nan"},
            {"1.0e39 * 0", "(f) nan"},
            {"sqrt(-1) + 1", "(f) nan"},
            {"'' + log(-1)", "(s) nan"},
            {"sqrt(-1) == sqrt(-1)", "(i) 0"},
            {"sqrt(-1) | 0", "(i) 0"}});
}

TEST_F(expression, keeps_the_bits_of_the_first_not_a_number) {
    const auto assign = [this](const char* name, std::uint32_t bits) {
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        algebra.assign(name, result_t(value));
    };
    const auto bits_of = [this](const char* text) {
        const float value = algebra.evaluate(text).float_get();
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    };
    assign("x", 0x7FC00001U);
    assign("y", 0xFFC00002U);
    assign("signalling", 0x7F800003U);
    EXPECT_EQ(bits_of("x + y"), 0x7FC00001U);
    EXPECT_EQ(bits_of("y * x"), 0xFFC00002U);
    EXPECT_EQ(bits_of("1.5 - y"), 0xFFC00002U);
    EXPECT_EQ(bits_of("x + signalling"), 0x7FC00003U);
    EXPECT_EQ(bits_of("signalling / 2"), 0x7FC00003U);
}

TEST_F(expression, takes_a_text_that_the_host_made_a_number_for_a_number) {
    result_t value("text");
    value.type_set(result_t::type_int);
    algebra.assign("v", value);
    expect({{"-v", "(i) 0"},
            {"+v + 3", "(i) 3"},
            {"!v", "(i) 1"},
            {"v * 2", "(i) 0"},
            {"v + 3", "(i) 3"},
            {"v + 'a'", "(s) 0a"},
            {"'a' + v", "(s) a0"}});
}

TEST_F(variable_term, that_is_undefined_throws) {
    EXPECT_THROWS(algebra.evaluate("nope"), undefined("nope"));
    EXPECT_THROWS(algebra.evaluate("1 + nope * 2"), undefined("nope"));
    EXPECT_FALSE(algebra.find("nope"));
}

TEST_F(variable_term, that_is_undefined_is_told_in_510_characters) {
    const std::string name(600, 'n');
    EXPECT_THROWS(algebra.evaluate(name), undefined(name).substr(0, 510));
}

TEST_F(variable_term, gives_its_whole_value) {
    algebra.assign("i", 1);
    algebra.assign("f", 1.0f);
    algebra.assign("s", "1");
    expect({{"i", "(i) 1"}, {"f", "(f) 1"}, {"s", "(s) 1"}});
}

TEST_F(comma, is_an_error_outside_arguments) {
    ASSERT_TRUE(algebra.parse("1, 2"));
    EXPECT_EQ(program_outcome(), "! sequencer_t::evaluate() -- syntax error");
    EXPECT_EQ(outcome("(1, 2) + 3"), "! sequencer_t::evaluate() -- syntax error");
}

TEST_F(comma, evaluates_nothing_before_it_fails) {
    EXPECT_EQ(outcome("x = 1, y = 2"), "! sequencer_t::evaluate() -- syntax error");
    EXPECT_FALSE(algebra.find("x"));
}

TEST_F(comma, inside_an_argument_that_is_computed_is_an_error) {
    EXPECT_EQ(outcome("max((1, 2) + 0, 3)"), "! sequencer_t::evaluate() -- syntax error");
    EXPECT_EQ(outcome("max((1, 2))"), "(i) 2");
}

TEST_F(assignment, stores_in_a_variable_and_gives_the_value) {
    expect({{"x = 5", "(i) 5"},
            {"x", "(i) 5"},
            {"x = 'text'", "(s) text"},
            {"x", "(s) text"},
            {"(y = 2.5) * 2", "(f) 5"},
            {"y", "(f) 2.5"}});
}

TEST_F(assignment, of_a_conditional_stores_its_value) {
    expect({{"x = 1 ? 2 : 3", "(i) 2"}, {"x", "(i) 2"}});
}

TEST_F(assignment, to_a_string_stores_in_the_variable_of_that_name) {
    // Callers assign by name this way.
    expect({{"\"y\" = 3", "(i) 3"}, {"y", "(i) 3"}, {"'a b' = 4", "(i) 4"}});
    EXPECT_EQ(test::shown(algebra.get("a b")), "(i) 4");
}

TEST_F(assignment, to_an_empty_string_stores_in_the_variable_without_a_name) {
    expect({{"('' = 5) + 1", "(i) 6"}, {"exists('') + ('' = 7) * 0", "(i) 5"}});
    EXPECT_EQ(test::shown(algebra.get("")), "(i) 7");
}

TEST_F(assignment, to_anything_else_fails) {
    algebra.macro_define("sq(x)", "x*x");
    algebra.define("zero", [](algebra_t&) { return result_t(0); });
    for (const char* text :
         {"1 = 2", "1.5 = 2", "a + b = 1", "-a = 1", "!a = 1", "+a = 1", "(a = 1) = 2",
          "(1 ? a : b) = 2", "abs(1) = 2", "sq(1) = 2", "zero = 1", "zero() = 1", "(a, b) = 1",
          "a < b = 1", "a && b = 1", "('a' + 'b') = 1", "a << b = 1"}) {
        EXPECT_EQ(outcome(text), "! non lvalue") << text;
    }
    EXPECT_FALSE(algebra.find("a"));
}

TEST_F(assignment, evaluates_the_value_before_it_looks_at_the_target) {
    EXPECT_EQ(outcome("1 = (x = 5)"), "! non lvalue");
    EXPECT_EQ(outcome("x"), "(i) 5");
    EXPECT_EQ(outcome("1 = nope"), "! " + undefined("nope"));
}

TEST_F(assignment, in_a_row_fails_when_evaluated) {
    algebra.assign("c", 1);
    ASSERT_TRUE(algebra.parse("a = b = c"));
    EXPECT_EQ(program_outcome(), "! non lvalue");
}

TEST_F(assignment, through_a_node_follows_its_kind) {
    list_t tokens;
    ASSERT_TRUE(algebra.parse("name", tokens));
    tokens.front()->assign(algebra, result_t(1));
    ASSERT_TRUE(algebra.parse("'other name'", tokens));
    tokens.front()->assign(algebra, result_t(2));
    EXPECT_EQ(test::shown(algebra.get("name")), "(i) 1");
    EXPECT_EQ(test::shown(algebra.get("other name")), "(i) 2");
    ASSERT_TRUE(algebra.parse("1", tokens));
    EXPECT_THROWS(tokens.front()->assign(algebra, result_t(3)), "non lvalue");
}

TEST_F(assignment, to_a_parenthesis_left_by_a_failed_parse_does_nothing) {
    list_t tokens;
    ASSERT_FALSE(algebra.parse("(#", tokens));
    EXPECT_NO_THROW(tokens.front()->assign(algebra, result_t(1)));
    EXPECT_FALSE(algebra.find("("));
}

TEST_F(evaluation_order, is_left_before_right) {
    EXPECT_EQ(order_of("note(1) + note(2) * note(3)"), "123");
}

TEST_F(evaluation_order, of_every_operator_is_left_before_right) {
    for (const char* op : {"*", "/", "%", "-", "+", "<<", ">>", "<", "<=", ">",
                           ">=", "==", "!=", "&", "|", "&&", "||"}) {
        algebra.assign("log_", "");
        EXPECT_EQ(order_of(std::string("note(1) ") + op + " note(2)"), "12") << op;
    }
}

TEST_F(evaluation_order, of_arguments_is_as_written) {
    EXPECT_EQ(order_of("max(note(1), min(note(2), note(3)))"), "123");
}

TEST_F(evaluation_order, never_leaves_out_the_right_side) {
    // There is no short circuit; callers rely on the side effects.
    EXPECT_EQ(order_of("0 && note(1)"), "1");
    EXPECT_EQ(order_of("1 || note(2)"), "12");
    EXPECT_EQ(outcome("0 && nope"), "! " + undefined("nope"));
    EXPECT_EQ(outcome("1 || nope"), "! " + undefined("nope"));
}

TEST_F(evaluation_order, leaves_out_the_operand_that_was_not_chosen) {
    EXPECT_EQ(order_of("note(1) ? note(2) : note(3)"), "12");
}

TEST_F(evaluation_order, sees_what_the_left_side_assigned) {
    expect({{"(x = 1) * 10 + x", "(i) 11"}, {"x + (x = 5) + x", "(i) 11"}});
}

TEST_F(failed_parse, leaves_tokens_that_can_be_evaluated) {
    EXPECT_EQ(outcome_after("1 +"), "(i) 1");
    EXPECT_EQ(outcome_after("1 2"), "(i) 1");
    EXPECT_EQ(outcome_after("(1 + 2"), "(i) 1");
    EXPECT_EQ(outcome_after("'s' #"), "(s) s");
    EXPECT_EQ(outcome_after("1 + 2 3"), "(i) 3");
}

TEST_F(failed_parse, that_left_nothing_evaluates_to_0) {
    EXPECT_EQ(outcome_after("#"), "(i) 0");
    EXPECT_EQ(outcome_after("()"), "(i) 0");
}

TEST_F(failed_parse, that_left_a_parenthesis_evaluates_to_0) {
    EXPECT_EQ(outcome_after("(#"), "(i) 0");
    EXPECT_EQ(outcome_after(":#"), "(i) 0");
}

TEST_F(failed_parse, that_left_an_operator_throws_the_parse_error) {
    for (const char* text : {"* 2", "-", "!", "+ #", "- * 3", "= 1", "? 1 : 2", "== 1", "<< #",
                             "abs", "max #", "abs * 2", "-#", "= #", "? #", "* #"}) {
        EXPECT_FALSE(algebra.parse(text));
        EXPECT_THROWS(algebra.evaluate(), algebra.parse_error_get()) << text;
    }
}

TEST_F(failed_parse, that_left_a_script_function_throws_the_parse_error) {
    algebra.macro_define("sq(x)", "x*x");
    EXPECT_FALSE(algebra.parse("sq"));
    EXPECT_THROWS(algebra.evaluate(), "internal function %s -- not enough arguments");
}

TEST_F(failed_parse, that_left_a_comma_throws) {
    EXPECT_FALSE(algebra.parse(", 1"));
    EXPECT_THROW(algebra.evaluate(), ko::exception_t);
}

TEST_F(failed_parse, that_left_a_caller_s_list_throws_the_parse_error) {
    list_t tokens;
    EXPECT_FALSE(algebra.parse("* 2", tokens));
    EXPECT_THROWS(algebra.evaluate(tokens), "binary_t::construct() -- expected left operand");
    const list_t copy(tokens);
    EXPECT_THROWS(algebra.evaluate(copy), "binary_t::construct() -- expected left operand");
}

TEST_F(failed_parse, leaves_nodes_that_cannot_be_assigned_to) {
    list_t tokens;
    for (const char* text : {"* 2", "-", "= 1", "? 1", "abs", "+ #"}) {
        EXPECT_FALSE(algebra.parse(text, tokens));
        EXPECT_THROWS(tokens.front()->assign(algebra, result_t(1)), "non lvalue") << text;
    }
}

TEST_F(failed_parse, leaves_the_evaluator_usable) {
    EXPECT_EQ(outcome_after("1 +"), "(i) 1");
    expect({{"1 + 1", "(i) 2"}});
}

TEST_F(sum, of_texts_keeps_nothing_of_a_number_that_the_host_made_a_text) {
    algebra["x"] = 5;
    algebra["x"].type_set(result_t::type_string);
    result_t joined = algebra.evaluate("x + 'a'");
    EXPECT_EQ(test::shown(joined), "(s) a");
    joined.type_set(result_t::type_int);
    EXPECT_EQ(test::shown(joined), "(i) 0");
}

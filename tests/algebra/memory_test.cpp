// Variables and the stack of their saved copies.

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::result_t;
using test::shown;

namespace {

class memory : public test::evaluator_t {
protected:
    std::string value(const std::string& name) const { return shown(algebra.get(name)); }
};

using memory_stack = memory;
using eval_and_assign = memory;
using reference = memory;

std::string undefined(const std::string& name) {
    return "label_t::evaluate() -- access to undefined term, '" + name + "'";
}

} // namespace

TEST_F(memory, stores_a_value_of_each_type) {
    algebra.assign("int", -5);
    algebra.assign("long", 6L);
    algebra.assign("float", 1.5f);
    algebra.assign("double", 0.1);
    algebra.assign("string", std::string("1 + 2"));
    algebra.assign("literal", "3 + 4");
    algebra.assign("value", result_t(7));
    EXPECT_EQ(value("int"), "(i) -5");
    EXPECT_EQ(value("long"), "(i) 6");
    EXPECT_EQ(value("float"), "(f) 1.5");
    EXPECT_EQ(algebra.get("double").float_get(), 0.1f);
    EXPECT_EQ(value("string"), "(s) 1 + 2");
    EXPECT_EQ(value("literal"), "(s) 3 + 4");
    EXPECT_EQ(value("value"), "(i) 7");
}

TEST_F(memory, replaces_the_whole_value) {
    algebra.assign("x", 2);
    algebra.assign("x", "2");
    EXPECT_TRUE(algebra.get("x").is_string());
    algebra.assign("x", 1.5f);
    EXPECT_EQ(value("x"), "(f) 1.5");
    EXPECT_EQ(algebra.get("x").int_get(), 1);
}

TEST_F(memory, keeps_the_double_s_own_integer_view) {
    algebra.assign("x", 2.9999999999);
    result_t x = algebra.get("x");
    x.type_set(0);
    EXPECT_EQ(x.int_get(), 2);
}

TEST_F(memory, gives_a_copy) {
    algebra.assign("x", 1);
    result_t copy = algebra.get("x");
    copy = result_t(2);
    EXPECT_EQ(value("x"), "(i) 1");
}

TEST_F(memory, throws_for_a_missing_name_with_a_line_feed) {
    // The misspelling and the line feed are part of the message.
    EXPECT_THROWS(algebra.get("missing"), "get--cound not find variable 'missing'\n");
    EXPECT_FALSE(algebra.find("missing"));
}

TEST_F(memory, tells_a_missing_name_in_510_characters) {
    const std::string name(600, 'n');
    const std::string whole = "get--cound not find variable '" + name + "'\n";
    EXPECT_THROWS(algebra.get(name), whole.substr(0, 510));
}

TEST_F(memory, tells_a_missing_name_as_it_is) {
    EXPECT_THROWS(algebra.get("%s%n%d"), "get--cound not find variable '%s%n%d'\n");
}

TEST_F(memory, is_not_created_by_looking) {
    EXPECT_FALSE(algebra.find("x"));
    EXPECT_FALSE(algebra.find("x"));
    algebra.assign("x", 1);
    EXPECT_TRUE(algebra.find("x"));
}

TEST_F(memory, takes_any_text_as_a_name) {
    for (const std::string& name : {std::string(), std::string("a b"), std::string("1"),
                                    std::string("\xFF"), std::string("a\0b", 3)}) {
        algebra.assign(name, 5);
        EXPECT_TRUE(algebra.find(name));
        EXPECT_EQ(value(name), "(i) 5");
    }
    EXPECT_FALSE(algebra.find("a"));
}

TEST_F(memory, tells_upper_from_lower_case) {
    algebra.assign("x", 1);
    EXPECT_FALSE(algebra.find("X"));
}

TEST_F(memory, is_read_by_name_in_an_expression) {
    algebra.assign("x", 3);
    expect({{"x * x", "(i) 9"}});
}

TEST_F(memory, persists_from_one_evaluation_to_the_next) {
    expect({{"x = 1", "(i) 1"},
            {"x = x + 1", "(i) 2"},
            {"#", "! algebra_t::unknown() - unidentified character '#'"},
            {"x", "(i) 2"}});
    algebra.evaluate_safe("x = x + 1");
    EXPECT_EQ(value("x"), "(i) 3");
}

TEST_F(memory, holds_variables_named_like_functions_apart) {
    algebra.assign("abs", 5);
    EXPECT_EQ(value("abs"), "(i) 5");
    expect({{"abs(-1)", "(i) 1"}});
}

TEST_F(memory, name_is_classified_when_it_is_parsed) {
    algebra.assign("later", 3);
    ASSERT_TRUE(algebra.parse("later"));
    algebra.define("later", [](algebra_t&) { return result_t(7); });
    EXPECT_EQ(program_outcome(), "(i) 3");
    EXPECT_EQ(outcome("later"), "(i) 7");
}

TEST_F(memory, is_copied_from_another_evaluator) {
    algebra.assign("own", 1);
    algebra.macro_define("two", "2");
    algebra.memory_push();
    algebra_t other;
    other.assign("x", 5);
    algebra.memory_copy(other);
    EXPECT_FALSE(algebra.find("own"));
    EXPECT_EQ(value("x"), "(i) 5");
    other.assign("x", 6);
    EXPECT_EQ(value("x"), "(i) 5");
    EXPECT_EQ(outcome("two"), "(i) 2");
    algebra.memory_pop();
    EXPECT_EQ(value("own"), "(i) 1");
}

TEST_F(memory, is_unchanged_when_copied_from_itself) {
    algebra.assign("x", 5);
    algebra.memory_copy(algebra);
    EXPECT_EQ(value("x"), "(i) 5");
}

TEST_F(memory_stack, restores_everything) {
    algebra.assign("x", 1);
    algebra.memory_push();
    EXPECT_EQ(value("x"), "(i) 1");
    algebra.assign("x", "changed");
    algebra.assign("t", 2);
    algebra.memory_pop();
    EXPECT_EQ(value("x"), "(i) 1");
    EXPECT_FALSE(algebra.find("t"));
}

TEST_F(memory_stack, restores_in_reverse_order) {
    algebra.assign("x", 1);
    algebra.memory_push();
    algebra.assign("x", 2);
    algebra.memory_push();
    algebra.assign("x", 3);
    algebra.memory_pop();
    EXPECT_EQ(value("x"), "(i) 2");
    algebra.memory_pop();
    EXPECT_EQ(value("x"), "(i) 1");
}

TEST_F(memory_stack, ignores_a_pop_too_many) {
    algebra.assign("x", 1);
    EXPECT_NO_THROW(algebra.memory_pop());
    EXPECT_EQ(value("x"), "(i) 1");
}

TEST_F(memory_stack, keeps_new_values_of_old_variables_by_a_diff) {
    algebra.assign("x", 1);
    algebra.assign("same", "s");
    algebra.memory_push();
    algebra.assign("x", "changed");
    algebra.assign("t", 2);
    algebra.memory_pop_diff();
    EXPECT_EQ(value("x"), "(s) changed");
    EXPECT_EQ(value("same"), "(s) s");
    EXPECT_FALSE(algebra.find("t"));
}

TEST_F(memory_stack, restores_by_a_diff_what_is_there_no_more) {
    algebra.assign("gone", 1);
    algebra.memory_push();
    algebra.memory_copy(algebra_t());
    algebra.memory_pop_diff();
    EXPECT_EQ(value("gone"), "(i) 1");
}

TEST_F(memory_stack, removes_what_a_diff_used) {
    algebra.memory_push();
    algebra.memory_pop_diff();
    EXPECT_THROW(algebra.memory_pop_diff(), ko::exception_t);
}

TEST_F(memory_stack, throws_for_a_diff_too_many) {
    algebra.assign("x", 1);
    EXPECT_THROWS(algebra.memory_pop_diff(), "algebra_t::memory_pop_diff() -- stack is empty");
    EXPECT_EQ(value("x"), "(i) 1");
}

TEST_F(memory_stack, is_destroyed_with_what_is_left_on_it) {
    for (int i = 0; i < 1000; ++i) {
        algebra.assign("x" + std::to_string(i), i);
        algebra.memory_push();
    }
    EXPECT_EQ(value("x999"), "(i) 999");
}

TEST_F(eval_and_assign, stores_the_value_of_an_expression) {
    algebra.eval_and_assign("x", "1 + 2");
    EXPECT_EQ(value("x"), "(i) 3");
}

TEST_F(eval_and_assign, takes_the_parse_error_for_a_name) {
    ASSERT_FALSE(algebra.parse("1 +"));
    const std::string name = algebra.parse_error_get();
    algebra.eval_and_assign(algebra.parse_error_get(), "3 4");
    EXPECT_NE(algebra.parse_error_get(), name);
    EXPECT_EQ(test::shown(algebra.get(name)), "(i) 3");
}

TEST_F(eval_and_assign, uses_the_first_statement) {
    algebra.eval_and_assign("x", "1+2; x=9");
    EXPECT_EQ(value("x"), "(i) 3");
}

TEST_F(eval_and_assign, replaces_macros) {
    algebra.macro_define("two", "2");
    algebra.eval_and_assign("x", "two * two");
    EXPECT_EQ(value("x"), "(i) 4");
}

TEST_F(eval_and_assign, takes_a_returned_value) {
    algebra.eval_and_assign("x", "1 + return('r')");
    EXPECT_EQ(value("x"), "(s) r");
}

TEST_F(eval_and_assign, of_a_blank_expression_stores_0) {
    for (const char* text : {"", "  ", ";1", "// note\n"}) {
        algebra.assign("x", "old");
        algebra.eval_and_assign("x", text);
        EXPECT_EQ(value("x"), "(i) 0") << text;
    }
}

TEST_F(eval_and_assign, ignores_that_the_parse_failed) {
    algebra.eval_and_assign("x", "1 +");
    EXPECT_EQ(value("x"), "(i) 1");
    algebra.eval_and_assign("x", "2 3");
    EXPECT_EQ(value("x"), "(i) 2");
    algebra.eval_and_assign("x", "#");
    EXPECT_EQ(value("x"), "(i) 0");
}

TEST_F(eval_and_assign, throws_the_parse_error_where_an_operand_is_missing) {
    algebra.assign("x", "old");
    EXPECT_THROWS(algebra.eval_and_assign("x", "* 2"),
                  "binary_t::construct() -- expected left operand");
    EXPECT_EQ(value("x"), "(s) old");
}

TEST_F(eval_and_assign, leaves_the_variable_when_it_throws) {
    algebra.assign("x", "old");
    EXPECT_THROWS(algebra.eval_and_assign("x", "nope"), undefined("nope"));
    EXPECT_THROWS(algebra.eval_and_assign("x", "'abc"), "unexpected EOF encountered");
    EXPECT_EQ(value("x"), "(s) old");
    EXPECT_THROWS(algebra.eval_and_assign("new", "1/0"), "divide by zero");
    EXPECT_FALSE(algebra.find("new"));
}

TEST_F(eval_and_assign, leaves_the_program_alone) {
    ASSERT_TRUE(algebra.parse("1 + 1"));
    algebra.eval_and_assign("x", "5");
    EXPECT_EQ(program_outcome(), "(i) 2");
}

TEST_F(reference, to_a_missing_variable_creates_0) {
    EXPECT_EQ(shown(algebra["n"]), "(i) 0");
    EXPECT_TRUE(algebra.find("n"));
    result_t n = algebra.get("n");
    n.type_set(2);
    EXPECT_EQ(n.string_get(false, 0), "");
    expect({{"n", "(i) 0"}});
}

TEST_F(reference, reads_and_writes_the_variable) {
    algebra.assign("x", 1);
    result_t& x = algebra["x"];
    x = result_t("new");
    EXPECT_EQ(value("x"), "(s) new");
    algebra.assign("x", 2);
    EXPECT_EQ(shown(x), "(i) 2");
    algebra.evaluate("x = 3");
    EXPECT_EQ(shown(x), "(i) 3");
}

TEST_F(reference, stays_valid_while_variables_are_added) {
    result_t& x = algebra["x"];
    for (int i = 0; i < 10000; ++i) {
        algebra.assign("v" + std::to_string(i), i);
    }
    x = result_t(5);
    EXPECT_EQ(value("x"), "(i) 5");
}

TEST_F(reference, stays_the_current_variable_s_after_a_push) {
    result_t& x = algebra["x"];
    x = result_t(1);
    algebra.memory_push();
    x = result_t(2);
    EXPECT_EQ(value("x"), "(i) 2");
    algebra.memory_push();
    x = result_t(3);
    EXPECT_EQ(value("x"), "(i) 3");
    algebra.memory_pop();
    EXPECT_EQ(value("x"), "(i) 2");
    algebra.memory_pop();
    EXPECT_EQ(value("x"), "(i) 1");
}

TEST_F(reference, is_not_shared_with_a_copy_made_later) {
    result_t& x = algebra["x"];
    x = result_t(1);
    algebra_t copy(algebra);
    x = result_t(2);
    EXPECT_EQ(value("x"), "(i) 2");
    EXPECT_EQ(shown(copy.get("x")), "(i) 1");
    copy.assign("x", 3);
    EXPECT_EQ(shown(x), "(i) 2");
}

TEST_F(reference, is_not_shared_with_an_evaluator_assigned_or_filled_later) {
    result_t& x = algebra["x"];
    x = result_t(1);
    algebra_t assigned;
    assigned = algebra;
    algebra_t filled;
    filled.memory_copy(algebra);
    x = result_t(2);
    EXPECT_EQ(shown(assigned.get("x")), "(i) 1");
    EXPECT_EQ(shown(filled.get("x")), "(i) 1");
    EXPECT_EQ(value("x"), "(i) 2");
}

TEST_F(reference, survives_calls_of_script_functions) {
    algebra.macro_define("set(v)", "x = v");
    result_t& x = algebra["x"];
    x = result_t(1);
    expect({{"set(5)", "(i) 5"}, {"evaluate('x = 6')", "(i) 6"}, {"x", "(i) 1"}});
    x = result_t(2);
    expect({{"x", "(i) 2"}, {"set(x + 1)", "(i) 3"}, {"x", "(i) 2"}});
}

TEST_F(reference, of_a_copy_is_the_copy_s_own) {
    algebra.assign("x", 1);
    algebra_t copy(algebra);
    result_t& x = copy["x"];
    x = result_t(2);
    EXPECT_EQ(value("x"), "(i) 1");
    algebra.assign("x", 3);
    EXPECT_EQ(shown(x), "(i) 2");
}

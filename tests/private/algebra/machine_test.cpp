#include "algebra/machine.h"

#include <gtest/gtest.h>

#include <memory>

#include "algebra/algebra.h"
#include "algebra/function_tokens.h"
#include "algebra/operand_tokens.h"
#include "algebra/structure_tokens.h"
#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using namespace ko::alg;

/// Counts the tokens of its kind that are alive.
class counted_t : public operand_t {
public:
    explicit counted_t(int& counter) : operand_t("counted"), alive(counter) { ++alive; }
    ~counted_t() override { --alive; }

    result_t evaluate(algebra_t&) const override { return 1; }
    void assign(algebra_t&, const result_t&) const override {}
    token_t* replicate() const override { return new counted_t(alive); }

private:
    int& alive;
};

class machine : public testing::Test {
protected:
    /// Binds the token at place `i` of the list.
    void bind(int i) {
        auto position = std::next(tokens.begin(), i);
        std::string error;
        ASSERT_TRUE((*position)->construct(tokens, position, error)) << error;
    }

    /// A comma between two counted tokens, on its own in the list.
    void bind_counted_pair() {
        tokens.push_back(new counted_t(alive));
        tokens.push_back(new sequencer_t);
        tokens.push_back(new counted_t(alive));
        bind(1);
    }

    int alive = 0;
    algebra_t algebra;
    list_t tokens;
};

TEST_F(machine, a_branch_deletes_its_operands) {
    bind_counted_pair();
    EXPECT_EQ(alive, 2);
    tokens.destroy();
    EXPECT_EQ(alive, 0);
}

TEST_F(machine, a_copy_has_operands_of_its_own) {
    bind_counted_pair();
    const std::unique_ptr<token_t> copy(tokens.front()->replicate());
    EXPECT_EQ(alive, 4);
    tokens.destroy();
    std::vector<result_t> values;
    copy->evaluate(algebra, values);
    EXPECT_EQ(values.size(), 2U);
}

TEST_F(machine, a_copy_has_the_text_and_flags_and_a_depth_of_zero) {
    bind_counted_pair();
    token_t& original = *tokens.front();
    original.text = "changed";
    original.unbound = 1;
    original.strength = 7;
    const std::unique_ptr<token_t> copy(original.replicate());
    EXPECT_EQ(copy->text, "changed");
    EXPECT_EQ(copy->unbound, 1U);
    EXPECT_EQ(copy->strength, 7);
    EXPECT_EQ(copy->depth, 0);
}

TEST_F(machine, list_mode_appends_to_what_is_there) {
    bind_counted_pair();
    std::vector<result_t> values{result_t("first")};
    tokens.front()->evaluate(algebra, values);
    ASSERT_EQ(values.size(), 3U);
    EXPECT_EQ(test::shown(values[0]), "(s) first");
    EXPECT_EQ(test::shown(values[2]), "(i) 1");
}

TEST_F(machine, a_token_bound_twice_keeps_the_later_operands) {
    bind_counted_pair();
    tokens.push_front(new counted_t(alive));
    tokens.push_back(new counted_t(alive));
    bind(1);
    EXPECT_EQ(alive, 2);
    EXPECT_EQ(tokens.size(), 1U);
}

TEST_F(machine, a_branch_without_operands_reports_the_parse_error) {
    EXPECT_FALSE(algebra.parse("1 +"));
    const assign_t branch;
    EXPECT_TRUE(test::throws([&] { branch.evaluate(algebra); }, algebra.parse_error_get()));
    EXPECT_EQ(algebra.parse_error_get(), "binary_t::construct() -- expected right operand");
}

TEST_F(machine, a_branch_without_operands_says_so_where_there_is_no_parse_error) {
    const conditional_assignment_t branch;
    EXPECT_TRUE(
        test::throws([&] { branch.evaluate(algebra); }, "syntax error -- missing operand"));
    function_prototype_t function;
    function.argument_count = 1;
    const external_function_t call(function);
    EXPECT_TRUE(test::throws([&] { call.evaluate(algebra); }, "syntax error -- missing operand"));
}

TEST_F(machine, a_call_at_the_end_of_the_list_is_a_bad_iterator) {
    std::string error;
    auto end = tokens.end();
    external_function_t external{function_prototype_t()};
    EXPECT_FALSE(external.construct(tokens, end, error));
    EXPECT_EQ(error, "external_function_t::construct() -- bad iterator");
    internal_function_t internal("f", std::make_shared<script_table_t>());
    EXPECT_FALSE(internal.construct(tokens, end, error));
    EXPECT_EQ(error, "internal_function_t::construct() -- bad iterator");
}

TEST_F(machine, an_operator_at_the_end_of_the_list_finds_no_right_operand) {
    tokens.push_back(new counted_t(alive));
    std::string error;
    auto end = tokens.end();
    assign_t assignment;
    EXPECT_FALSE(assignment.construct(tokens, end, error));
    EXPECT_EQ(error, "assign_t::construct() -- expected right operand");
}

TEST_F(machine, a_call_without_a_function_pointer_throws) {
    function_prototype_t function;
    function.name = "empty";
    const external_function_t call(function);
    EXPECT_TRUE(
        test::throws([&] { call.evaluate(algebra); },
                     "external_function_t::evaluate() -- no prototype for function 'empty'"));
}

TEST_F(machine, a_call_of_a_function_that_is_gone_throws) {
    const internal_function_t call("f", std::make_shared<script_table_t>());
    EXPECT_TRUE(test::throws([&] { call.evaluate(algebra); },
                             "internal function f -- no longer defined"));
}

} // namespace

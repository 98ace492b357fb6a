#include "algebra/node.h"

#include <gtest/gtest.h>

#include <memory>

#include "algebra/algebra.h"
#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using namespace ko::alg;

/// Counts the tokens of its kind that are alive.
class counted_t : public token_t {
public:
    explicit counted_t(int& counter) : token_t("counted", -15, 0), alive(counter) { ++alive; }
    ~counted_t() override { --alive; }

    bool construct(list_t&, std::list<token_t*>::iterator&, std::string&) override {
        return true;
    }
    using token_t::evaluate;
    result_t evaluate(algebra_t&) const override { return 1; }
    void assign(algebra_t& algebra, const result_t& value) const override {
        algebra.assign("counted", value);
    }
    token_t* replicate() const override { return new counted_t(alive); }

private:
    int& alive;
};

class node : public testing::Test {
protected:
    /// Appends the tokens of a text that does not lex to its end, none of them bound.
    void append(const std::string& text) {
        list_t lexed;
        EXPECT_FALSE(algebra.parse(text + " #", lexed));
        tokens.splice(tokens.end(), lexed);
    }
    void append_counted() { tokens.push_back(new counted_t(alive)); }

    /// Binds the token at place `i` of the list.
    void bind(int i) {
        auto position = std::next(tokens.begin(), i);
        std::string error;
        ASSERT_TRUE((*position)->construct(tokens, position, error)) << error;
    }

    /// A comma between two counted tokens, on its own in the list.
    void bind_counted_pair() {
        append_counted();
        append(",");
        append_counted();
        bind(1);
    }

    std::string values_of(const token_t& token) {
        std::vector<result_t> values;
        token.evaluate(algebra, values);
        std::string all;
        for (const result_t& value : values) {
            all += test::shown(value) + ' ';
        }
        return all;
    }

    int alive = 0;
    algebra_t algebra;
    list_t tokens;
};

TEST_F(node, deletes_the_operands_that_a_host_has_bound) {
    bind_counted_pair();
    EXPECT_EQ(alive, 2);
    tokens.destroy();
    EXPECT_EQ(alive, 0);
}

TEST_F(node, has_operands_of_its_own_in_a_copy) {
    bind_counted_pair();
    const std::unique_ptr<token_t> copy(tokens.front()->replicate());
    EXPECT_EQ(alive, 4);
    tokens.destroy();
    EXPECT_EQ(values_of(*copy), "(i) 1 (i) 1 ");
}

TEST_F(node, has_text_and_flags_and_a_depth_of_zero_in_a_copy) {
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

TEST_F(node, appends_its_values_to_what_is_there) {
    bind_counted_pair();
    std::vector<result_t> values{result_t("first")};
    tokens.front()->evaluate(algebra, values);
    ASSERT_EQ(values.size(), 3U);
    EXPECT_EQ(test::shown(values[0]), "(s) first");
    EXPECT_EQ(test::shown(values[2]), "(i) 1");
}

TEST_F(node, bound_twice_keeps_the_later_operands) {
    bind_counted_pair();
    tokens.push_front(new counted_t(alive));
    append_counted();
    bind(1);
    EXPECT_EQ(alive, 2);
    EXPECT_EQ(tokens.size(), 1U);
}

TEST_F(node, without_operands_reports_the_parse_error) {
    append("=");
    EXPECT_FALSE(algebra.parse("1 +"));
    EXPECT_THROWS(tokens.front()->evaluate(algebra), algebra.parse_error_get());
    EXPECT_EQ(algebra.parse_error_get(), "binary_t::construct() -- expected right operand");
}

TEST_F(node, without_operands_says_so_where_there_is_no_parse_error) {
    append("? abs");
    algebra_t other;
    for (const token_t* const token : tokens) {
        EXPECT_THROWS(token->evaluate(other), "syntax error -- missing operand");
    }
}

TEST_F(node, that_is_a_call_at_the_end_of_the_list_is_a_bad_iterator) {
    algebra.macro_define("f(x)", "x");
    append("abs f");
    std::string error;
    auto end = tokens.end();
    EXPECT_FALSE(tokens.front()->construct(tokens, end, error));
    EXPECT_EQ(error, "external_function_t::construct() -- bad iterator");
    EXPECT_FALSE(tokens.back()->construct(tokens, end, error));
    EXPECT_EQ(error, "internal_function_t::construct() -- bad iterator");
}

TEST_F(node, that_is_an_operator_at_the_end_of_the_list_finds_no_right_operand) {
    append_counted();
    append("=");
    const std::unique_ptr<token_t> assignment(tokens.back());
    tokens.pop_back();
    std::string error;
    auto end = tokens.end();
    EXPECT_FALSE(assignment->construct(tokens, end, error));
    EXPECT_EQ(error, "assign_t::construct() -- expected right operand");
}

TEST_F(node, that_calls_a_function_that_is_gone_throws) {
    {
        algebra_t parser;
        parser.macro_define("f()", "1");
        ASSERT_TRUE(parser.parse("f()", tokens));
        parser = algebra_t();
    }
    EXPECT_THROWS(tokens.front()->evaluate(algebra), "internal function f -- no longer defined");
    auto position = tokens.begin();
    std::string error;
    EXPECT_THROWS(tokens.front()->construct(tokens, position, error),
                  "internal function f -- no longer defined");
}

TEST_F(node, binds_trees_of_the_parser_with_tokens_of_the_host) {
    algebra.assign("x", 3);
    ASSERT_FALSE(algebra.parse("x + 1, max(x, 2) 2", tokens)); // a comma and a 2
    delete tokens.back();
    tokens.pop_back();
    append(",");
    append_counted();
    bind(1);
    EXPECT_EQ(values_of(*tokens.front()), "(i) 4 (i) 3 (i) 1 ");
    const list_t copy(tokens);
    tokens.destroy();
    EXPECT_EQ(values_of(*copy.front()), "(i) 4 (i) 3 (i) 1 ");
}

TEST_F(node, takes_assignments_to_tokens_of_the_host) {
    append_counted();
    append("= 5");
    bind(1);
    EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 5");
    EXPECT_EQ(test::shown(algebra.get("counted")), "(i) 5");
}

TEST_F(node, counts_the_values_that_a_token_of_the_host_gives_to_a_call) {
    append("max");
    append_counted();
    append(",");
    append_counted();
    bind(2);
    bind(0);
    EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 1");
    append(", 5");
    bind(1);
    EXPECT_THROWS(tokens.front()->evaluate(algebra), "sequencer_t::evaluate() -- syntax error");
}

TEST_F(node, leaves_a_mark_alone_that_a_host_makes_it_assign_to) {
    for (const char* const text : {"( = 5", ") = 5", ": = 5"}) {
        tokens.destroy();
        append(text);
        bind(0);
        bind(1);
        EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 5") << text;
    }
}

class node_of_optional_arguments : public node {
protected:
    node_of_optional_arguments() {
        algebra.define(
            "count",
            [](algebra_t&, const std::vector<result_t>& values) {
                return result_t(static_cast<int>(values.size()));
            },
            0, 2);
    }

    /// The value of the call that a list begins with, and the number of tokens behind it.
    std::string call() {
        bind(0);
        return test::shown(tokens.front()->evaluate(algebra)) + ", " +
               std::to_string(tokens.size() - 1);
    }
};

TEST_F(node_of_optional_arguments, takes_none_at_the_end_of_the_list) {
    append("count");
    EXPECT_EQ(call(), "(i) 0, 0");
}

TEST_F(node_of_optional_arguments, takes_no_token_that_is_not_bound) {
    append("count abs");
    EXPECT_EQ(call(), "(i) 0, 1");
}

TEST_F(node_of_optional_arguments, takes_no_token_of_its_own_depth) {
    append("count 5");
    bind(1);
    EXPECT_EQ(call(), "(i) 0, 1");
}

TEST_F(node_of_optional_arguments, takes_what_was_bound_deeper_than_itself) {
    append("count 5");
    bind(1);
    tokens.back()->depth = 1;
    EXPECT_EQ(call(), "(i) 1, 0");
}

TEST_F(node, follows_a_name_that_the_host_changes) {
    ASSERT_FALSE(algebra.parse("x * 2 #", tokens));
    algebra.assign("x", 3);
    algebra.assign("y", 4);
    token_t& name = *tokens.front();
    bind(1);
    EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 6");
    name.text = "y";
    EXPECT_EQ(test::shown(tokens.front()->evaluate(algebra)), "(i) 8");
}

TEST_F(node, cannot_be_parsed_into_while_it_runs) {
    static list_t* running = nullptr;
    running = &tokens;
    algebra.define("again", [](algebra_t& a) { return result_t(a.parse("2", *running)); });
    ASSERT_TRUE(algebra.parse("1 + again()", tokens));
    EXPECT_THROWS(algebra.evaluate(tokens), "algebra_t::parse() -- the list is being evaluated");
    EXPECT_TRUE(algebra.parse("2", tokens));
    EXPECT_EQ(test::shown(algebra.evaluate(tokens)), "(i) 2");
}

} // namespace

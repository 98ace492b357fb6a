// Nodes of a tree and the list that owns them.

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using ko::alg::token_t;

namespace {

// A host's own node that counts how many of its kind live.
class counted_token_t : public token_t {
public:
    counted_token_t(const std::string& name, int& counter)
        : token_t(name, -15, 0), count(counter) {
        ++count;
    }
    ~counted_token_t() override { --count; }

    bool construct(list_t&, std::list<token_t*>::iterator&, std::string&) override {
        return true;
    }
    using token_t::evaluate;
    result_t evaluate(algebra_t&) const override { return result_t(text); }
    void assign(algebra_t& algebra, const result_t& value) const override {
        algebra.assign(text, value);
    }
    token_t* replicate() const override { return new counted_token_t(text, count); }

private:
    int& count;
};

class token : public test::evaluator_t {
protected:
    int counter = 0;
};

class token_list : public test::evaluator_t {
protected:
    void append(list_t& list, const std::string& text) {
        list.push_back(new counted_token_t(text, counter));
    }

    static std::vector<std::string> texts(const list_t& list) {
        std::vector<std::string> result;
        for (const token_t* t : list) {
            result.push_back(t->text);
        }
        return result;
    }

    int counter = 0;
};

using texts_t = std::vector<std::string>;

} // namespace

TEST_F(token, keeps_what_it_is_made_of) {
    const counted_token_t made("name", counter);
    EXPECT_EQ(made.text, "name");
    EXPECT_EQ(made.strength, -15);
    EXPECT_EQ(made.unbound, 0u);
    EXPECT_EQ(made.depth, 0);
    EXPECT_FALSE(made.is_string());
}

TEST_F(token, compares_its_text_with_a_string) {
    const counted_token_t made("name", counter);
    EXPECT_TRUE(made == std::string("name"));
    EXPECT_TRUE(std::string("name") == made);
    EXPECT_FALSE(made != std::string("name"));
    EXPECT_FALSE(std::string("name") != made);
    EXPECT_FALSE(made == std::string("nam"));
    EXPECT_FALSE(std::string("names") == made);
    EXPECT_TRUE(made != std::string(""));
    EXPECT_TRUE(std::string("Name") != made);
}

TEST_F(token, is_ordered_by_unboundness_then_depth_then_strength) {
    struct rank_t {
        unsigned unbound;
        int depth;
        int strength;
    };
    // In ascending order.
    const rank_t ranks[] = {{0, -1, 3},  {0, 0, -15}, {0, 0, 2},  {0, 5, 0},
                            {1, -1, 3},  {1, 0, -13}, {1, 0, -1}, {1, 0, 3},
                            {1, 1, -13}, {1, 2, -13}, {1, 2, 2}};
    for (const rank_t& a : ranks) {
        for (const rank_t& b : ranks) {
            counted_token_t left("z", counter);
            counted_token_t right("a", counter);
            left.unbound = a.unbound, left.depth = a.depth, left.strength = a.strength;
            right.unbound = b.unbound, right.depth = b.depth, right.strength = b.strength;
            EXPECT_EQ(left < right, &a < &b) << &a - ranks << ' ' << &b - ranks;
            EXPECT_EQ(left > right, &a > &b) << &a - ranks << ' ' << &b - ranks;
        }
    }
}

TEST_F(token, collects_its_own_value_as_an_argument) {
    const counted_token_t made("name", counter);
    std::vector<result_t> values{result_t(1)};
    made.evaluate(algebra, values);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(test::shown(values[1]), "(s) name");
}

TEST_F(token, of_commas_collects_the_values_in_written_order) {
    list_t tokens;
    ASSERT_TRUE(algebra.parse("1, (2, 'c'), (4.5, x = 5, 6)", tokens));
    std::vector<result_t> values;
    tokens.front()->evaluate(algebra, values);
    std::string all;
    for (const result_t& value : values) {
        all += test::shown(value) + ' ';
    }
    EXPECT_EQ(all, "(i) 1 (i) 2 (s) c (f) 4.5 (i) 5 (i) 6 ");
}

TEST_F(token, of_a_string_alone_is_a_string) {
    list_t tokens;
    for (const char* text : {"1", "1.5", "name", "-1", "1+1", "x=1", "1?2:3", "abs(1)", "1,2"}) {
        ASSERT_TRUE(algebra.parse(text, tokens));
        EXPECT_FALSE(tokens.front()->is_string()) << text;
    }
    ASSERT_TRUE(algebra.parse("'text'", tokens));
    EXPECT_TRUE(tokens.front()->is_string());
}

TEST_F(token, has_its_spelling_as_text) {
    const test::case_t cases[] = {
        {"-1", "-"},      {"+1", "+"},     {"!1", "!"},  {"1*2", "*"},     {"1/2", "/"},
        {"1%2", "%"},     {"1-2", "-"},    {"1+2", "+"}, {"1<<2", "<<"},   {"1>>2", ">>"},
        {"1<2", "<"},     {"1<=2", "<="},  {"1>2", ">"}, {"1>=2", ">="},   {"1==2", "=="},
        {"1!=2", "!="},   {"1&2", "&"},    {"1|2", "|"}, {"1&&2", "&&"},   {"1||2", "||"},
        {"x=1", "="},     {"1?2:3", "?:"}, {"1,2", ","}, {"name", "name"}, {"'s t'", "s t"},
        {"abs(1)", "abs"}};
    for (const test::case_t& c : cases) {
        list_t tokens;
        ASSERT_TRUE(algebra.parse(c.expression, tokens)) << c.expression;
        EXPECT_EQ(tokens.front()->text, c.outcome);
    }
}

TEST_F(token, that_is_bound_binds_weakest) {
    list_t tokens;
    for (const char* text : {"-1", "1*2", "x=1", "1?2:3", "abs(1)", "1,2", "1", "'s'", "x"}) {
        ASSERT_TRUE(algebra.parse(text, tokens));
        EXPECT_EQ(tokens.front()->strength, -15) << text;
        EXPECT_EQ(tokens.front()->unbound, 0u) << text;
    }
}

TEST_F(token, knows_its_depth_lowered_by_one_when_bound) {
    const struct {
        const char* text;
        int depth;
    } cases[] = {{"1", 0}, {"(1)", 1}, {"((x))", 2}, {"('s')", 1}, {"1+2", -1}, {"((1+2))", 1}};
    for (const auto& c : cases) {
        list_t tokens;
        ASSERT_TRUE(algebra.parse(c.text, tokens));
        EXPECT_EQ(tokens.front()->depth, c.depth) << c.text;
    }
}

TEST_F(token, without_operands_lowers_its_depth_when_bound_and_takes_nothing) {
    list_t tokens;
    ASSERT_TRUE(algebra.parse("((1))", tokens));
    auto position = tokens.begin();
    std::string error;
    EXPECT_TRUE(tokens.front()->construct(tokens, position, error));
    EXPECT_EQ(tokens.front()->depth, 1);
    EXPECT_EQ(tokens.size(), 1U);
}

TEST_F(token, of_a_call_without_parameters_takes_nothing) {
    algebra.macro_define("f()", "1");
    algebra.define("g", [](algebra_t&) { return result_t(2); });
    for (const char* text : {"f x", "g x"}) {
        list_t tokens;
        EXPECT_FALSE(algebra.parse(text, tokens));
        ASSERT_EQ(tokens.size(), 2U);
        auto position = tokens.begin();
        std::string error;
        EXPECT_TRUE(tokens.front()->construct(tokens, position, error));
        EXPECT_EQ(position, std::next(tokens.begin())) << text;
        EXPECT_EQ(tokens.size(), 2U);
    }
}

TEST_F(token, of_an_operator_that_was_not_reached_has_its_strength) {
    const struct {
        const char* text;
        int strength;
        unsigned unbound;
    } cases[] = {{"-", 2, 1},      {"+", 2, 1},    {"!", 2, 1},     {"1*", 0, 1},
                 {"1/", 0, 1},     {"1%", 0, 1},   {"1-", -1, 1},   {"1+", -1, 1},
                 {"1<<", -2, 1},   {"1>>", -2, 1}, {"1<", -3, 1},   {"1<=", -3, 1},
                 {"1>", -3, 1},    {"1>=", -3, 1}, {"1==", -4, 1},  {"1!=", -4, 1},
                 {"1&", -5, 1},    {"1|", -7, 1},  {"1&&", -8, 1},  {"1||", -9, 1},
                 {"1?", -10, 1},   {"1=", -11, 1}, {"1,", -13, 1},  {"abs", 3, 1},
                 {"name", -15, 0}, {"1", -15, 0},  {"1.5", -15, 0}, {"'s'", -15, 0},
                 {"(", -15, 0},    {")", -15, 0},  {"1 :", -15, 0}};
    for (const auto& c : cases) {
        list_t tokens;
        // The lexer stops at the last character, so nothing is bound.
        EXPECT_FALSE(algebra.parse(std::string(c.text) + " #", tokens));
        ASSERT_FALSE(tokens.empty());
        EXPECT_EQ(tokens.back()->strength, c.strength) << c.text;
        EXPECT_EQ(tokens.back()->unbound, c.unbound) << c.text;
        EXPECT_EQ(tokens.back()->depth, 0) << c.text;
    }
}

TEST_F(token, is_replicated_deeply) {
    for (const char* text :
         {"1 + 2 * 3", "-(-4)", "1 ? 2.5 : 3", "max(abs(-3), 2)", "x = 'a' + 1",
          "(1 < 2) + (3 >= 4) + (1 << 2) % 3 - (8 >> 1) / 2", "!0 == (6 & 2 | 1)",
          "(1 && 0) || (2 != 3) || (4 > 5) || (6 <= 7)", "+5"}) {
        list_t tokens;
        ASSERT_TRUE(algebra.parse(text, tokens));
        list_t copy;
        copy.push_back(tokens.front()->replicate());
        const std::string expected = outcome(tokens);
        tokens.destroy();
        EXPECT_EQ(outcome(copy), expected) << text;
    }
}

TEST_F(token, replica_has_the_same_text_and_binding) {
    list_t tokens;
    ASSERT_FALSE(algebra.parse("1 + 2 3 (", tokens));
    for (const token_t* original : tokens) {
        list_t copy;
        copy.push_back(original->replicate());
        EXPECT_EQ(copy.front()->text, original->text);
        EXPECT_EQ(copy.front()->unbound, original->unbound);
        EXPECT_EQ(copy.front()->strength, original->strength);
        EXPECT_EQ(copy.front()->is_string(), original->is_string());
    }
}

TEST_F(token, of_the_host_can_be_an_operand) {
    list_t tokens;
    ASSERT_FALSE(algebra.parse("1 +", tokens));
    tokens.push_back(new counted_token_t("own", counter));
    auto position = std::next(tokens.begin());
    std::string error;
    ASSERT_TRUE((*position)->construct(tokens, position, error));
    EXPECT_EQ(outcome(tokens), "(s) 1own");
    const list_t copy(tokens);
    EXPECT_EQ(outcome(copy), "(s) 1own");
    EXPECT_EQ(counter, 2);
    tokens.destroy();
    EXPECT_EQ(counter, 1);
}

TEST_F(token, of_the_host_can_be_evaluated_and_assigned) {
    list_t tokens;
    tokens.push_back(new counted_token_t("own", counter));
    EXPECT_EQ(outcome(tokens), "(s) own");
    tokens.front()->assign(algebra, result_t(5));
    EXPECT_EQ(outcome("own"), "(i) 5");
}

TEST_F(token_list, deletes_its_tokens) {
    {
        list_t list;
        append(list, "a");
        append(list, "b");
        EXPECT_EQ(counter, 2);
    }
    EXPECT_EQ(counter, 0);
}

TEST_F(token_list, is_emptied_by_destroy) {
    list_t list;
    append(list, "a");
    append(list, "b");
    list.destroy();
    EXPECT_EQ(counter, 0);
    EXPECT_TRUE(list.empty());
    list.destroy();
    EXPECT_TRUE(list.empty());
}

TEST_F(token_list, is_copied_deeply) {
    list_t list;
    append(list, "a");
    append(list, "b");
    const list_t copy(list);
    EXPECT_EQ(counter, 4);
    EXPECT_NE(copy.front(), list.front());
    list.destroy();
    EXPECT_EQ(texts(copy), (texts_t{"a", "b"}));
}

TEST_F(token_list, replaces_its_tokens_when_assigned) {
    list_t list;
    append(list, "a");
    list_t other;
    append(other, "b");
    append(other, "c");
    list = other;
    EXPECT_EQ(counter, 4);
    EXPECT_EQ(texts(list), (texts_t{"b", "c"}));
    EXPECT_EQ(texts(other), (texts_t{"b", "c"}));
}

TEST_F(token_list, is_unchanged_when_assigned_to_itself) {
    list_t list;
    append(list, "a");
    const list_t& same = list;
    list = same;
    EXPECT_EQ(texts(list), (texts_t{"a"}));
    EXPECT_EQ(counter, 1);
}

TEST_F(token_list, appends_replicas) {
    list_t list;
    append(list, "a");
    list_t other;
    append(other, "b");
    list.replicate(other);
    list.replicate(other);
    EXPECT_EQ(texts(list), (texts_t{"a", "b", "b"}));
    EXPECT_EQ(texts(other), (texts_t{"b"}));
}

TEST_F(token_list, can_append_replicas_of_its_own_tokens) {
    list_t list;
    append(list, "a");
    append(list, "b");
    list.replicate(list);
    EXPECT_EQ(texts(list), (texts_t{"a", "b", "a", "b"}));
}

TEST_F(token_list, is_replaced_by_a_parse) {
    list_t list;
    append(list, "a");
    EXPECT_TRUE(algebra.parse("1+1", list));
    EXPECT_EQ(counter, 0);
    EXPECT_EQ(list.size(), 1u);
    append(list, "a");
    EXPECT_FALSE(algebra.parse("#", list));
    EXPECT_TRUE(list.empty());
}

TEST_F(token_list, is_kept_by_the_parse_of_a_blank_statement) {
    list_t list;
    append(list, "a");
    EXPECT_FALSE(algebra.parse("", list));
    EXPECT_FALSE(algebra.parse(" ; 1", list));
    EXPECT_EQ(texts(list), (texts_t{"a"}));
    EXPECT_EQ(counter, 1);
}

TEST_F(token_list, holds_the_one_root_after_a_parse) {
    list_t list;
    for (const char* text : {"1", "1+2*3", "x = max(1, 2) ? 3 : 4", "1, 2, 3", "((('s')))"}) {
        ASSERT_TRUE(algebra.parse(text, list));
        EXPECT_EQ(list.size(), 1u) << text;
    }
}

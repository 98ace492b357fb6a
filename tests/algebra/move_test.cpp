// Moves of evaluators and token lists, and assignment from every integer type.
#include <cstdint>
#include <type_traits>
#include <utility>

#include "support/evaluation.h"
#include "support/throws.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

constexpr char moved_from[] = "algebra_t -- the evaluator was moved from";

class move : public test::evaluator_t {
protected:
    move() {
        algebra.macro_define("f(x)", "x + y");
        algebra.macro_define("M", "f(10)");
        algebra.define("host", [](algebra_t& caller) { return caller.get("y"); });
        algebra.assign("y", 5);
        algebra.parse("M + host");
        algebra.memory_push();
    }
};

TEST_F(move, of_an_evaluator_takes_what_a_copy_has) {
    algebra.numeric_only_set(true);
    list_t list;
    algebra.parse("1 = 2", list);
    algebra_t moved(std::move(algebra));
    EXPECT_EQ(test::shown(moved.evaluate()), "(i) 20");
    EXPECT_EQ(moved.parse_error_get(), "");
    moved.evaluate("y = 6");
    EXPECT_EQ(test::shown(moved.evaluate("M + host")), "(i) 22");
    moved.memory_pop();
    EXPECT_EQ(test::shown(moved.evaluate("y")), "(i) 5");
}

TEST_F(move, by_assignment_leaves_the_flag_and_the_parse_error) {
    algebra_t target;
    target.parse("1 +");
    target.numeric_only_set(true);
    target = std::move(algebra);
    EXPECT_EQ(test::shown(target.evaluate()), "(i) 20");
    EXPECT_EQ(target.parse_error_get(), "binary_t::construct() -- expected right operand");
    EXPECT_EQ(test::shown(target.evaluate("1 + abc2")), "(i) 3");
}

TEST_F(move, in_a_call_copies_what_takes_part) {
    algebra.define("renew", [](algebra_t& caller) {
        algebra_t taken(std::move(caller));
        const result_t y = taken.get("y");
        caller = algebra_t();
        caller.assign("z", 1);
        return y;
    });
    algebra.macro_define("RENEW", "renew");
    algebra.macro_define("s(y)", "(RENEW) + defined('y') + defined('z')");
    expect({{"s(7)", "(i) 8"}, {"y", "(i) 5"}});
    expect({{"renew + defined('y') * 10 + z", "(i) 6"}});
}

TEST_F(move, keeps_references_and_lists) {
    result_t& y = algebra["y"];
    list_t list;
    ASSERT_TRUE(algebra.parse("f(1)", list));
    algebra_t moved(std::move(algebra));
    y = 7;
    EXPECT_EQ(test::shown(moved.evaluate("host")), "(i) 7");
    EXPECT_EQ(test::shown(moved.evaluate(list)), "(i) 8");
    moved.macro_define("f(x)", "x * 100");
    EXPECT_EQ(test::shown(moved.evaluate(list)), "(i) 100");
}

TEST_F(move, leaves_nothing_to_use) {
    const algebra_t moved(std::move(algebra));
    result_t value;
    // NOLINTBEGIN(bugprone-use-after-move): what these tests are about
    EXPECT_THROWS(algebra.evaluate("1"), moved_from);
    EXPECT_THROWS(algebra.evaluate(), moved_from);
    EXPECT_THROWS(algebra.find("y"), moved_from);
    EXPECT_THROWS(algebra.assign("y", 1), moved_from);
    EXPECT_THROWS(algebra["y"], moved_from);
    EXPECT_THROWS(algebra_t copy(algebra), moved_from);
    EXPECT_THROWS(algebra_t().memory_copy(algebra), moved_from);
    // NOLINTEND(bugprone-use-after-move)
}

TEST_F(move, from_leaves_an_evaluator_that_can_be_assigned_to) {
    algebra_t moved(std::move(algebra));
    algebra = moved;
    EXPECT_EQ(program_outcome(), "(i) 20");
    moved = std::move(algebra);
    algebra = std::move(moved);
    EXPECT_EQ(program_outcome(), "(i) 20");
    EXPECT_EQ(outcome("y = 8"), "(i) 8");
}

TEST_F(move, to_itself_changes_nothing) {
    algebra_t& same = algebra;
    algebra = std::move(same);
    EXPECT_EQ(program_outcome(), "(i) 20");
}

TEST_F(move, makes_a_vector_of_evaluators_cheap) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<algebra_t>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<list_t>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<list_t>);
    std::vector<algebra_t> all;
    for (int i = 0; i < 20; ++i) {
        all.emplace_back();
        all.back().assign("x", i);
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(test::shown(all[static_cast<std::size_t>(i)].evaluate("x * 2")),
                  "(i) " + std::to_string(i * 2));
    }
}

TEST_F(move, of_a_list_takes_its_tokens) {
    list_t list;
    ASSERT_TRUE(algebra.parse("1 + y", list));
    const ko::alg::token_t* const root = list.front();
    list_t moved(std::move(list));
    EXPECT_EQ(moved.front(), root);
    EXPECT_EQ(outcome(moved), "(i) 6");
    ASSERT_TRUE(algebra.parse("2 + y", list)) << "an empty list again";
    moved = std::move(list);
    EXPECT_EQ(outcome(moved), "(i) 7");
    list_t& same = moved;
    moved = std::move(same);
    EXPECT_EQ(outcome(moved), "(i) 7");
}

TEST(assigned_integer, of_every_type_is_an_integer_where_32_bits_hold_it) {
    algebra_t algebra;
    const auto assigned = [&](auto value) {
        algebra.assign("x", value);
        return test::shown(algebra.get("x"));
    };
    enum count_t { three = 3 };
    EXPECT_EQ(assigned(5U), "(i) 5");
    EXPECT_EQ(assigned(5UL), "(i) 5");
    EXPECT_EQ(assigned(-5LL), "(i) -5");
    EXPECT_EQ(assigned(5ULL), "(i) 5");
    EXPECT_EQ(assigned(std::uint8_t{200}), "(i) 200");
    EXPECT_EQ(assigned(std::uint32_t{3000000000}), "(f) 3e+09");
    EXPECT_EQ(assigned(std::uint64_t{1} << 40), "(f) 1.09951e+12");
    EXPECT_EQ(assigned(-3000000000LL), "(f) -3e+09");
    EXPECT_EQ(assigned(sizeof(int)), "(i) 4");
    EXPECT_EQ(assigned('a'), "(i) 97");
    EXPECT_EQ(assigned(true), "(i) 1");
    EXPECT_EQ(assigned(three), "(i) 3");
    EXPECT_EQ(assigned(std::int16_t{-2}), "(i) -2");
}

} // namespace

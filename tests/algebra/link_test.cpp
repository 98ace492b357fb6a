// Programs keep what they have found in an evaluator. Here they meet others.

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "support/evaluation.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using test::shown;

namespace {

constexpr int rounds = 40;

class links : public testing::Test {
protected:
    links() {
        define(parser, 1);
        EXPECT_TRUE(parser.parse("add(x) + z", list));
    }

    /// An evaluator in which x, y and z are multiples of a number, and `add(x)` is `x + y`.
    static void define(algebra_t& algebra, int number) {
        algebra.assign("x", number);
        algebra.assign("y", 10 * number);
        algebra.assign("z", 100 * number);
        algebra.macro_define("add(p)", "p + y");
    }

    /// The value of the list, twice: when it looks for its names and when it knows them.
    std::string value_on(algebra_t& algebra) {
        const std::string first = shown(algebra.evaluate(list));
        EXPECT_EQ(first, shown(algebra.evaluate(list)));
        return first;
    }

    algebra_t parser;
    list_t list;
};

TEST_F(links, of_a_list_are_looked_up_in_each_evaluator_in_turn) {
    std::array<algebra_t, 3> others;
    for (int i = 0; i < 3; ++i) {
        define(others[static_cast<std::size_t>(i)], i + 2);
    }
    for (int round = 0; round < rounds; ++round) {
        EXPECT_EQ("(i) 111", value_on(parser));
        EXPECT_EQ("(i) 222", value_on(others[0]));
        EXPECT_EQ("(i) 333", value_on(others[1]));
        EXPECT_EQ("(i) 444", value_on(others[2]));
    }
}

TEST_F(links, do_not_lead_into_an_evaluator_that_takes_the_place_of_another) {
    std::optional<algebra_t> place;
    for (int i = 1; i <= rounds; ++i) {
        place.emplace();
        define(*place, i);
        EXPECT_EQ("(i) " + std::to_string(111 * i), value_on(*place));
        place.reset();
    }
}

TEST_F(links, of_the_same_names_in_the_same_order_lead_into_the_evaluator_at_hand) {
    for (int i = 1; i <= rounds; ++i) {
        const auto one = std::make_unique<algebra_t>();
        one->assign("z", 5);
        one->assign("x", i);
        one->assign("y", 0);
        EXPECT_EQ("(i) " + std::to_string(i + 5), value_on(*one));
    }
}

TEST_F(links, tell_copies_of_copies_apart) {
    algebra_t copy(parser);
    algebra_t copy_of_copy(copy);
    copy.assign("x", 2);
    copy_of_copy.assign("y", 20);
    for (int round = 0; round < rounds; ++round) {
        EXPECT_EQ("(i) 111", value_on(parser));
        EXPECT_EQ("(i) 112", value_on(copy));
        EXPECT_EQ("(i) 121", value_on(copy_of_copy));
        copy_of_copy = algebra_t(copy);
        EXPECT_EQ("(i) 112", value_on(copy_of_copy));
        copy_of_copy.assign("y", 20);
        copy_of_copy.assign("x", 1);
    }
}

TEST_F(links, follow_an_evaluator_that_unrelated_ones_are_assigned_to) {
    algebra_t target;
    define(target, 7);
    for (int i = 1; i <= rounds; ++i) {
        auto source = std::make_unique<algebra_t>();
        define(*source, i);
        source->macro_define("add(p)", "p - y");
        target = *source;
        source.reset();
        EXPECT_EQ("(i) " + std::to_string(101 * i + 10 * i), value_on(target));
        ASSERT_TRUE(target.parse("add(x) + z"));
        EXPECT_EQ("(i) " + std::to_string(91 * i), shown(target.evaluate()));
        EXPECT_EQ("(i) " + std::to_string(91 * i), shown(target.evaluate()));
    }
}

TEST_F(links, of_calls_follow_the_functions_that_are_assigned_to_their_evaluator) {
    for (int i = 1; i <= rounds; ++i) {
        auto source = std::make_unique<algebra_t>();
        define(*source, 1);
        source->macro_define("add(p)", "p * " + std::to_string(i));
        parser = *source;
        source.reset();
        EXPECT_EQ("(i) " + std::to_string(100 + i), value_on(parser));
    }
}

TEST_F(links, move_with_an_evaluator) {
    EXPECT_EQ("(i) 111", value_on(parser));
    ASSERT_TRUE(parser.parse("add(x)"));
    EXPECT_EQ("(i) 11", shown(parser.evaluate()));
    algebra_t moved(std::move(parser));
    define(moved, 2);
    EXPECT_EQ("(i) 222", value_on(moved));
    EXPECT_EQ("(i) 22", shown(moved.evaluate()));
    parser = moved;
    moved.assign("x", 0);
    EXPECT_EQ("(i) 222", value_on(parser));
    EXPECT_EQ("(i) 220", value_on(moved));
}

TEST_F(links, are_looked_up_anew_after_a_host_function_has_assigned_another_evaluator) {
    parser.define("become", [](algebra_t& algebra, result_t number) {
        algebra_t unrelated;
        define(unrelated, number.int_get());
        algebra = unrelated;
        algebra.define("become", [](algebra_t&, result_t) { return result_t(0); });
        return result_t(0);
    });
    for (int round = 0; round < rounds; ++round) {
        algebra_t algebra(parser);
        EXPECT_EQ("(i) 331", shown(algebra.evaluate("x + become(3) + 3 * add(x) + 2 * y + "
                                                    "z * 171 / 300 + 0 * (y = 0)")));
    }
}

TEST_F(links, of_a_script_function_are_those_of_the_copy_that_it_works_on) {
    parser.define("swap", [](algebra_t& algebra, result_t number) {
        algebra_t unrelated;
        define(unrelated, number.int_get());
        algebra = unrelated;
        return result_t(0);
    });
    parser.macro_define("SWAPPED", "swap(n) + add(x)"); // a body knows no host functions
    parser.macro_define("f(n)", "x + SWAPPED + z");
    for (int n = 2; n <= rounds; ++n) {
        parser.assign("n", n);
        EXPECT_EQ("(i) " + std::to_string(1 + 111 * n), shown(parser.evaluate("f(n)")));
        EXPECT_EQ("(i) 111", value_on(parser));
    }
}

TEST_F(links, survive_the_erasing_of_variables) {
    EXPECT_EQ("(i) 111", value_on(parser));
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "gone" + std::to_string(i);
        parser.assign(name, i);
        ASSERT_TRUE(parser.erase(name));
        ASSERT_EQ("(i) 111", shown(parser.evaluate(list)));
    }
}

} // namespace

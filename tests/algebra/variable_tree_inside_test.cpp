#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "algebra/variable_tree.h"
#include "support/allocations.h"
#include "support/evaluation.h"

namespace {

using ko::alg::variable_tree_t;

/// As many names as asked for, in ascending order.
std::vector<std::string> names(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        names.push_back("a name that is too long for a short string " + std::to_string(i));
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// Stores at each name its index.
variable_tree_t filled(const std::vector<std::string>& names) {
    variable_tree_t tree;
    for (std::size_t i = 0; i < names.size(); ++i) {
        tree.write(names[i]) = static_cast<int>(i);
    }
    return tree;
}

std::string value_of(const variable_tree_t& tree, const std::string& name) {
    const ko::alg::result_t* const value = tree.find(name);
    return value == nullptr ? "none" : test::shown(*value);
}

void expect_filled(const variable_tree_t& tree, const std::vector<std::string>& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(value_of(tree, names[i]), "(i) " + std::to_string(i)) << names[i];
    }
}

TEST(variable_tree, finds_nothing_when_empty) {
    EXPECT_EQ(variable_tree_t().find(""), nullptr);
    EXPECT_EQ(variable_tree_t().height(), 0U);
}

TEST(variable_tree, creates_a_missing_value_as_the_integer_0) {
    variable_tree_t tree;
    EXPECT_EQ(test::shown(tree.write("x")), "(i) 0");
}

TEST(variable_tree, takes_out_the_names_of_variables_that_are_gone) {
    const std::vector<std::string> all = names(1000);
    variable_tree_t tree = filled(all);
    const variable_tree_t copy = tree;
    bool moved = false;
    for (std::size_t i = 0; i < all.size(); i += 2) {
        tree.cell(all[i], moved).is_present = false;
    }
    EXPECT_TRUE(tree.is_littered());
    tree.tidy();
    EXPECT_FALSE(tree.is_littered());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(tree.cell_find(all[i]) == nullptr, i % 2 == 0) << i;
    }
    EXPECT_EQ(tree.height(), 9U);
    expect_filled(copy, all);
}

TEST(variable_tree, leaves_its_own_values_in_place_when_it_is_tidied) {
    const std::vector<std::string> all = names(100);
    variable_tree_t tree = filled(all);
    bool moved = false;
    tree.cell(all[0], moved).is_present = false;
    const ko::alg::result_t* const value = tree.find(all[50]);
    tree.tidy();
    EXPECT_EQ(tree.find(all[50]), value);
    EXPECT_EQ(value_of(tree, all[50]), "(i) 50");
}

TEST(variable_tree, stays_low_in_whatever_order_names_come) {
    std::vector<std::string> order = names(1000);
    expect_filled(filled(order), order);
    EXPECT_LE(filled(order).height(), 14U);
    std::reverse(order.begin(), order.end());
    expect_filled(filled(order), order);
    EXPECT_LE(filled(order).height(), 14U);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    expect_filled(filled(order), order);
    EXPECT_LE(filled(order).height(), 14U);
}

TEST(variable_tree, keeps_a_value_where_it_is_while_others_come) {
    variable_tree_t tree;
    const ko::alg::result_t& value = tree.write("m") = 5;
    for (const std::string& name : names(100)) {
        tree.write(name) = 1;
    }
    EXPECT_EQ(tree.find("m"), &value);
}

TEST(variable_tree, copies_change_apart) {
    const std::vector<std::string> all = names(100);
    variable_tree_t tree = filled(all);
    variable_tree_t copy = tree;
    EXPECT_EQ(tree.find(all[7]), copy.find(all[7])) << "shared until one of them changes";
    copy.write(all[7]) = 700;
    copy.write("only in the copy") = 1;
    tree.write(all[8]) = 800;
    EXPECT_EQ(value_of(tree, all[7]), "(i) 7");
    EXPECT_EQ(value_of(tree, "only in the copy"), "none");
    EXPECT_EQ(value_of(copy, all[7]), "(i) 700");
    EXPECT_EQ(value_of(copy, all[8]), "(i) 8");
}

TEST(variable_tree, clone_shares_nothing) {
    const std::vector<std::string> all = names(100);
    const variable_tree_t tree = filled(all);
    const variable_tree_t clone = tree.clone();
    expect_filled(clone, all);
    EXPECT_EQ(clone.height(), tree.height());
    EXPECT_NE(clone.find(all[7]), tree.find(all[7]));
}

TEST(variable_tree, update_takes_values_and_no_names) {
    variable_tree_t tree = filled({"a", "b", "c"});
    variable_tree_t other = tree;
    other.write("b") = 20;
    other.write("d") = 30;
    tree.update_from(other);
    EXPECT_EQ(value_of(tree, "a"), "(i) 0");
    EXPECT_EQ(value_of(tree, "b"), "(i) 20");
    EXPECT_EQ(value_of(tree, "d"), "none");
}

TEST(variable_tree, out_of_memory_leaves_names_and_values) {
    const std::vector<std::string> all = names(30);
    variable_tree_t tree = filled(all);
    const variable_tree_t shared = tree;
    const auto add = [&] {
        tree.write("another name that is too long for a short string");
    };
    for (long number = 0; test::outcome(add, number) != "not reached"; ++number) {
        expect_filled(tree, all);
        EXPECT_LE(tree.height(), shared.height());
        tree = shared;
    }
    expect_filled(tree, all);
    expect_filled(shared, all);
}

} // namespace

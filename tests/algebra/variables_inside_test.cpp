// The variables of an evaluator.

#include "algebra/variables.h"

#include <gtest/gtest.h>

#include <string>

using ko::alg::family_t;
using ko::alg::variables_t;

namespace {

class variables : public testing::Test {
protected:
    static std::string name_of(int number) { return "v" + std::to_string(number); }

    /// Number of the names up to `count` of which anything is left.
    int left_of(int count) const {
        int left = 0;
        for (int i = 0; i < count; ++i) {
            left += table.cell_find(name_of(i)) != nullptr ? 1 : 0;
        }
        return left;
    }

    family_t family;
    variables_t table{family};
};

TEST_F(variables, keep_nothing_of_names_that_are_added_and_erased) {
    constexpr int count = 10000;
    for (int i = 0; i < count; ++i) {
        table.assign(name_of(i), i);
        ASSERT_TRUE(table.erase(name_of(i)));
    }
    EXPECT_LE(left_of(count), 100);
}

TEST_F(variables, stay_where_they_are_when_others_are_erased) {
    ko::alg::result_t& kept = table["kept"];
    for (int i = 0; i < 1000; ++i) {
        table.assign(name_of(i), i);
        ASSERT_TRUE(table.erase(name_of(i)));
    }
    EXPECT_EQ(&kept, table.find("kept"));
}

TEST_F(variables, take_out_no_cell_that_a_journal_leads_to) {
    ko::alg::cell_t& cell = table.cell("journaled");
    table.journal_put(cell);
    for (int i = 0; i < 1000; ++i) {
        table.assign(name_of(i), i);
        ASSERT_TRUE(table.erase(name_of(i)));
    }
    EXPECT_EQ(&cell, table.cell_find("journaled"));
    table.journal_undo(0);
    EXPECT_EQ(nullptr, table.find("journaled"));
}

TEST_F(variables, of_one_family_never_have_the_generation_of_others) {
    variables_t other(family);
    EXPECT_NE(table.generation_get(), other.generation_get());
    const variables_t copy(table);
    EXPECT_NE(table.generation_get(), copy.generation_get());
    other = variables_t(table);
    EXPECT_NE(table.generation_get(), other.generation_get());
}

TEST_F(variables, have_another_generation_once_a_copy_shares_their_cells) {
    table.assign("x", 1);
    const auto before = table.generation_get();
    const variables_t copy(table);
    EXPECT_NE(before, table.generation_get());
}

} // namespace

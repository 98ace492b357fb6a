#include "algebra/builtins.h"

#include <gtest/gtest.h>

#include "algebra/function_table.h"

namespace {

using ko::alg::builtin_find;

struct count_case_t {
    const char* name;
    int count;
};

TEST(builtin_table, holds_these_functions_with_their_argument_counts) {
    const count_case_t cases[] = {
        {"abs", 1},    {"sqrt", 1},     {"sin", 1},    {"cos", 1},        {"tan", 1},
        {"max", 2},    {"min", 2},      {"pow", 2},    {"log", 1},        {"log10", 1},
        {"floor", 1},  {"ceil", 1},     {"quad", 3},   {"func_error", 1}, {"func_output", 1},
        {"return", 1}, {"evaluate", 1}, {"assign", 2}, {"strlen", 1},     {"defined", 1},
        {"exists", 1},
    };
    for (const count_case_t& c : cases) {
        const ko::alg::builtin_t* const row = builtin_find(c.name);
        ASSERT_NE(row, nullptr) << c.name;
        EXPECT_EQ(row->name, c.name);
        EXPECT_EQ(row->count, c.count) << c.name;
    }
    std::vector<std::string> all;
    ko::alg::builtin_names_get(all);
    EXPECT_EQ(all.size(), std::size(cases));
}

TEST(builtin_table, has_quick_functions_that_make_floats_of_floats) {
    const auto a = ko::alg::number_t::of_float(2.0F);
    const auto b = ko::alg::number_t::of_float(1.0F);
    std::vector<std::string> all;
    ko::alg::builtin_names_get(all);
    int quick = 0;
    for (const std::string& name : all) {
        const ko::alg::builtin_t& row = *builtin_find(name);
        ASSERT_EQ(row.of_numbers != nullptr, row.of_reals != nullptr) << name;
        if (row.of_numbers != nullptr) {
            const ko::alg::number_t value = row.of_numbers(a, b);
            EXPECT_FALSE(value.is_integer()) << name;
            EXPECT_EQ(row.of_reals(2.0F, 1.0F), value.float_view()) << name;
            EXPECT_LE(row.count, 2) << name;
            ++quick;
        }
    }
    EXPECT_EQ(quick, 11);
}

TEST(builtin_table, has_no_other_spelling) {
    for (const char* name : {"Abs", "", "ab", "absx"}) {
        EXPECT_EQ(builtin_find(name), nullptr) << name;
    }
}

TEST(function_table, has_the_host_functions_until_they_are_undefined) {
    ko::alg::family_t family;
    ko::alg::function_table_t table(family);
    ko::alg::host_record_t record;
    record.prototype.name = "abs";
    table.host_define(record);
    ASSERT_NE(table.host_find("abs"), nullptr);
    EXPECT_EQ(table.host_find("abs")->count_max, 0);
    EXPECT_TRUE(table.host_undefine("abs"));
    EXPECT_EQ(table.host_find("abs"), nullptr);
    EXPECT_FALSE(table.host_undefine("abs"));
}

TEST(function_table, has_an_identity_that_changes_with_it) {
    ko::alg::family_t family;
    ko::alg::function_table_t table(family);
    const ko::alg::function_table_t same = table;
    EXPECT_EQ(table.identity_get(), same.identity_get());
    ko::alg::host_record_t record;
    record.prototype.name = "f";
    table.host_define(record);
    EXPECT_NE(table.identity_get(), same.identity_get());
    const auto before = table.scripts_get()->identity_get();
    ASSERT_TRUE(table.script_define("g()", "1"));
    EXPECT_NE(table.scripts_get()->identity_get(), before);
}

TEST(function_table, a_copy_defines_for_itself) {
    ko::alg::family_t family;
    ko::alg::function_table_t table(family);
    ASSERT_TRUE(table.script_define("f(x)", "x"));
    ko::alg::function_table_t copy = table;
    ASSERT_TRUE(copy.script_define("f(x)", "x+1"));
    ASSERT_TRUE(copy.script_define("g()", "1"));
    EXPECT_EQ(table.scripts_get()->find("f")->body, "x");
    EXPECT_EQ(table.scripts_get()->find("g"), nullptr);
    EXPECT_EQ(copy.scripts_get()->find("f")->body, "x+1");
}

TEST(function_table, keeps_its_script_table_when_assigned_to) {
    ko::alg::family_t family;
    ko::alg::function_table_t table(family);
    const auto scripts = table.scripts_get();
    ko::alg::function_table_t other(family);
    ASSERT_TRUE(other.script_define("f()", "1"));
    table = other;
    EXPECT_EQ(table.scripts_get(), scripts);
    EXPECT_EQ(scripts->find("f")->body, "1");
}

} // namespace

#include "algebra/builtin_functions.h"

#include <gtest/gtest.h>

#include "algebra/function_table.h"

namespace {

using ko::alg::builtin_find;
using ko::alg::function_prototype_t;

struct count_case_t {
    const char* name;
    int count;
};

TEST(builtin_table, holds_the_21_functions_with_their_argument_counts) {
    const count_case_t cases[] = {
        {"abs", 1},    {"sqrt", 1},     {"sin", 1},    {"cos", 1},        {"tan", 1},
        {"max", 2},    {"min", 2},      {"pow", 2},    {"log", 1},        {"log10", 1},
        {"floor", 1},  {"ceil", 1},     {"quad", 3},   {"func_error", 1}, {"func_output", 1},
        {"return", 1}, {"evaluate", 1}, {"assign", 2}, {"strlen", 1},     {"defined", 1},
        {"exists", 1},
    };
    for (const count_case_t& c : cases) {
        function_prototype_t function;
        EXPECT_TRUE(builtin_find(c.name, function)) << c.name;
        EXPECT_EQ(function.name, c.name);
        EXPECT_EQ(function.argument_count, c.count) << c.name;
    }
    EXPECT_EQ(std::size(cases), 21U);
}

TEST(builtin_table, sets_the_one_pointer_of_the_kind) {
    function_prototype_t function;
    ASSERT_TRUE(builtin_find("quad", function));
    EXPECT_TRUE(function.function3 != nullptr);
    EXPECT_TRUE(function.function0 == nullptr && function.function1 == nullptr &&
                function.function2 == nullptr && function.function_list == nullptr);
}

TEST(builtin_table, leaves_the_record_alone_where_there_is_no_function) {
    function_prototype_t function;
    function.name = "kept";
    EXPECT_FALSE(builtin_find("Abs", function));
    EXPECT_FALSE(builtin_find("", function));
    EXPECT_EQ(function.name, "kept");
}

TEST(function_table, a_host_function_hides_the_built_in_one) {
    ko::alg::function_table_t table;
    table.host_define({"abs", 0, nullptr, nullptr, nullptr, nullptr, nullptr});
    function_prototype_t function;
    ASSERT_TRUE(table.external_find("abs", function));
    EXPECT_EQ(function.argument_count, 0);
    EXPECT_TRUE(function.function1 == nullptr);
}

TEST(function_table, a_copy_defines_for_itself) {
    ko::alg::function_table_t table;
    ASSERT_TRUE(table.script_define("f(x)", "x"));
    ko::alg::function_table_t copy = table;
    ASSERT_TRUE(copy.script_define("f(x)", "x+1"));
    ASSERT_TRUE(copy.script_define("g()", "1"));
    EXPECT_EQ(table.scripts_get()->find("f")->body, "x");
    EXPECT_EQ(table.scripts_get()->find("g"), nullptr);
    EXPECT_EQ(copy.scripts_get()->find("f")->body, "x+1");
}

TEST(function_table, keeps_its_script_table_when_assigned_to) {
    ko::alg::function_table_t table;
    const auto scripts = table.scripts_get();
    ko::alg::function_table_t other;
    ASSERT_TRUE(other.script_define("f()", "1"));
    table = other;
    EXPECT_EQ(table.scripts_get(), scripts);
    EXPECT_EQ(scripts->find("f")->body, "1");
}

} // namespace

// Lists of names, and the removal of what bears them.
#include <algorithm>
#include <list>
#include <set>
#include <utility>

#include "support/evaluation.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;
using names_t = std::vector<std::string>;
using set_t = std::set<std::string>;

result_t one(algebra_t&) {
    return 1;
}

class names : public test::evaluator_t {
protected:
    /// The names that an expression uses: "x y; f".
    std::string used(const std::string& text) {
        list_t tokens;
        algebra.parse(text, tokens);
        return used(tokens);
    }

    std::string used(const list_t& tokens) {
        const ko::alg::names_t all = algebra.names_get(tokens);
        std::string shown;
        for (const std::string& name : all.variables) {
            shown += name + " ";
        }
        shown += ";";
        for (const std::string& name : all.functions) {
            shown += " " + name;
        }
        return shown;
    }
};

TEST_F(names, of_variables_are_listed_in_their_order) {
    EXPECT_EQ(algebra.variable_names(), names_t());
    for (const char* name : {"b", "a", "ab", "B", "not a name", ""}) {
        algebra.assign(name, 1);
    }
    algebra["made"];
    EXPECT_EQ(algebra.variable_names(), (names_t{"", "B", "a", "ab", "b", "made", "not a name"}));
}

TEST_F(names, of_variables_follow_the_memory_stack) {
    algebra.assign("x", 1);
    algebra.memory_push();
    algebra.evaluate("y = 2");
    EXPECT_EQ(algebra.variable_names(), (names_t{"x", "y"}));
    algebra.memory_pop();
    EXPECT_EQ(algebra.variable_names(), names_t{"x"});
}

TEST_F(names, of_functions_are_those_that_can_be_called) {
    const names_t built_in = algebra.function_names();
    EXPECT_EQ(
        built_in,
        (names_t{"abs",   "assign",     "ceil",        "cos", "defined", "evaluate", "exists",
                 "floor", "func_error", "func_output", "log", "log10",   "max",      "min",
                 "pow",   "quad",       "return",      "sin", "sqrt",    "strlen",   "tan"}));
    algebra.define("max", one);
    algebra.define("host", one);
    algebra.macro_define("script(x)", "x");
    algebra.macro_define("host(x)", "x");
    algebra.macro_define("MACRO", "x");
    names_t all = built_in;
    all.insert(all.end(), {"host", "script"});
    std::sort(all.begin(), all.end());
    EXPECT_EQ(algebra.function_names(), all);
    algebra.undefine("host");
    EXPECT_EQ(algebra.function_names(), all) << "the script function of that name";
    algebra.macros_clear();
    EXPECT_EQ(algebra.function_names(), built_in);
}

TEST_F(names, in_an_expression_are_those_it_reads_and_calls) {
    algebra.define("host", one);
    algebra.macro_define("script(a)", "a + hidden");
    algebra.macro_define("MACRO", "deep * 2");
    const test::case_t cases[] = {
        {"1 + 2", ";"},
        {"x + y * x", "x y ;"},
        {"x ? y : z", "x y z ;"},
        {"-(!x)", "x ;"},
        {"max(x, host) + script(1)", "x ; host max script"},
        {"MACRO", "deep ;"},
        {"'x' + \"y\"", ";"},
        {"x = y", "y ;"},
        {"(x = 1) + x", "x ;"},
        {"'x' = y", "y ;"},
        {"x + 1 = y", "y ;"},
        {"exists('x') + evaluate('y')", "; evaluate exists"},
        {"f(x, (y, z))", "f x y z ;"},
        {"", ";"},
    };
    for (const test::case_t& c : cases) {
        EXPECT_EQ(used(c.expression), c.outcome) << c.expression;
    }
}

TEST_F(names, in_what_a_failed_parse_left_are_listed_too) {
    EXPECT_EQ(used("x + y z"), "x y z ;");
    EXPECT_EQ(used("x + (sin(y) *"), "x y ; sin");
}

TEST_F(names, in_a_long_and_deep_expression_are_found) {
    const std::string text = test::repeated("-(x+", 100000) + "y" + test::repeated(")", 100000);
    EXPECT_EQ(used(text), "x y ;");
}

TEST_F(names, in_a_list_are_found_without_the_evaluator_that_parsed_it) {
    list_t tokens;
    {
        algebra_t other;
        other.macro_define("f(x)", "x");
        ASSERT_TRUE(other.parse("f(x) + sin(y)", tokens));
    }
    EXPECT_EQ(used(tokens), "x y ; f sin");
}

class erase : public test::evaluator_t {};

TEST_F(erase, removes_a_variable) {
    algebra.assign("x", 1);
    algebra.assign("y", 2);
    EXPECT_TRUE(algebra.erase("x"));
    EXPECT_FALSE(algebra.erase("x"));
    EXPECT_FALSE(algebra.find("x"));
    expect({{"y", "(i) 2"},
            {"x", "! label_t::evaluate() -- access to undefined term, 'x'"},
            {"x = 3", "(i) 3"},
            {"x", "(i) 3"}});
}

TEST_F(erase, is_seen_by_programs) {
    algebra.assign("x", 1);
    algebra.assign("y", 2);
    ASSERT_TRUE(algebra.parse("x + y"));
    EXPECT_EQ(program_outcome(), "(i) 3");
    algebra.erase("x");
    EXPECT_EQ(program_outcome(), "! label_t::evaluate() -- access to undefined term, 'x'");
    algebra.assign("x", 5);
    EXPECT_EQ(program_outcome(), "(i) 7");
}

TEST_F(erase, leaves_snapshots_copies_and_references_to_others) {
    algebra.assign("x", 1);
    result_t& y = algebra["y"];
    y = 2;
    algebra.memory_push();
    algebra_t copy(algebra);
    EXPECT_TRUE(algebra.erase("x"));
    y = 3;
    expect({{"y", "(i) 3"}});
    EXPECT_EQ(test::shown(copy.evaluate("x + y")), "(i) 3");
    algebra.memory_pop();
    expect({{"x", "(i) 1"}, {"y", "(i) 2"}});
}

TEST_F(erase, keeps_the_order_of_many_variables) {
    std::set<std::string> left;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "v" + std::to_string(i * 7919 % 2000);
        algebra.assign(name, i);
        left.insert(name);
    }
    for (int i = 0; i < 2000; i += 3) {
        const std::string name = "v" + std::to_string(i * 6007 % 2000);
        EXPECT_EQ(algebra.erase(name), left.erase(name) == 1) << name;
        if (i % 100 == 0) {
            EXPECT_EQ(algebra.variable_names(), names_t(left.begin(), left.end()));
        }
    }
    EXPECT_EQ(algebra.variable_names(), names_t(left.begin(), left.end()));
}

TEST_F(erase, in_a_script_function_is_lost_with_it) {
    algebra.define("drop", [](algebra_t& caller) { return result_t(caller.erase("x")); });
    algebra.macro_define("f()", "(drop + defined('x'))");
    algebra.assign("x", 1);
    expect({{"f()", "(i) 1"}, {"x", "(i) 1"}, {"drop() * 10 + defined('x')", "(i) 10"}});
}

class macros_clear : public test::evaluator_t {};

TEST_F(macros_clear, removes_macros_script_functions_and_definitions) {
    algebra.macro_define("M", "1");
    algebra.macro_define("M", "2");
    algebra.macro_define("f(x)", "x");
    ASSERT_TRUE(algebra.parse("f(3)"));
    algebra_t copy(algebra);
    algebra.macros_clear();
    std::list<std::pair<std::string, std::string>> all;
    algebra.macros_get(all);
    EXPECT_TRUE(all.empty());
    expect({{"M", "! label_t::evaluate() -- access to undefined term, 'M'"},
            {"f(3)", "! syntax error in f(3)  -- not enough operators"}});
    EXPECT_EQ(test::shown(copy.evaluate("M + f(3)")), "(i) 5");
    algebra.macro_define("M", "4");
    EXPECT_EQ(outcome("M"), "(i) 4");
}

TEST_F(macros_clear, leaves_a_call_that_was_parsed_without_its_function) {
    algebra.macro_define("f(x)", "x + 1");
    ASSERT_TRUE(algebra.parse("f(3)"));
    algebra.macros_clear();
    EXPECT_EQ(program_outcome(), "! internal function f -- no longer defined");
    algebra.macro_define("f(x)", "x + 2");
    EXPECT_EQ(program_outcome(), "(i) 5");
}

TEST_F(macros_clear, in_a_running_script_function_ends_nothing) {
    algebra.define("clear", [](algebra_t& caller) {
        caller.macros_clear();
        return result_t(1);
    });
    algebra.macro_define("f(x)", "x + clear + x");
    expect({{"f(3)", "(i) 7"}, {"clear + f(3)", "! internal function f -- no longer defined"}});
}

} // namespace

// Each allocation of each operation of an evaluator fails in turn: nothing is half done.
#include <gtest/gtest.h>

#include <list>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "algebra/algebra.h"
#include "support/allocations.h"
#include "support/evaluation.h"

namespace {

using namespace ko::alg;

const std::string text = "a text that is too long for a short string";
const std::string name = "a_name_that_is_too_long_for_a_short_string";

/// Evaluates on a copy of the evaluator, which the evaluator then becomes.
result_t copied(algebra_t& algebra, result_t expression) {
    algebra_t copy(algebra);
    algebra = copy;
    return copy.evaluate(expression.string_get(false, 0));
}

result_t counted(algebra_t&, std::vector<result_t> values) {
    return static_cast<int>(values.size());
}

/// An evaluator with something of everything, and where its operations leave what they make.
struct world_t {
    world_t() {
        algebra.assign("x", 5);
        algebra.assign("s", text);
        algebra.macro_define("f(a, b)", "a + b * x + ('" + text + "' == s)");
        algebra.macro_define("MACRO_" + name, "f(x, 2)");
        algebra.define("copied", copied);
        algebra.define("counted", counted, 3);
        algebra.memory_push();
        algebra.parse("f(1, 2) + counted(1, 2, 3) ? -x : '" + text + "'");
    }

    /// What can be seen of the evaluator.
    std::string state() {
        std::list<std::pair<std::string, std::string>> definitions;
        algebra.macros_get(definitions);
        std::string seen = test::shown(algebra.get("x")) + test::shown(algebra.get("s"));
        for (const auto& [key, value] : definitions) {
            seen += key + "=" + value + ";";
        }
        seen += algebra.find(name) ? "found" : "not found";
        for (const std::string& known : algebra.function_names()) {
            seen += " " + known;
        }
        return seen + test::shown(algebra.evaluate("f(1, 2) + MACRO_" + name));
    }

    /// Evaluates what a failure may have left.
    void use() {
        test::outcome_of([&] { return algebra.evaluate(tokens); });
        test::outcome_of([&] { return algebra.evaluate(); });
        const algebra_t copy(algebra);
    }

    algebra_t algebra;
    list_t tokens;
    std::list<std::pair<std::string, std::string>> macros;
    std::string decoded;
};

/// Makes each allocation of `action` fail in turn, each time in a new world. Ends at the first
/// that is not reported as such or leaves the world changed.
/// @return how many there were
template <class A> long fail_each(const char* operation, A action) {
    for (long number = 0;; ++number) {
        world_t world;
        const std::string before = world.state();
        const std::string message = test::outcome([&] { action(world); }, number);
        if (message == "not reached") {
            return test::tell(operation, number);
        }
        // Some do without the memory that they ask for.
        if (message == "no exception") {
            continue;
        }
        world.use();
        const std::string after = world.state();
        if (message != "std::bad_alloc" || after != before) {
            ADD_FAILURE() << "allocation " << number << ": " << message << "\n" << after;
            return number;
        }
    }
}

TEST(exhaustion, leaves_variables_as_they_were) {
    EXPECT_GE(fail_each("assign", [](world_t& w) { w.algebra.assign("x", text); }), 1);
    EXPECT_GE(
        fail_each("assign a new variable", [](world_t& w) { w.algebra.assign(name, text); }), 3);
    EXPECT_GE(fail_each("operator[]", [](world_t& w) { w.algebra[name] = 1; }), 2);
    EXPECT_GE(fail_each("eval_and_assign",
                        [](world_t& w) { w.algebra.eval_and_assign(name, "x + f(1, 2)"); }),
              15);
}

TEST(exhaustion, leaves_the_memory_stack_as_it_was) {
    EXPECT_GE(fail_each("memory_push", [](world_t& w) { w.algebra.memory_push(); }), 1);
    EXPECT_GE(fail_each("memory_push after operator[]",
                        [](world_t& w) {
                            w.algebra["x"];
                            w.algebra.memory_push();
                        }),
              3)
        << "of variables that a reference was given out to";
    EXPECT_GE(
        fail_each("copy and memory_pop", [](world_t& w) { algebra_t(w.algebra).memory_pop(); }),
        2);
    EXPECT_GE(fail_each("copy and memory_pop_diff",
                        [](world_t& w) { algebra_t(w.algebra).memory_pop_diff(); }),
              2);
    EXPECT_GE(fail_each("copy, assign and memory_pop_diff",
                        [](world_t& w) {
                            algebra_t copy(w.algebra);
                            copy.assign("s", text + text);
                            copy.memory_pop_diff();
                        }),
              5);
    EXPECT_GE(fail_each("memory_copy after operator[]",
                        [](world_t& w) {
                            w.algebra["x"];
                            algebra_t().memory_copy(w.algebra);
                        }),
              2);
}

TEST(exhaustion, leaves_functions_and_macros_as_they_were) {
    EXPECT_GE(
        fail_each("macro_define a text", [](world_t& w) { w.algebra.macro_define(name, text); }),
        5);
    EXPECT_GE(fail_each("macro_define a new script function",
                        [](world_t& w) { w.algebra.macro_define(name + "(" + name + ")", "1"); }),
              15);
    EXPECT_GE(fail_each("macro_define a script function again",
                        [](world_t& w) { w.algebra.macro_define("f(a, c)", "1 + 1"); }),
              10);
    EXPECT_GE(fail_each("define", [](world_t& w) { w.algebra.define(name, counted, 2); }), 2);
    EXPECT_GE(fail_each("macros_get", [](world_t& w) { w.algebra.macros_get(w.macros); }), 4);
    EXPECT_GE(
        fail_each("macro_decode",
                  [](world_t& w) { w.algebra.macro_decode("1 + MACRO_" + name, w.decoded); }),
        2);
}

TEST(exhaustion, leaves_what_is_taken_away_as_it_was) {
    EXPECT_GE(fail_each("undefine in a copy",
                        [](world_t& w) { algebra_t(w.algebra).undefine("counted"); }),
              5);
    EXPECT_EQ(fail_each("undefine", [](world_t& w) { w.algebra.undefine("counted"); }), 0);
    EXPECT_GE(fail_each("erase in a copy", [](world_t& w) { algebra_t(w.algebra).erase("s"); }),
              3);
    EXPECT_EQ(fail_each("erase", [](world_t& w) { w.algebra.erase("s"); }), 0);
    EXPECT_EQ(fail_each("macros_clear", [](world_t& w) { w.algebra.macros_clear(); }), 0);
}

TEST(exhaustion, leaves_closures_as_they_were) {
    const std::string state = text;
    const host_function_t closure = [state](algebra_t&, const std::vector<result_t>&) {
        return result_t(state);
    };
    EXPECT_GE(
        fail_each("define a closure", [&](world_t& w) { w.algebra.define(name, closure, 1, 2); }),
        4);
    EXPECT_GE(fail_each("define a closure again",
                        [&](world_t& w) { w.algebra.define("counted", closure, 1, 2); }),
              3);
    EXPECT_GE(fail_each("resolver_set",
                        [&](world_t& w) {
                            w.algebra.resolver_set(
                                [state](const std::string&, result_t&) { return state.empty(); });
                        }),
              1);
    EXPECT_GE(fail_each("output_set",
                        [&](world_t& w) {
                            w.algebra.output_set(
                                [state](const std::string&) { FAIL() << state; });
                        }),
              1);
    EXPECT_EQ(fail_each("limits_set", [](world_t& w) { w.algebra.limits_set(limits_t()); }), 0);
}

TEST(exhaustion, while_names_are_listed_is_reported) {
    EXPECT_GE(fail_each("variable_names", [](world_t& w) { w.algebra.variable_names(); }), 1);
    EXPECT_GE(fail_each("function_names", [](world_t& w) { w.algebra.function_names(); }), 3);
    list_t tokens;
    EXPECT_TRUE(algebra_t().parse(name + " + sqrt(x) + '" + text + "'", tokens));
    EXPECT_GE(fail_each("names_get", [&](world_t& w) { w.algebra.names_get(tokens); }), 10);
}

TEST(exhaustion, leaves_the_value_and_the_error_of_an_evaluation_as_they_were) {
    const std::string expressions[] = {"x + f(1, 2) * 3 + s", "(x + s", "x + " + name};
    for (const std::string& expression : expressions) {
        EXPECT_GE(fail_each(("evaluate without exceptions " + expression).c_str(),
                            [&](world_t& w) {
                                result_t value(7);
                                ko::alg::error_t error; // the system has one, too
                                error.offset = 7;
                                try {
                                    w.algebra.evaluate(expression, value, error);
                                } catch (const std::bad_alloc&) {
                                    EXPECT_EQ(value.int_get(), 7);
                                    EXPECT_EQ(error.offset, 7U);
                                    throw;
                                }
                            }),
                  4);
    }
}

/// The first run compiles what the later ones use.
TEST(exhaustion, of_the_first_run_leaves_programs_that_compute) {
    for (long number = 0;; ++number) {
        algebra_t algebra;
        algebra.macro_define("sq(x)", "x * x");
        algebra.macro_define("cube(x)", "x * SQUARE");
        algebra.macro_define("SQUARE", "sq(x)");
        ASSERT_TRUE(algebra.parse("cube(3) + sq(2)"));
        const std::string message = test::outcome([&] { algebra.evaluate(); }, number);
        for (int run = 0; run < 20; ++run) {
            ASSERT_EQ(test::shown(algebra.evaluate()), "(i) 31") << number << ", run " << run + 2;
        }
        if (message == "not reached") {
            EXPECT_GE(test::tell("the first run of a program", number), 15);
            break;
        }
        EXPECT_EQ(message, "std::bad_alloc");
    }
}

TEST(exhaustion, does_not_reach_moves) {
    EXPECT_EQ(fail_each("move an evaluator",
                        [](world_t& w) { const algebra_t moved(std::move(w.algebra)); }),
              0);
    EXPECT_EQ(fail_each("move a list",
                        [](world_t& w) {
                            list_t moved(std::move(w.tokens));
                            w.tokens = std::move(moved);
                        }),
              0);
}

/// A host function moves its evaluator away, which copies it. Where memory is lacking the new one
/// says at its first use that it is none.
TEST(exhaustion, of_a_move_in_an_evaluation_shows_at_the_first_use) {
    const host_function_t steal = [](algebra_t& caller, const std::vector<result_t>&) {
        algebra_t stolen(std::move(caller));
        return stolen.evaluate("x");
    };
    int said = 0;
    for (long number = 0;; ++number) {
        world_t world;
        world.algebra.define("steal", steal, 0, 0);
        std::string seen;
        const std::string message = test::outcome(
            [&] { seen = test::outcome_of([&] { return world.algebra.evaluate("steal + 1"); }); },
            number);
        if (message == "not reached") {
            EXPECT_EQ(seen, "(i) 6");
            break;
        }
        EXPECT_TRUE(message == "std::bad_alloc" || message == "no exception") << message;
        said += seen == "! algebra_t -- the evaluator was moved from" ? 1 : 0;
        EXPECT_EQ(test::shown(world.algebra.evaluate("x + 1")), "(i) 6");
    }
    EXPECT_GE(said, 3);
}

TEST(exhaustion, leaves_a_copied_evaluator_as_it_was) {
    EXPECT_GE(fail_each("copy an evaluator and evaluate",
                        [](world_t& w) { algebra_t(w.algebra).evaluate(); }),
              30);
    EXPECT_GE(fail_each("assign to a new evaluator", [](world_t& w) { algebra_t() = w.algebra; }),
              3);
    EXPECT_GE(fail_each("copy and define in the copy",
                        [](world_t& w) {
                            algebra_t copy(w.algebra);
                            copy.macro_define("M", "1");
                            copy.macro_define("g(x)", "1");
                            copy.define("h", counted, 2);
                            copy.memory_push();
                        }),
              30);
}

TEST(exhaustion, leaves_an_evaluator_that_was_assigned_to_as_it_was) {
    algebra_t other(world_t().algebra);
    other.assign("x", 6);
    EXPECT_GE(fail_each("assign to an evaluator", [&](world_t& w) { w.algebra = other; }), 1);
}

TEST(exhaustion, while_parsing_is_reported) {
    const std::string good = "1 + MACRO_" + name + " ? (2.5, '" + text + "') : -x << 3";
    EXPECT_GE(
        fail_each("parse into tokens", [&](world_t& w) { w.algebra.parse(good, w.tokens); }), 10);
    EXPECT_GE(fail_each("parse into tokens, two signs",
                        [&](world_t& w) { w.algebra.parse("- -" + good, w.tokens); }),
              40);
    EXPECT_GE(fail_each("parse", [&](world_t& w) { w.algebra.parse(good); }), 3);
}

TEST(exhaustion, while_evaluating_is_reported) {
    const std::string expressions[] = {
        "f(1, 2) + s + copied('f(1, 2) + counted(1, 2, 3)')",
        "evaluate('x + 1') + assign('z', 'x + 1.5') + exists('s') + strlen(s)",
        "(y = 1) + quad(1, -3, 2) + max(s, '" + text + "') + return('" + text + "')",
    };
    for (const std::string& expression : expressions) {
        EXPECT_GE(fail_each(("evaluate " + expression).c_str(),
                            [&](world_t& w) { w.algebra.evaluate(expression); }),
                  15);
    }
    EXPECT_GE(fail_each("evaluate a tree",
                        [](world_t& w) {
                            w.algebra.parse("x ? s : 0", w.tokens);
                            w.tokens.front()->evaluate(w.algebra);
                        }),
              5);
    EXPECT_GE(fail_each("evaluate a list",
                        [](world_t& w) {
                            w.algebra.parse("s, x, s + s", w.tokens);
                            std::vector<result_t> values;
                            w.tokens.front()->evaluate(w.algebra, values);
                        }),
              10);
    EXPECT_GE(fail_each("evaluate_safe", [](world_t& w) { w.algebra.evaluate_safe(text); }), 5);
}

} // namespace

// Functions that the host program defines.

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

namespace {

using values_t = std::vector<result_t>;

result_t give_one(algebra_t&) {
    return 1;
}
result_t twice(algebra_t&, result_t a) {
    return a + a;
}
result_t subtract(algebra_t&, result_t a, result_t b) {
    return a - b;
}
result_t clamp(algebra_t&, result_t low, result_t value, result_t high) {
    return (value < low).int_get() ? low : (value > high).int_get() ? high : value;
}
result_t join(algebra_t&, values_t values) {
    result_t text("");
    for (const result_t& value : values) {
        text = text + value + result_t(";");
    }
    return text;
}

using host_function = test::evaluator_t;
using host_function_count = test::evaluator_t;
using host_exception = test::evaluator_t;
using reentry = test::evaluator_t;

/// An exception of the host's own.
struct own_exception_t {
    int number;
};

/// Functions of each kind that throw an `E`.
template <class E> void define_throwers(algebra_t& algebra) {
    algebra.define("t0", [](algebra_t&) -> result_t { throw E(); });
    algebra.define("t1", [](algebra_t&, result_t) -> result_t { throw E(); });
    algebra.define("t2", [](algebra_t&, result_t, result_t) -> result_t { throw E(); });
    algebra.define("t3", [](algebra_t&, result_t, result_t, result_t) -> result_t { throw E(); });
    algebra.define(
        "t4", [](algebra_t&, values_t) -> result_t { throw E(); }, 4);
}

/// Calls of them from each place that a call can stand in.
const char* const throwing_calls[] = {
    "t0()",
    "t1('a text that is too long for a short string')",
    "t2('a text that is too long for a short string', 2)",
    "t3(1, 'a text that is too long for a short string', 3)",
    "t4(1, 2, 'a text that is too long for a short string', 4)",
    "'a text that is too long for a short string' + max(1, -(t0())) ? (x = 1) : 2",
    "x = t1(t1(1))",
    "script()",
    "1 + script2(1, script())",
    "assign('x', 't3(1, 2, 3)')",
    "assign('x', 'assign(\"x\", \"max(1, script())\")')",
};

std::string not_enough(const std::string& line) {
    return "! syntax error in " + line + "  -- not enough operators";
}

} // namespace

TEST_F(host_function, of_each_kind_is_called_with_its_arguments) {
    algebra.define("one", give_one);
    algebra.define("twice", twice);
    algebra.define("sub", subtract);
    algebra.define("clamp", clamp);
    algebra.define("join", join, 4);
    expect({{"one() + one", "(i) 2"},
            {"twice(2.5)", "(f) 5"},
            {"sub(7, 2)", "(i) 5"},
            {"clamp(1, 9, 5)", "(i) 5"},
            {"join(1, 'b', 2.5, 1 + 1)", "(s) 1;b;2.5;2;"}});
}

TEST_F(host_function, of_a_list_may_take_one_argument_or_none) {
    algebra.define("join1", join, 1);
    algebra.define("join0", join, 0);
    expect({{"join1(5)", "(s) 5;"}, {"join0()", "(s) "}, {"join0(5)", not_enough("join0(5)")}});
}

TEST_F(host_function, without_arguments_binds_nothing) {
    algebra.define("one", give_one);
    expect({{"one + 1", "(i) 2"}, {"one(1)", not_enough("one(1)")}, {"-one", "(i) -1"}});
}

TEST_F(host_function, gets_the_evaluator_that_calls) {
    algebra.define("set", [](algebra_t& a, result_t value) {
        a.assign("x", value);
        return a.get("x") + result_t(1);
    });
    expect({{"set(5) + x", "(i) 11"}, {"x", "(i) 5"}});
}

TEST_F(host_function, gets_copies_of_its_arguments) {
    algebra.define("spoil", [](algebra_t&, result_t value) {
        value = result_t("spoilt");
        return value;
    });
    algebra.assign("x", 1);
    expect({{"spoil(x)", "(s) spoilt"}, {"x", "(i) 1"}});
}

TEST_F(host_function, replaces_a_built_in_one_for_later_programs) {
    ASSERT_TRUE(algebra.parse("abs(-3)"));
    algebra.define("abs", twice);
    EXPECT_EQ(program_outcome(), "(i) 3");
    EXPECT_EQ(outcome("abs(-3)"), "(i) -6");
}

TEST_F(host_function, replaces_one_of_another_kind_wholly) {
    algebra.define("f", give_one);
    algebra.define("f", subtract);
    EXPECT_EQ(outcome("f(5, 3)"), "(i) 2");
    algebra.define("f", join, 2);
    EXPECT_EQ(outcome("f(5, 3)"), "(s) 5;3;");
    algebra.define("f", twice);
    expect({{"f(5)", "(i) 10"},
            {"f(5, 3)", "! external function f -- 2 arguments found, 1 expected"}});
    algebra.define("f", give_one);
    EXPECT_EQ(outcome("f"), "(i) 1");
}

TEST_F(host_function, may_have_a_name_that_is_never_called) {
    for (const char* name : {"", "a b", "2f", "+"}) {
        EXPECT_NO_THROW(algebra.define(name, give_one));
    }
    expect({{"1 + 2", "(i) 3"}});
}

TEST_F(host_function, without_a_pointer_is_told_when_called) {
    algebra.define("f", static_cast<ko::alg::function1_t>(nullptr));
    algebra.define("g", static_cast<ko::alg::function0_t>(nullptr));
    expect({{"f(1)", "! external_function_t::evaluate() -- no prototype for function 'f'"},
            {"f(1, 2)", "! external function f -- 2 arguments found, 1 expected"},
            {"g", "! external_function_t::evaluate() -- no prototype for function 'g'"}});
}

TEST_F(host_function, is_found_before_a_script_function) {
    algebra.macro_define("f(a)", "a * 100");
    algebra.define("f", twice);
    EXPECT_EQ(outcome("f(3)"), "(i) 6");
}

TEST_F(host_function_count, is_told_when_it_differs) {
    algebra.define("f", join, 2);
    EXPECT_EQ(outcome("f(1, 2, 3)"), "! external function f -- 3 arguments found, 2 expected");
    EXPECT_THROWS(algebra.evaluate("f(1)"),
                  "external function f -- 1 arguments found, 2 expected");
}

TEST_F(host_function_count, is_checked_for_each_kind) {
    algebra.define("twice", twice);
    algebra.define("sub", subtract);
    algebra.define("clamp", clamp);
    expect({{"twice(1, 2)", "! external function twice -- 2 arguments found, 1 expected"},
            {"sub(1)", "! external function sub -- 1 arguments found, 2 expected"},
            {"clamp(1, 2)", "! external function clamp -- 2 arguments found, 3 expected"},
            {"clamp(1, 2, 3, 4)", "! external function clamp -- 4 arguments found, 3 expected"}});
}

TEST_F(host_function_count, is_taken_as_it_is_given) {
    algebra.define("f", join, -1);
    EXPECT_EQ(outcome("f(1)"), "! external function f -- 1 arguments found, -1 expected");
}

TEST_F(host_function_count, is_told_in_510_characters) {
    const std::string name(600, 'f');
    algebra.define(name, twice);
    const std::string whole = "external function " + name + " -- 2 arguments found, 1 expected";
    EXPECT_EQ(outcome(name + "(1, 2)"), "! " + whole.substr(0, 510));
}

TEST_F(host_function_count, of_many_arguments_is_told) {
    algebra.define("f", join, 3);
    EXPECT_EQ(outcome("f(1" + test::repeated(",1", 999) + ")"),
              "! external function f -- 1000 arguments found, 3 expected");
}

TEST_F(host_exception, of_the_library_s_type_reaches_the_caller) {
    algebra.define("f",
                   [](algebra_t&) -> result_t { throw ko::exception_t(std::string("own %s")); });
    EXPECT_THROWS(algebra.evaluate("1 + f()"), "own %s");
    expect({{"1 + 1", "(i) 2"}});
}

TEST_F(host_exception, of_any_type_passes_through) {
    algebra.define("number", [](algebra_t&) -> result_t { throw 42; });
    algebra.define("memory", [](algebra_t&) -> result_t { throw std::bad_alloc(); });
    EXPECT_THROW(algebra.evaluate("x = (y = 1) + number()"), int);
    EXPECT_THROW(algebra.evaluate_safe("number()"), int);
    EXPECT_THROW(algebra.eval_and_assign("x", "number()"), int);
    EXPECT_THROW(algebra.evaluate("memory()"), std::bad_alloc);
    EXPECT_THROW(algebra.evaluate_safe("1 + memory() * 2"), std::bad_alloc);
    EXPECT_FALSE(algebra.find("x"));
    expect({{"y + 1", "(i) 2"}});
}

template <class E> class host_exception_of : public test::evaluator_t {};
using thrown_types = testing::Types<int, own_exception_t, std::bad_alloc>;
// The last argument, a generator of names, may be empty, but not missing where Clang is strict.
TYPED_TEST_SUITE(host_exception_of, thrown_types, );

TYPED_TEST(host_exception_of, any_type_passes_through_every_call_and_entry) {
    define_throwers<TypeParam>(this->algebra);
    this->algebra.macro_define("script()", "t0()");
    this->algebra.macro_define("script2(a, b)", "a + b");
    for (const char* call : throwing_calls) {
        EXPECT_THROW(this->algebra.evaluate(call), TypeParam) << call;
        EXPECT_THROW(this->algebra.evaluate(), TypeParam) << call;
        EXPECT_THROW(this->algebra.evaluate_safe(call), TypeParam) << call;
        EXPECT_THROW(this->algebra.eval_and_assign("x", call), TypeParam) << call;
        list_t tokens;
        EXPECT_TRUE(this->algebra.parse(call, tokens)) << call;
        EXPECT_THROW(this->algebra.evaluate(tokens), TypeParam) << call;
        EXPECT_FALSE(this->algebra.find("x")) << call;
        EXPECT_EQ(this->outcome("max(1, 2)"), "(i) 2") << call;
    }
}

TEST_F(host_exception, of_any_type_leaves_the_program_usable) {
    algebra.define("f", [](algebra_t& a) -> result_t {
        if (!a.find("ready")) {
            throw std::runtime_error("not ready");
        }
        return 5;
    });
    ASSERT_TRUE(algebra.parse("max(1, f()) + 1"));
    EXPECT_THROW(algebra.evaluate(), std::runtime_error);
    EXPECT_THROW(algebra.evaluate(), std::runtime_error);
    algebra.assign("ready", 1);
    EXPECT_EQ(program_outcome(), "(i) 6");
}

TEST_F(host_exception, of_any_type_passes_through_script_functions) {
    algebra.define("f", [](algebra_t&) -> result_t { throw 42; });
    algebra.macro_define("call()", "f()");
    algebra.macro_define("outer()", "call()");
    EXPECT_THROW(algebra.evaluate("outer()"), int);
    expect({{"1 + 1", "(i) 2"}});
}

TEST_F(reentry, evaluates_another_text_within_a_call) {
    algebra.define("f", [](algebra_t& a) { return a.evaluate("40 + 1"); });
    EXPECT_EQ(outcome("1 + f() * 2 + (x = 3)"), "(i) 86");
    EXPECT_EQ(outcome("f() + f()"), "(i) 82");
    EXPECT_EQ(outcome("x"), "(i) 3");
}

TEST_F(reentry, evaluates_another_text_safely_within_a_call) {
    algebra.define("f", [](algebra_t& a) { return a.evaluate_safe("#"); });
    EXPECT_EQ(outcome("1 + f() + 2"), "(s) 1#2");
}

TEST_F(reentry, parses_another_program_within_a_call) {
    algebra.define("f", [](algebra_t& a) { return result_t(a.parse("1 + 1") && !a.parse("#")); });
    EXPECT_EQ(outcome("f() + 1 + f() * 10"), "(i) 12");
}

TEST_F(reentry, redefines_functions_within_a_call) {
    algebra.define("f", [](algebra_t& a) {
        a.define("f", give_one);
        a.define("abs", twice);
        a.macro_define("sq(x)", "x + 1000");
        return result_t(5);
    });
    algebra.macro_define("sq(x)", "x * x");
    EXPECT_EQ(outcome("sq(2) + f() + abs(-3)"), "(i) 12");
    EXPECT_EQ(outcome("f() + abs(-3)"), "(i) -5");
}

TEST_F(reentry, replaces_the_evaluator_within_a_call) {
    algebra.define("f", [](algebra_t& a) {
        a = algebra_t();
        return result_t(5);
    });
    EXPECT_EQ(outcome("f() * 2 + (x = 1)"), "(i) 11");
    EXPECT_EQ(outcome("x"), "(i) 1");
}

TEST_F(reentry, evaluates_the_running_program_again) {
    algebra.define("f", [](algebra_t& a) {
        if (a.find("inner")) {
            return result_t(5);
        }
        a.assign("inner", 1);
        return a.evaluate();
    });
    EXPECT_EQ(outcome("f() + 1"), "(i) 7");
}

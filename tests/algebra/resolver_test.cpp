// What a host supplies: values of unknown names, and a place for what is written.
#include "support/evaluation.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::list_t;
using ko::alg::result_t;

class resolver : public test::evaluator_t {
protected:
    resolver() {
        algebra.resolver_set([this](const std::string& name, result_t& value) {
            asked += name + " ";
            value = name == "live" ? result_t(samples++) : result_t("not taken");
            return name == "live" || name == "text";
        });
    }

    std::string asked;
    int samples = 10;
};

TEST_F(resolver, gives_the_value_of_a_name_that_is_no_variable) {
    expect({{"live + 1", "(i) 11"},
            {"live * 100 + live", "(i) 1112"},
            {"text + live", "(s) not taken13"}});
    EXPECT_EQ(asked, "live live live text live ");
    EXPECT_FALSE(algebra.find("live"));
}

TEST_F(resolver, does_not_hide_a_variable) {
    algebra.assign("live", 1);
    EXPECT_EQ(outcome("live"), "(i) 1");
    EXPECT_EQ(asked, "");
    algebra.erase("live");
    EXPECT_EQ(outcome("live"), "(i) 10");
}

TEST_F(resolver, may_not_know_a_name) {
    EXPECT_EQ(outcome("nobody + 1"),
              "! label_t::evaluate() -- access to undefined term, 'nobody'");
    EXPECT_EQ(asked, "nobody ");
}

TEST_F(resolver, is_asked_anew_by_each_evaluation_of_a_program) {
    ASSERT_TRUE(algebra.parse("live"));
    EXPECT_EQ(program_outcome(), "(i) 10");
    EXPECT_EQ(program_outcome(), "(i) 11");
    algebra.assign("live", 1);
    EXPECT_EQ(program_outcome(), "(i) 1");
}

TEST_F(resolver, is_not_asked_for_what_is_only_assigned_or_looked_for) {
    expect({{"other = 3", "(i) 3"}, {"defined('live')", "(i) 0"}, {"exists('live')", "(i) 0"}});
    EXPECT_FALSE(algebra.find("live"));
    EXPECT_THROW(algebra.get("live"), ko::exception_t);
    EXPECT_EQ(asked, "");
}

TEST_F(resolver, is_asked_inside_of_functions_and_texts) {
    algebra.macro_define("f(x)", "x + live");
    expect(
        {{"f(1)", "(i) 11"}, {"evaluate('live')", "(i) 11"}, {"assign('y', 'live')", "(i) 12"}});
}

TEST_F(resolver, goes_along_with_copies) {
    algebra_t copy(algebra);
    EXPECT_EQ(test::shown(copy.evaluate("live")), "(i) 10");
    algebra_t other;
    other = algebra;
    EXPECT_EQ(test::shown(other.evaluate("live")), "(i) 11");
    algebra.resolver_set({});
    EXPECT_EQ(outcome("live"), "! label_t::evaluate() -- access to undefined term, 'live'");
    EXPECT_EQ(test::shown(copy.evaluate("live")), "(i) 12");
}

TEST_F(resolver, must_not_use_the_evaluator_that_asks) {
    const auto uses = [this](auto use) {
        algebra.resolver_set([this, use](const std::string&, result_t& value) {
            use(algebra);
            value = 1;
            return true;
        });
    };
    const std::string refused = "! algebra_t -- used by its own resolver or output";
    algebra.macro_define("f(x)", "x + live");
    uses([](algebra_t& a) { a.assign("x", 1); });
    expect({{"live", refused}, {"'text' + live", refused}, {"f(1)", refused}});
    uses([](algebra_t& a) { a.evaluate("1"); });
    expect({{"live", refused}, {"evaluate('live')", refused}});
    uses([](algebra_t& a) { a.resolver_set({}); });
    expect({{"live", refused}, {"1 + 1", "(i) 2"}});
    uses([](algebra_t& a) { algebra_t copy(a); });
    EXPECT_EQ(outcome("live"), refused);
    list_t tokens;
    ASSERT_TRUE(algebra.parse("live", tokens));
    EXPECT_EQ(test::outcome_of([&] { return tokens.front()->evaluate(algebra); }), refused);
    uses([](algebra_t&) {});
    EXPECT_EQ(outcome("live"), "(i) 1");
}

TEST_F(resolver, may_use_another_evaluator) {
    algebra_t other;
    other.assign("live", "the value");
    algebra.resolver_set([&](const std::string& name, result_t& value) {
        value = other.evaluate(name + " + 1");
        return true;
    });
    EXPECT_EQ(outcome("'text' + live"), "(s) textthe value1");
}

TEST_F(resolver, ends_the_evaluation_by_an_exception) {
    algebra.resolver_set([](const std::string& name, result_t&) -> bool {
        throw ko::exception_t("no sample of " + name);
    });
    EXPECT_EQ(outcome("1 + live"), "! no sample of live");
}

class output : public test::evaluator_t {
protected:
    void capture() {
        algebra.output_set([this](const std::string& text) { written += "[" + text + "]"; });
    }

    /// Standard output of the evaluation of `text`.
    std::string standard(const std::string& text) {
        testing::internal::CaptureStdout();
        algebra.evaluate_safe(text);
        return testing::internal::GetCapturedStdout();
    }

    std::string written;
};

TEST_F(output, is_standard_output_by_default) {
    EXPECT_EQ(standard("func_output(5)"), "(i) 5\n");
    EXPECT_EQ(standard("1 / 0"), "Caught exception in expression : 1 / 0\n");
}

TEST_F(output, receives_what_is_written_line_by_line) {
    capture();
    EXPECT_EQ(standard("func_output(5) + func_output('a') + 1 / 0"), "");
    EXPECT_EQ(written, "[(i) 5\n][(s) a\n]"
                       "[Caught exception in expression : func_output(5) + func_output('a') + "
                       "1 / 0\n]");
}

TEST_F(output, receives_what_functions_and_texts_write) {
    capture();
    algebra.macro_define("f(x)", "func_output(x)");
    EXPECT_EQ(standard("f(1) + evaluate('func_output(2)') + assign('x', 'func_output(3)')"), "");
    EXPECT_EQ(written, "[(i) 1\n][(i) 2\n][(i) 3\n]");
}

TEST_F(output, goes_along_with_copies_and_back_to_the_default) {
    capture();
    algebra_t copy(algebra);
    algebra.output_set({});
    EXPECT_EQ(standard("func_output(1)"), "(i) 1\n");
    copy.evaluate("func_output(2)");
    EXPECT_EQ(written, "[(i) 2\n]");
}

TEST_F(output, must_not_use_the_evaluator_that_writes) {
    algebra.assign("s", "a text that is too long for a short string");
    algebra.output_set([this](const std::string&) { algebra.assign("s", 1); });
    const std::string refused = "! algebra_t -- used by its own resolver or output";
    EXPECT_EQ(outcome("s + func_output(1)"), refused);
    EXPECT_EQ(test::shown(algebra.evaluate_safe("1 / 0")), "(s) 1 / 0");
    EXPECT_EQ(outcome("s"), "(s) a text that is too long for a short string");
}

TEST_F(output, that_throws_ends_the_evaluation) {
    algebra.output_set([](const std::string&) { throw ko::exception_t("full"); });
    EXPECT_EQ(outcome("func_output(1)"), "! full");
}

} // namespace

// Expressions that are evaluated again and again. The preprocessor keeps their programs within
// bounds; what comes out never shows which of them it kept.
#include "xml_preprocessor/fixture.h"

namespace {

/// "i" and as many times "+1".
std::string sum(int terms) {
    std::string text = "i";
    for (int i = 0; i < terms; ++i) {
        text += "+1";
    }
    return text;
}

class repeated_expression : public test::preprocessor_test_t {
protected:
    /// What comes out of `content` in two passes, with i = 1 and i = 2.
    std::string twice(const std::string& content) {
        return run("<x:repeat index='i' first='1' last='2'>" + content + "</x:repeat>");
    }
};

TEST_F(repeated_expression, may_be_longer_than_all_that_is_kept) {
    EXPECT_EQ(twice("<a e:v='" + sum(150000) + "'/>"), "<a v=\"150001\" /><a v=\"150002\" />");
    EXPECT_EQ(twice("<x:evaluate expression='n=" + sum(150000) + "'/><a e:v='n'/>"),
              "<a v=\"150001\" /><a v=\"150002\" />");
}

TEST_F(repeated_expression, may_be_one_of_several_that_are_longer_together) {
    const std::string content =
        "<a e:v='" + sum(50000) + "'/><b e:v='" + sum(50001) + "'/><c e:v='" + sum(50002) + "'/>";
    EXPECT_EQ(twice(content), "<a v=\"50001\" /><b v=\"50002\" /><c v=\"50003\" />"
                              "<a v=\"50002\" /><b v=\"50003\" /><c v=\"50004\" />");
}

TEST_F(repeated_expression, that_does_not_parse_fails_whatever_its_length) {
    for (const int terms : {1, 150000}) {
        const std::string wrong = sum(terms) + "+";
        EXPECT_EQ(twice("<a e:v='" + wrong + "'/>"),
                  "<a v=\"" + wrong + "\" /><a v=\"" + wrong + "\" />");
        EXPECT_TRUE(fails("<x:evaluate expression='" + wrong + "'/>",
                          "binary_t::construct() -- expected right operand"));
    }
}

TEST_F(repeated_expression, that_is_equal_to_another_one_has_a_value_of_its_own) {
    EXPECT_EQ(twice("<a e:v='i+1'/><x:evaluate expression='i=i*10'/><b e:v='i+1'/>"),
              "<a v=\"2\" /><b v=\"11\" /><a v=\"3\" /><b v=\"21\" />");
}

TEST_F(repeated_expression, is_read_anew_in_the_numeric_only_mode) {
    const std::string content = "<a e:v='1+2'/><b e:v='\"s\"+1'/><c e:v='1 v'/>";
    run("<x:evaluate expression='v=1'/>");
    EXPECT_EQ(run(content), "<a v=\"3\" /><b v=\"s1\" /><c v=\"1 v\" />");
    preprocessor.algebra_get().numeric_only_set(true);
    EXPECT_EQ(run(content), "<a v=\"3\" /><b v=\"s1\" /><c v=\"1\" />");
    preprocessor.algebra_get().numeric_only_set(false);
    EXPECT_EQ(run(content), "<a v=\"3\" /><b v=\"s1\" /><c v=\"1 v\" />");
}

TEST_F(repeated_expression, of_a_process_inside_a_host_function_may_fail) {
    std::string message;
    preprocessor.algebra_get().define(
        "inner",
        [&](ko::alg::algebra_t&, const std::vector<ko::alg::result_t>&) {
            try {
                run("<x:evaluate expression='1+'/>");
            } catch (const ko::exception_t& e) {
                message = e.what();
            }
            return ko::alg::result_t(run("<a e:v='i+'/>"));
        },
        0, 0);
    EXPECT_EQ(twice("<a e:v='strlen(inner())'/>"), "<a v=\"12\" /><a v=\"12\" />");
    EXPECT_EQ(message, "binary_t::construct() -- expected right operand");
}

} // namespace

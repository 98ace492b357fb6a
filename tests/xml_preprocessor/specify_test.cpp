#include "xml_preprocessor/fixture.h"

#include "algebra/algebra.h"
#include "errorcode/errorcode.h"

#include <new>
#include <stdexcept>

#include "support/broken_output.h"

namespace {

class specify : public test::preprocessor_test_t {
protected:
    /// Standard output of a failure with that message.
    std::string lines(const std::string& content, const std::string& message) {
        return test::standard_output([&] { EXPECT_TRUE(fails(content, message)); });
    }
};

TEST_F(specify, assigns_each_piece_as_an_expression_and_runs_the_children) {
    EXPECT_EQ(run("<x:specify index='i' values='1,1+1,\"s\"'><a e:n='i'/></x:specify>"),
              "<a n=\"1\" /><a n=\"2\" /><a n=\"s\" />");
}

TEST_F(specify, evaluates_values_in_the_expression_namespace_only) {
    EXPECT_EQ(run("<x:evaluate expression='v=\"4,\"+5'/>"
                  "<x:specify index='i' e:values='v'><a e:n='i'/></x:specify>"),
              "<a n=\"4\" /><a n=\"5\" />");
}

TEST_F(specify, reads_numbers_as_the_evaluator_does) {
    for (const char* piece : {"7", " 8", "0", "12 ", "010", "+3", "-4", "1.5", "0x1f",
                              "999999999", "1000000000", "2147483648"}) {
        const std::string text = piece;
        const std::string expected =
            run("<x:evaluate expression='j = " + text + "'/><a e:n='j'/>");
        EXPECT_EQ(run("<x:specify index='i' values='1," + text +
                      "'><x:if condition='i!=1'>"
                      "<a e:n='i'/></x:if></x:specify>"),
                  expected)
            << text;
    }
}

TEST_F(specify, fails_where_nothing_can_be_assigned_to_the_index) {
    EXPECT_EQ(
        lines("<x:specify index='floor' values='1,2'/>", "external function %s -- parse error"),
        "Caught exception in specify : none\n");
}

TEST_F(specify, assigns_numbers_to_what_a_macro_says) {
    run("<x:specify index='i' values='1,2'/>");
    preprocessor.algebra_get().macro_define("i", "k");
    EXPECT_EQ(run("<x:specify index='i' values='3,4'><a e:n='k'/></x:specify>"),
              "<a n=\"3\" /><a n=\"4\" />");
}

TEST_F(specify, takes_its_index_as_text) {
    EXPECT_EQ(run("<x:specify e:index='i' values='7'><a e:n='i'/></x:specify>"), "<a n=\"7\" />");
}

TEST_F(specify, a_comma_splits_even_inside_quotes) {
    EXPECT_EQ(lines("<x:specify index='i' values='\"a,b\"'/>", "unexpected EOF encountered"),
              "Caught exception in specify : none\n");
}

TEST_F(specify, an_empty_piece_is_a_statement_without_a_right_side) {
    ko::alg::algebra_t algebra;
    EXPECT_FALSE(algebra.parse("i = "));
    const std::string message = algebra.parse_error_get();
    EXPECT_EQ(lines("<x:specify index='i' values=''><a/></x:specify>", message),
              "Caught exception in specify : none\n");
    EXPECT_EQ(lines("<x:specify index='i' values='1,'><b/></x:specify>", message),
              "Caught exception in specify : none\n");
    std::string names;
    for (const auto* element : output.elements) {
        names += element->name_get().size() == 1 ? element->name_get() : "";
    }
    EXPECT_EQ(names.find('a'), std::string::npos);
    EXPECT_NE(names.find('b'), std::string::npos) << "the piece before the last comma ran";
}

TEST_F(specify, the_line_names_the_attribute_namespace) {
    EXPECT_EQ(lines("<x:specify namespace='outputs' index='i' values='1/0'/>", "divide by zero"),
              "Caught exception in specify : outputs\n");
}

TEST_F(specify, the_line_is_written_for_missing_attributes) {
    EXPECT_EQ(lines("<x:specify/>", "attribute index missing in element specify"),
              "Caught exception in specify : none\n");
    EXPECT_EQ(lines("<x:specify index='i'/>", "attribute values missing in element specify"),
              "Caught exception in specify : none\n");
}

TEST_F(specify, the_line_is_written_for_whatever_fails_inside) {
    EXPECT_EQ(lines("<x:specify index='i' values='1'><a><x:insert name='no'/></a></x:specify>",
                    "insert name not defined: no"),
              "Caught exception in specify : none\n");
}

TEST_F(specify, nested_lines_are_written_innermost_first) {
    EXPECT_EQ(lines("<x:specify namespace='outer' index='i' values='1'><a>"
                    "<x:specify namespace='inner' index='j' values='1'>"
                    "<x:if condition='1/0'/></x:specify></a></x:specify>",
                    "divide by zero"),
              "Caught exception in specify : inner\nCaught exception in specify : outer\n");
}

TEST_F(specify, nothing_is_written_when_nothing_fails_or_when_it_fails_outside) {
    EXPECT_EQ(lines("<x:specify index='i' values='1'><a/></x:specify><x:if condition='1/0'/>",
                    "divide by zero"),
              "");
}

/// Throws a value of type E.
template <class E> class thrower_t : public ko::xpp::plugin_t {
public:
    explicit thrower_t(const E& what) : thrown(what) {}
    ko::lxml::element_t* generate(ko::lxml::element_t*) override { throw thrown; }

private:
    E thrown;
};

class specify_exceptions : public test::preprocessor_test_t {
protected:
    /// Standard output while a plug-in inside "specify" throws `thrown`, which must come out.
    template <class E> std::string lines_of(const E& thrown) {
        preprocessor.register_plugin("thrower", new thrower_t<E>(thrown));
        return test::standard_output([&] {
            EXPECT_THROW(run("<x:specify namespace='n' index='i' values='1'>"
                             "<x:plugin name='thrower'/></x:specify>"),
                         E);
        });
    }

    const std::string line = "Caught exception in specify : n\n";
};

TEST_F(specify_exceptions, an_integer_goes_on_unchanged) {
    EXPECT_EQ(lines_of(42), line);
}

TEST_F(specify_exceptions, a_standard_exception_goes_on_unchanged) {
    EXPECT_EQ(lines_of(std::range_error("text")), line);
}

TEST_F(specify_exceptions, allocation_failure_goes_on_unchanged) {
    EXPECT_EQ(lines_of(std::bad_alloc()), line);
}

TEST_F(specify_exceptions, an_error_code_keeps_its_code) {
    preprocessor.register_plugin("thrower", new thrower_t<ko::errorcode_t>(ko::errorcode_t(7)));
    const std::string written = test::standard_output([&] {
        EXPECT_THROWS(
            run("<x:specify index='i' values='1'><x:plugin name='thrower'/></x:specify>"), 7,
            "unkown ko::errorcode 0x7");
    });
    EXPECT_EQ(written, "Caught exception in specify : none\n");
}

TEST_F(specify_exceptions, an_exception_goes_on_where_the_line_cannot_be_written) {
    preprocessor.register_plugin("thrower", new thrower_t<int>(42));
    const test::broken_output_t broken;
    EXPECT_THROW(run("<x:specify index='i' values='1'><x:plugin name='thrower'/></x:specify>"),
                 int);
}

} // namespace

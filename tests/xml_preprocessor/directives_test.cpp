#include "xml_preprocessor/fixture.h"

namespace {

class directives : public test::preprocessor_test_t {};

TEST_F(directives, for_runs_its_children_while_the_condition_holds) {
    EXPECT_EQ(
        run("<x:for initialize='i=0' condition='i&lt;3' update='i=i+1'><a e:n='i'/></x:for>"),
        "<a n=\"0\" /><a n=\"1\" /><a n=\"2\" />");
}

TEST_F(directives, for_with_a_condition_false_at_once_only_evaluates_initialize) {
    EXPECT_EQ(run("<x:evaluate expression='u=0'/>"
                  "<x:for initialize='i=7' condition='0' update='u=1'><a/></x:for>"
                  "<b e:i='i' e:u='u'/>"),
              "<b i=\"7\" u=\"0\" />");
}

TEST_F(directives, for_reads_all_its_attributes_before_it_evaluates_any) {
    EXPECT_TRUE(fails("<x:for condition='0' update='0'/>",
                      "attribute initialize missing in element for"));
    EXPECT_TRUE(fails("<x:for initialize='i=7' update='0'/>",
                      "attribute condition missing in element for"));
    EXPECT_TRUE(fails("<x:for initialize='i=7' condition='0'/>",
                      "attribute update missing in element for"));
    EXPECT_EQ(run("<x:if condition='defined(\"i\")'><a/></x:if>"), "");
}

TEST_F(directives, repeat_runs_its_children_for_each_integer_from_first_to_last) {
    EXPECT_EQ(run("<x:repeat index='i' first='-1' last='2-1'><a e:n='i'/></x:repeat>"),
              "<a n=\"-1\" /><a n=\"0\" /><a n=\"1\" />");
}

TEST_F(directives, repeat_from_3_to_1_runs_nothing) {
    EXPECT_EQ(run("<x:repeat index='i' first='3' last='1'><a/></x:repeat>"), "");
    EXPECT_EQ(run("<x:if condition='defined(\"i\")'><a/></x:if>"), "");
}

TEST_F(directives, repeat_with_first_equal_to_last_runs_once) {
    EXPECT_EQ(run("<x:repeat index='i' first='5' last='5'><a e:n='i'/></x:repeat>"),
              "<a n=\"5\" />");
}

TEST_F(directives, repeat_up_to_the_largest_integer_ends) {
    EXPECT_EQ(run("<x:repeat index='i' first='2147483646' last='2147483647'>"
                  "<a e:n='i'/></x:repeat>"),
              "<a n=\"2147483646\" /><a n=\"2147483647\" />");
}

TEST_F(directives, repeat_truncates_its_bounds_to_integers) {
    EXPECT_EQ(run("<x:repeat index='i' first='1.9' last='2.9'><a e:n='i'/></x:repeat>"),
              "<a n=\"1\" /><a n=\"2\" />");
}

TEST_F(directives, repeat_evaluates_its_bounds_once_and_first_before_last) {
    EXPECT_EQ(run("<x:evaluate expression='t=1'/>"
                  "<x:repeat index='i' first='t=t*2' last='t=t+1'><a e:n='i'/></x:repeat>"
                  "<b e:t='t'/>"),
              "<a n=\"2\" /><a n=\"3\" /><b t=\"3\" />");
}

TEST_F(directives, repeat_counts_on_whatever_its_children_do_to_the_variable) {
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='2'><a e:n='i'/>"
                  "<x:evaluate expression='i=9'/></x:repeat><b e:n='i'/>"),
              "<a n=\"1\" /><a n=\"2\" /><b n=\"9\" />");
}

TEST_F(directives, repeat_requires_index_first_and_last_in_this_order) {
    EXPECT_TRUE(fails("<x:repeat/>", "attribute index missing in element repeat"));
    EXPECT_TRUE(fails("<x:repeat index='i'/>", "attribute first missing in element repeat"));
    EXPECT_TRUE(
        fails("<x:repeat index='i' first='1/0'/>", "attribute last missing in element repeat"));
}

TEST_F(directives, if_runs_its_children_when_the_integer_value_of_the_condition_is_not_0) {
    EXPECT_EQ(run("<x:if condition='2'><a/></x:if><x:if condition='0'><b/></x:if>"), "<a />");
    EXPECT_EQ(run("<x:if condition='0.5'><a/></x:if><x:if condition='-1.5'><b/></x:if>"),
              "<b />");
    EXPECT_EQ(run("<x:if condition='\"1\"'><a/></x:if>"), "");
    EXPECT_TRUE(fails("<x:if/>", "attribute condition missing in element if"));
}

TEST_F(directives, evaluate_has_side_effects_and_no_output) {
    EXPECT_EQ(run("<x:evaluate expression='v=6*7'><a/></x:evaluate><b e:v='v'/>"),
              "<b v=\"42\" />");
    EXPECT_TRUE(fails("<x:evaluate/>", "attribute expression missing in element evaluate"));
}

TEST_F(directives, define_outputs_nothing_and_runs_when_inserted) {
    EXPECT_EQ(run("<x:define name='d'><a e:v='v'/><b/></x:define>"
                  "<x:evaluate expression='v=1'/><x:insert name='d'/>"
                  "<x:evaluate expression='v=2'/><x:insert name='d'/>"),
              "<a v=\"1\" /><b /><a v=\"2\" /><b />");
    EXPECT_TRUE(fails("<x:define/>", "attribute name missing in element define"));
}

TEST_F(directives, a_later_definition_replaces_an_earlier_one) {
    EXPECT_EQ(run("<x:define name='d'><a/></x:define><x:define name='d'><b/></x:define>"
                  "<x:insert name='d'/>"),
              "<b />");
}

TEST_F(directives, definitions_and_variables_stay_from_call_to_call) {
    run("<x:define name='d'><a e:v='v'/></x:define><x:evaluate expression='v=3'/>");
    EXPECT_EQ(run("<x:insert name='d'/>"), "<a v=\"3\" />");
}

TEST_F(directives, insert_evaluates_its_name_in_the_expression_namespace_only) {
    const std::string define = "<x:define name='d1'><a/></x:define>";
    EXPECT_EQ(run(define + "<x:insert e:name='\"d\"+1'/>"), "<a />");
    EXPECT_TRUE(fails("<x:insert name='\"d\"+1'/>", "insert name not defined: \"d\"+1"));
    const std::string line = test::standard_output([&] {
        EXPECT_EQ(run("<x:insert e:name='d1'/>"), "<a />")
            << "what cannot be evaluated is itself";
    });
    EXPECT_EQ(line, "Caught exception in expression : d1\n");
}

TEST_F(directives, insert_of_an_unknown_name_fails) {
    EXPECT_TRUE(fails("<x:insert name='nope %s'/>", "insert name not defined: nope %s"));
    EXPECT_TRUE(fails("<x:insert/>", "attribute name missing in element insert"));
}

TEST_F(directives, switch_takes_the_first_case_that_is_equal) {
    EXPECT_EQ(run("<x:switch condition='1+1'><x:case expression='1'><a/></x:case>"
                  "<x:case expression='2'><b/><c/></x:case><x:case expression='2'><d/></x:case>"
                  "</x:switch>"),
              "<b /><c />");
}

TEST_F(directives, switch_compares_text_exactly) {
    const std::string cases = "<x:case expression='\"a\"'><a/></x:case>"
                              "<x:case expression='\"A\"'><b/></x:case>"
                              "<x:case expression='2.0'><c/></x:case></x:switch>";
    EXPECT_EQ(run("<x:switch condition='\"A\"'>" + cases), "<b />");
    EXPECT_EQ(run("<x:switch condition='2'>" + cases), "<c />") << "2.0 prints as 2";
    EXPECT_EQ(run("<x:switch condition='\"a \"'>" + cases), "");
}

TEST_F(directives, switch_takes_a_default_before_a_case_that_matches) {
    EXPECT_EQ(run("<x:switch condition='1'><x:default><a/></x:default>"
                  "<x:case expression='1'><b/></x:case></x:switch>"),
              "<a />");
}

TEST_F(directives, switch_takes_the_default_when_no_case_before_it_is_equal) {
    EXPECT_EQ(run("<x:switch condition='5'><x:case expression='1'><b/></x:case>"
                  "<x:default><a/></x:default></x:switch>"),
              "<a />");
}

TEST_F(directives, switch_evaluates_no_case_behind_the_chosen_one) {
    EXPECT_EQ(run("<x:switch condition='1'><x:case expression='1'><b/></x:case>"
                  "<x:case expression='1/0'/><x:case/></x:switch>"),
              "<b />");
}

TEST_F(directives, switch_looks_only_at_children_of_the_directive_namespace) {
    EXPECT_EQ(run("<x:switch condition='1'><default><a/></default><case expression='1'/>"
                  "<x:if condition='1'><a/></x:if></x:switch>"),
              "");
}

TEST_F(directives, switch_throws_what_its_expressions_throw) {
    EXPECT_TRUE(fails("<x:switch condition='1/0'/>", "divide by zero"));
    EXPECT_TRUE(
        fails("<x:switch condition='1'><x:case expression='1%0'/></x:switch>", "modulo by zero"));
    EXPECT_TRUE(fails("<x:switch/>", "attribute condition missing in element switch"));
    EXPECT_TRUE(fails("<x:switch condition='1'><x:case/></x:switch>",
                      "attribute expression missing in element case"));
}

TEST_F(directives, names_without_a_meaning_of_their_own_produce_nothing) {
    EXPECT_EQ(run("<x:case expression='1'><a/></x:case><x:default><a/></x:default>"
                  "<x:searchpath><a/></x:searchpath><x:nonsense><a/></x:nonsense><b/>"),
              "<b />");
}

TEST_F(directives, directives_nest) {
    EXPECT_EQ(
        run("<x:repeat index='i' first='1' last='2'><row>"
            "<x:for initialize='j=0' condition='j&lt;i' update='j=j+1'>"
            "<x:if condition='i+j!=1'><c e:ij='\"\"+i+j'/></x:if></x:for></row></x:repeat>"),
        "<row /><row ><c ij=\"20\" /><c ij=\"21\" /></row>");
}

TEST_F(directives, errors_of_the_evaluator_propagate) {
    for (const char* directive : {"<x:for initialize='1/0' condition='1' update='0'/>",
                                  "<x:for initialize='0' condition='1/0' update='0'/>",
                                  "<x:for initialize='0' condition='1' update='1/0'/>",
                                  "<x:repeat index='i' first='1/0' last='1'/>",
                                  "<x:repeat index='i' first='1' last='1/0'/>",
                                  "<x:if condition='1/0'/>", "<x:evaluate expression='1/0'/>"}) {
        EXPECT_TRUE(fails(directive, "divide by zero")) << directive;
    }
}

TEST_F(directives, output_before_an_exception_stays_in_the_output_document) {
    EXPECT_TRUE(fails("<a/><x:if condition='1/0'/>", "divide by zero"));
    std::string names;
    for (const auto* element : output.elements) {
        names += element->name_get() == "a" ? "a" : "";
    }
    EXPECT_EQ(names, "a");
    EXPECT_EQ(run("<b/>"), "<b />") << "and the preprocessor can be used again";
}

TEST_F(directives, a_message_holds_long_names_whole) {
    const std::string name(1000, 'n');
    EXPECT_TRUE(fails("<x:insert name='" + name + "'/>", "insert name not defined: " + name));
}

TEST_F(directives, an_attribute_is_found_whatever_its_namespace) {
    EXPECT_EQ(run("<x:if x:condition='1'><a/></x:if><x:if e:condition='1'><b/></x:if>"),
              "<a /><b />");
    EXPECT_EQ(run("<x:if xmlns:o='other' o:condition='0' condition='1'><a/></x:if>"), "<a />")
        << "the one without a namespace is the first in the element's order";
}

TEST_F(directives, an_attribute_without_a_namespace_comes_before_all_others) {
    // "r" is the first name that the document interns, and so the first namespace in order.
    EXPECT_EQ(run("<x:if xmlns:q='r' q:condition='0' condition='1'><a/></x:if>"), "<a />");
    EXPECT_EQ(run("<x:if xmlns:q='r' q:condition='1' condition='0'><a/></x:if>"), "");
}

/// Attributes that no directive has, too many to go through one by one.
std::string many_attributes() {
    std::string attributes;
    for (int i = 0; i < 40; ++i) {
        attributes += " a" + std::to_string(i) + "='0' x:b" + std::to_string(i) + "='0'";
    }
    return attributes;
}

TEST_F(directives, an_attribute_is_found_among_any_number_of_others) {
    const std::string others = many_attributes();
    EXPECT_EQ(run("<x:if condition='1' e:condition='0'" + others + "><a/></x:if>"), "<a />");
    EXPECT_EQ(run("<x:if x:condition='1'" + others + "><a/></x:if>"), "<a />");
    EXPECT_TRUE(fails("<x:if" + others + "/>", "attribute condition missing in element if"));
}

TEST_F(directives, an_attribute_without_a_namespace_comes_first_among_any_number_of_others) {
    const std::string q = " xmlns:q='r'" + many_attributes();
    EXPECT_EQ(run("<x:if q:condition='0' condition='1'" + q + "><a/></x:if>"), "<a />");
    EXPECT_EQ(run("<x:if q:condition='1' condition='0'" + q + "><a/></x:if>"), "");
}

TEST_F(directives, the_first_of_several_attributes_decides_whether_it_is_evaluated) {
    const std::string define = "<x:define name='1+1'><text/></x:define>"
                               "<x:define name='2'><value/></x:define>";
    EXPECT_EQ(run(define + "<x:insert name='1+1' e:name='2'/>"), "<text />");
    EXPECT_EQ(run(define + "<x:insert xmlns:o='other' o:name='3' e:name='1+1'/>"), "<value />")
        << "the namespace of expressions came up before the other one";
    EXPECT_EQ(run("<x:specify index='i' values='1' e:values='\"2,3\"'><a e:i='i'/></x:specify>"),
              "<a i=\"1\" />");
}

TEST_F(directives, a_blank_expression_fails_with_the_parse_error_before_it) {
    EXPECT_TRUE(fails("<x:if condition=' '/>", ""));
    EXPECT_TRUE(
        fails("<x:evaluate expression='1 2'/>", "syntax error in 1 2  -- not enough operators"));
    EXPECT_TRUE(
        fails("<x:evaluate expression=''/>", "syntax error in 1 2  -- not enough operators"));
}

} // namespace

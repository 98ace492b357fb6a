#include "xml_preprocessor/fixture.h"

namespace {

using ko::lxml::element_t;
using ko::xpp::preprocessor_t;

class processing : public test::preprocessor_test_t {};

TEST_F(processing, an_ordinary_element_is_copied_with_text_cdata_attributes_and_children) {
    EXPECT_EQ(run("<a k='v'>one<![CDATA[two <]]><b/>three</a>"),
              "<a k=\"v\" >onethree<![CDATA[two <]]><b /></a>");
}

TEST_F(processing, an_element_keeps_its_namespace) {
    EXPECT_EQ(run("<a xmlns='urn:one'><b xmlns='urn:two'/></a>"),
              "<a xmlns=\"urn:one\" ><b xmlns=\"urn:two\" /></a>");
}

TEST_F(processing, text_of_a_directive_is_dropped) {
    EXPECT_EQ(run("<x:if condition='1'>text<a/></x:if>"), "<a />");
}

TEST_F(processing, an_expression_attribute_is_output_as_a_plain_one_with_its_value) {
    EXPECT_EQ(run("<a e:n='1+2'/>"), "<a n=\"3\" />");
    EXPECT_EQ(run("<a e:f='1/4.0' e:s='\"x\"+1'/>"), "<a f=\"0.25\" s=\"x1\" />");
}

TEST_F(processing, an_evaluated_attribute_replaces_a_plain_one_of_the_same_name) {
    EXPECT_EQ(run("<a n='plain' e:n='1+2'/>"), "<a n=\"3\" />");
}

TEST_F(processing, an_attribute_of_another_namespace_loses_the_namespace_only) {
    EXPECT_EQ(run("<a xmlns:o='other' o:n='1+2' x:m='1+2'/>"), "<a m=\"1+2\" n=\"1+2\" />");
}

TEST_F(processing, an_expression_attribute_that_cannot_be_evaluated_keeps_its_text) {
    std::string out;
    const std::string line =
        test::standard_output([&] { out = run("<a e:p='1 +' e:u='missing'/>"); });
    EXPECT_EQ(out, "<a p=\"1 +\" u=\"missing\" />");
    EXPECT_EQ(line, "Caught exception in expression : missing\n");
}

TEST_F(processing, expression_attributes_are_evaluated_in_the_order_of_the_element) {
    EXPECT_EQ(run("<a e:one='t=1' e:two='t=t+1'/><b e:t='t'/>"),
              "<a one=\"1\" two=\"2\" /><b t=\"2\" />");
}

TEST_F(processing, the_returned_element_is_not_made_the_root) {
    const auto* top = preprocessor.process(source("<a/>"), flags);
    EXPECT_EQ(top->document, &output);
    EXPECT_EQ(output.root, nullptr);
}

TEST_F(processing, a_temporary_element_stays_in_the_output_document_with_all_that_came_out) {
    const auto* top = preprocessor.process(
        source("<x:if xmlns:x='kobase.org/xmlns/xmlpreprocessor' condition='1'><a/><b/></x:if>"),
        flags);
    EXPECT_EQ(test::printed(top), "<a />") << "the first of two";
    ASSERT_EQ(output.elements.size(), 3U);
    for (const auto* element : output.elements) {
        if (element->name_get() == "temporary") {
            EXPECT_EQ(test::printed(element), "<temporary ><a /><b /></temporary>");
            EXPECT_EQ(element->ns, 0);
        }
    }
}

TEST_F(processing, a_root_directive_that_outputs_nothing_gives_null) {
    EXPECT_EQ(process("<x:if xmlns:x='kobase.org/xmlns/xmlpreprocessor' condition='0'/>"),
              "null");
}

TEST_F(processing, null_is_an_exception) {
    EXPECT_THROWS(preprocessor.process(nullptr, flags),
                  "preprocessor_t::process() -- source is null");
}

TEST_F(processing, the_source_is_left_as_it_was) {
    auto* top = source(test::wrapped("<x:if condition='1'><a e:n='1'/></x:if>"));
    const std::string before = test::printed(top);
    preprocessor.process(top, flags);
    EXPECT_EQ(test::printed(top), before);
}

TEST_F(processing, the_source_may_be_in_the_output_document) {
    output.load_from_string(
        test::wrapped("<x:repeat index='i' first='1' last='2'><a/></x:repeat>"));
    EXPECT_EQ(test::printed(preprocessor.process(output.root, flags)), "<r ><a /><a /></r>");
}

TEST_F(processing, what_came_out_stands_when_all_else_is_gone) {
    const element_t* top = nullptr;
    {
        ko::lxml::document_t from;
        from.load_from_string(test::wrapped("<x:if condition='1'><a e:n='1+1'>t</a></x:if>"));
        preprocessor_t other(output, nullptr);
        top = other.process(from.root, flags);
    }
    EXPECT_EQ(test::printed(top), "<r ><a n=\"2\" >t</a></r>");
}

TEST_F(processing, keywords_are_added_to_the_table_of_the_source) {
    auto* top = source("<a/>");
    EXPECT_EQ(top->atoms->find("switch"), -1);
    preprocessor.process(top, flags);
    EXPECT_NE(top->atoms->find("switch"), -1);
}

class flags_of_process : public test::preprocessor_test_t {
protected:
    /// What a directive "include" does is seen by the failure to find the file.
    testing::AssertionResult includes(const std::string& content) {
        return fails(content, "failed to load xml file:nope.xml");
    }

    const std::string include = "<x:include file='nope.xml'/>";
};

TEST_F(flags_of_process, without_the_include_flag_an_include_is_dropped) {
    flags = static_cast<preprocessor_t::flags_e>(0);
    EXPECT_EQ(run(include + "<x:include/>"), "");
    flags = preprocessor_t::include_comments;
    EXPECT_EQ(run(include), "");
    flags = preprocessor_t::include_comments | preprocessor_t::process_include;
    EXPECT_TRUE(includes(include));
}

TEST_F(flags_of_process, pragma_sets_the_include_flag_for_its_children) {
    flags = preprocessor_t::include_comments;
    EXPECT_TRUE(includes("<x:pragma process_include='true'>" + include + "</x:pragma>"));
    EXPECT_EQ(run("<x:pragma process_include='true'><a/></x:pragma>" + include), "<a />");
}

TEST_F(flags_of_process, pragma_clears_the_include_flag_with_anything_but_true) {
    for (const char* value : {"process_include='yes'", "process_include='false'", "",
                              "process_include='True'", "include_comments='true'"}) {
        const std::string open = std::string("<x:pragma ") + value + ">";
        EXPECT_EQ(run(open + include + "</x:pragma>"), "") << value;
        EXPECT_TRUE(includes(open + "</x:pragma>" + include)) << "restored after " << value;
    }
}

TEST_F(flags_of_process, pragma_nests) {
    EXPECT_TRUE(includes("<x:pragma><x:pragma process_include='true'><a/></x:pragma>" + include +
                         "</x:pragma>" + include));
}

TEST_F(flags_of_process, each_call_replaces_the_flags_whatever_an_exception_left) {
    EXPECT_TRUE(fails("<x:pragma><x:if condition='1/0'/></x:pragma>", "divide by zero"));
    EXPECT_TRUE(includes(include));
}

} // namespace

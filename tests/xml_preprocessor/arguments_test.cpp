#include "xml_preprocessor/fixture.h"

namespace {

class insert_argument : public test::preprocessor_test_t {
protected:
    /// The value of the argument `v` as an expression attribute gives it, or as `form` says.
    std::string value(const std::string& form = "v") { return run("<a e:v='" + form + "'/>"); }
};

TEST_F(insert_argument, takes_integers) {
    preprocessor.insert_argument("v", 7);
    EXPECT_EQ(value("v/2"), "<a v=\"3\" />");
}

TEST_F(insert_argument, takes_doubles) {
    preprocessor.insert_argument("v", 7.0);
    EXPECT_EQ(value("v/2"), "<a v=\"3.5\" />");
}

TEST_F(insert_argument, takes_a_boolean_as_the_integer_0_or_1) {
    preprocessor.insert_argument("v", true);
    EXPECT_EQ(value("v/2+v"), "<a v=\"1\" />");
    preprocessor.insert_argument("v", false);
    EXPECT_EQ(value(), "<a v=\"0\" />");
}

TEST_F(insert_argument, takes_text_that_is_not_evaluated) {
    preprocessor.insert_argument("v", std::string("1+1"));
    EXPECT_EQ(value(), "<a v=\"1+1\" />");
}

TEST_F(insert_argument, takes_a_literal_as_text_and_not_as_a_boolean) {
    preprocessor.insert_argument("v", "1+1");
    EXPECT_EQ(value("v+\"!\""), "<a v=\"1+1!\" />");
}

TEST_F(insert_argument, replaces_what_was_there_with_its_type) {
    preprocessor.insert_argument("v", "text");
    preprocessor.insert_argument("v", 3);
    EXPECT_EQ(value("v*2"), "<a v=\"6\" />");
}

TEST_F(insert_argument, is_seen_by_directives_and_may_be_changed_by_them) {
    preprocessor.insert_argument("v", 1);
    EXPECT_EQ(run("<x:if condition='v'><a/></x:if><x:evaluate expression='v=0'/>"
                  "<x:if condition='v'><b/></x:if>"),
              "<a />");
}

TEST_F(insert_argument, refuses_null) {
    const char* null = nullptr;
    EXPECT_THROWS(preprocessor.insert_argument("v", null),
                  "preprocessor_t::insert_argument() -- value is null");
}

class set_namespace : public test::preprocessor_test_t {
protected:
    /// A source in which "x" and "e" are bound to these names.
    std::string bound(const std::string& xpp, const std::string& xpr) {
        return process("<r xmlns:x='" + xpp + "' xmlns:e='" + xpr +
                       "'><x:if condition='1'><a e:n='1+1'/></x:if></r>");
    }
    std::string by_default() { return bound(ko::xpp::default_xpp_uri, ko::xpp::default_xpr_uri); }

    const std::string executed = "<r ><a n=\"2\" /></r>";
};

TEST_F(set_namespace, the_defaults_have_the_names_of_the_project) {
    EXPECT_EQ(ko::xpp::default_xpp_uri, "kobase.org/xmlns/xmlpreprocessor");
    EXPECT_EQ(ko::xpp::default_xpr_uri, "kobase.org/xmlns/xmlpreprocessor/expressionevaluator");
    EXPECT_EQ(by_default(), executed);
}

TEST_F(set_namespace, other_names_take_the_place_of_the_defaults) {
    preprocessor.set_namespace("urn:d", "urn:v");
    EXPECT_EQ(bound("urn:d", "urn:v"), executed);
    EXPECT_EQ(by_default(), "<r ><if xmlns=\"kobase.org/xmlns/xmlpreprocessor\" "
                            "condition=\"1\" ><a n=\"1+1\" /></if></r>");
}

TEST_F(set_namespace, takes_effect_between_calls_on_one_source) {
    auto* top = source("<r xmlns:x='urn:d'><x:if condition='0'><a/></x:if></r>");
    EXPECT_NE(test::printed(preprocessor.process(top, flags)), "<r />");
    preprocessor.set_namespace("urn:d", "urn:v");
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)), "<r />");
}

TEST_F(set_namespace, without_arguments_goes_back_to_the_defaults) {
    preprocessor.set_namespace("urn:d", "urn:v");
    preprocessor.set_namespace();
    EXPECT_EQ(by_default(), executed);
}

TEST_F(set_namespace, is_safe_after_the_source_is_gone) {
    EXPECT_EQ(by_default(), executed);
    sources.clear();
    preprocessor.set_namespace("urn:d", "urn:v");
    EXPECT_EQ(bound("urn:d", "urn:v"), executed);
}

TEST_F(set_namespace, may_make_elements_without_a_namespace_directives) {
    preprocessor.set_namespace("", "urn:v");
    EXPECT_EQ(process("<if condition='1'><a xmlns='urn:o'/></if>"), "<a xmlns=\"urn:o\" />");
}

class set_namespace_with_cache : public testing::Test {};

TEST_F(set_namespace_with_cache, enters_the_names_into_the_table_of_the_cache_at_once) {
    ko::xpp::file_cache_t cache;
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor(output, &cache);
    EXPECT_NE(cache.atom_table_get().find(ko::xpp::default_xpp_uri), -1);
    EXPECT_NE(cache.atom_table_get().find("specify"), -1);
    EXPECT_EQ(cache.atom_table_get().find("urn:d"), -1);
    preprocessor.set_namespace("urn:d", "urn:v");
    EXPECT_NE(cache.atom_table_get().find("urn:d"), -1);
    EXPECT_NE(cache.atom_table_get().find("urn:v"), -1);
}

} // namespace

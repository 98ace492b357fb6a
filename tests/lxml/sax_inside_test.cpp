#include "lxml/sax.h"

#include <gtest/gtest.h>

#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;

/// A builder that is driven by hand.
class sax : public testing::Test {
protected:
    using attributes_t = std::vector<std::pair<const char*, const char*>>;

    void start(const char* name, const attributes_t& attributes = {}) {
        std::vector<const char*> flat;
        for (const auto& [key, value] : attributes) {
            flat.insert(flat.end(), {key, value});
        }
        flat.push_back(nullptr);
        builder.start_element(name, flat.data());
    }
    void text(const std::string& piece) {
        builder.character_data(piece.data(), static_cast<int>(piece.size()));
    }

    document_t doc;
    const load_options_t options = {};
    const ko::xml::expat_parser_t parser{true};
    sax_t builder{doc, options, parser};
};

TEST_F(sax, has_no_root_before_the_top_element_has_ended) {
    start("a");
    EXPECT_EQ(builder.root_get(), nullptr);
    builder.end_element("a");
    EXPECT_EQ(test::shape(builder.root_get()), "a");
}

TEST_F(sax, links_a_child_when_it_ends) {
    start("a");
    start("b");
    EXPECT_EQ(doc.elements.size(), 2u);
    builder.end_element("b");
    builder.end_element("a");
    EXPECT_EQ(test::shape(builder.root_get()), "a(b)");
}

TEST_F(sax, ignores_text_outside_the_top_element) {
    text("before");
    start("a");
    text("in");
    builder.end_element("a");
    text("after");
    EXPECT_EQ(builder.root_get()->text, "in");
}

TEST_F(sax, splits_names_of_one_to_three_parts) {
    start("a", {{"b", "1"}, {"urn:y|c", "2"}, {"urn:z|d|q", "3"}});
    start("urn:x|e");
    start("urn:x|f|p");
    builder.end_element("urn:x|f|p");
    builder.end_element("urn:x|e");
    builder.end_element("a");
    EXPECT_EQ(test::shape(builder.root_get()), "a(e(f))");
    EXPECT_EQ(builder.root_get()->attribute_get("c", "urn:y")->value, "2");
    EXPECT_EQ(builder.root_get()->attribute_get("d", "urn:z")->value, "3");
    EXPECT_EQ(doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(doc.uri_prefix_expand("q"), "urn:z");
}

TEST_F(sax, refuses_names_of_other_numbers_of_parts) {
    EXPECT_THROWS(start(""), "error parsing uri : got 0 tokens");
    EXPECT_THROWS(start("||"), "error parsing uri : got 0 tokens");
    EXPECT_THROWS(start("a|b|c|d"), "error parsing uri : got 4 tokens");
    EXPECT_THROWS(start("a", {{"a|b|c|d|e", "1"}}), "error parsing uri : got 5 tokens");
}

TEST_F(sax, keeps_the_last_of_several_attributes_of_one_name) {
    start("a", {{"urn:y|b|p", "1"}, {"c", "2"}, {"urn:y|b|q", "3"}});
    builder.end_element("a");
    EXPECT_EQ(builder.root_get()->attributes.size(), 2u);
    EXPECT_EQ(builder.root_get()->attribute_get("b", "urn:y")->value, "3");
}

TEST_F(sax, switches_between_text_and_cdata) {
    start("a");
    builder.start_cdata();
    text("q");
    builder.end_cdata();
    text("t");
    builder.end_element("a");
    EXPECT_EQ(builder.root_get()->cdata, "q");
    EXPECT_EQ(builder.root_get()->text, "t");
}

} // namespace

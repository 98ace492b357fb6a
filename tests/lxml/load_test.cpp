#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/broken_output.h"
#include "support/expat_failure.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"
#include "support/utf16.h"

namespace {

using namespace ko::errorcode;
using namespace ko::lxml;
using test::loaded_t;
using test::shape;
using test::temp_dir_t;

/// What `action` writes to standard output; an exception of it is swallowed.
template <class A> std::string output_of(A&& action) {
    testing::internal::CaptureStdout();
    try {
        action();
    } catch (const std::exception&) {
    }
    return testing::internal::GetCapturedStdout();
}

TEST(load, builds_the_tree_of_a_file) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a><b/><c><d/></c></a>");
    document_t doc;
    EXPECT_TRUE(doc.load(path));
    EXPECT_EQ(shape(doc.root), "a(b,c(d))");
    EXPECT_EQ(doc.file_name, path);
    EXPECT_EQ(doc.elements.size(), 4u);
}

TEST(load, writes_nothing_when_all_is_well) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a/>");
    EXPECT_EQ(output_of([&] { document_t().load(path); }), "");
}

TEST(load, reports_a_failure_on_standard_output) {
    EXPECT_EQ(output_of([] { document_t().load("/nowhere/100%s.xml"); }),
              "Caught exception in /nowhere/100%s.xml\n");
}

TEST(load, throws_the_error_of_the_reader_where_the_line_cannot_be_written) {
    document_t doc;
    const test::broken_output_t broken;
    EXPECT_THROWS(doc.load("/nowhere/a.xml"), xml_file_open,
                  "/nowhere/a.xml: xml file open failure");
}

TEST(load, throws_the_error_of_the_reader) {
    const temp_dir_t dir;
    document_t doc;
    testing::internal::CaptureStdout();
    EXPECT_THROWS(doc.load("/nowhere/a.xml"), xml_file_open,
                  "/nowhere/a.xml: xml file open failure");
    EXPECT_THROWS(doc.load(dir.path()), xml_file_read, dir.path() + ": xml file read failure");
    EXPECT_THROWS(doc.load(dir.write("bad.xml", "<a>\n</b>")), xml_parse_error,
                  test::parse_error_message("<a>\n</b>"));
    testing::internal::GetCapturedStdout();
}

TEST(load, that_fails_keeps_the_root_and_the_elements_made) {
    loaded_t tree("<a/>");
    testing::internal::CaptureStdout();
    const temp_dir_t dir;
    EXPECT_ANY_THROW(tree.doc.load(dir.write("bad.xml", "<b><c/></d>")));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(shape(tree.doc.root), "a");
    EXPECT_EQ(tree.doc.elements.size(), 3u);
    EXPECT_EQ(tree.doc.file_name, dir.path("bad.xml"));
}

TEST(load, that_fails_leaves_a_document_that_can_load) {
    document_t doc;
    EXPECT_ANY_THROW(doc.load_from_string("<b>"));
    doc.load_from_string("<a/>");
    EXPECT_EQ(shape(doc.root), "a");
}

TEST(load, again_keeps_the_elements_of_the_tree_before) {
    loaded_t tree("<a><b/></a>");
    tree.doc.load_from_string("<c/>");
    EXPECT_EQ(shape(tree.doc.root), "c");
    EXPECT_EQ(tree.doc.elements.size(), 3u);
}

TEST(load_raw, leaves_the_root_and_the_file_name_alone) {
    const temp_dir_t dir;
    loaded_t tree("<a/>");
    const element_t* const top = tree.doc.load_raw(dir.write("b.xml", "<b><c/></b>"));
    EXPECT_EQ(shape(top), "b(c)");
    EXPECT_EQ(top->document, &tree.doc);
    EXPECT_EQ(shape(tree.doc.root), "a");
    EXPECT_EQ(tree.doc.file_name, "");
}

TEST(load_raw, writes_nothing_when_it_fails) {
    document_t doc;
    EXPECT_EQ(output_of([&] { doc.load_raw("/nowhere/a.xml"); }), "");
}

TEST(load_from_string, builds_the_tree_of_a_text) {
    document_t doc;
    EXPECT_TRUE(doc.load_from_string("<a><b/></a>"));
    EXPECT_EQ(shape(doc.root), "a(b)");
    EXPECT_EQ(doc.file_name, "");
}

TEST(load_from_string, throws_the_error_of_the_reader_without_output) {
    document_t doc;
    EXPECT_EQ(output_of([&] { doc.load_from_string("<a>"); }), "");
    EXPECT_THROWS(doc.load_from_string("<a>"), xml_parse_error, test::parse_error_message("<a>"));
}

TEST(load_from_string_raw, leaves_the_root_alone) {
    loaded_t tree("<a/>");
    EXPECT_EQ(shape(tree.doc.load_from_string_raw("<b/>")), "b");
    EXPECT_EQ(shape(tree.doc.root), "a");
}

TEST(loaded_tree, concatenates_the_texts_around_children) {
    loaded_t tree("<a>x<b/>y</a>");
    EXPECT_EQ(tree.doc.root->text, "xy");
    EXPECT_EQ(shape(tree.doc.root), "a(b)");
}

TEST(loaded_tree, keeps_cdata_and_text_apart) {
    loaded_t tree("<a><![CDATA[q]]>t</a>");
    EXPECT_EQ(tree.doc.root->cdata, "q");
    EXPECT_EQ(tree.doc.root->text, "t");
}

TEST(loaded_tree, concatenates_cdata_sections) {
    loaded_t tree("<a>1<![CDATA[<x>]]>2<b><![CDATA[in b]]></b><![CDATA[&amp;]]>3</a>");
    EXPECT_EQ(tree.doc.root->cdata, "<x>&amp;");
    EXPECT_EQ(tree.doc.root->text, "123");
    EXPECT_EQ(tree.find("b")->cdata, "in b");
}

TEST(loaded_tree, keeps_white_space) {
    loaded_t tree("\n<a>\n  <b/>\t<b/>\r\n</a>\n");
    EXPECT_EQ(tree.doc.root->text, "\n  \t\n");
}

TEST(loaded_tree, has_one_attribute_a_name_with_references_resolved) {
    loaded_t tree("<a b='&lt;&#228;' c='2'/>");
    EXPECT_EQ(tree.doc.root->attribute_get_value("b", ""), "<\xC3\xA4");
    EXPECT_EQ(tree.doc.root->attribute_get_value("c", ""), "2");
}

TEST(loaded_tree, has_names_in_their_namespaces) {
    loaded_t tree("<p:a xmlns:p='urn:x' p:b='1'><c xmlns='urn:y' d='2'/><e/></p:a>");
    EXPECT_EQ(tree.doc.root->ns_get(), "urn:x");
    EXPECT_EQ(tree.doc.root->attribute_get("b", "urn:x")->value, "1");
    EXPECT_EQ(tree.find("c")->ns_get(), "urn:y");
    EXPECT_EQ(tree.find("c")->attribute_get("d")->value, "2");
    EXPECT_EQ(tree.find("e")->ns, 0);
}

TEST(loaded_tree, binds_the_prefixes_of_elements_and_attributes) {
    loaded_t tree("<p:a xmlns:p='urn:x' xmlns:q='urn:y' xmlns:unused='urn:z' q:b='1'/>");
    EXPECT_EQ(tree.doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(tree.doc.uri_prefix_expand("q"), "urn:y");
    EXPECT_EQ(tree.doc.uri_prefix_expand("unused"), "");
}

TEST(loaded_tree, binds_nothing_for_a_default_namespace) {
    loaded_t tree("<a xmlns='urn:x'/>");
    EXPECT_TRUE(tree.doc.uri_to_prefix.empty());
    EXPECT_TRUE(tree.doc.prefix_to_uri.empty());
}

TEST(loaded_tree, has_the_last_binding_of_a_prefix) {
    loaded_t tree("<p:a xmlns:p='urn:x'><p:b xmlns:p='urn:y'/><p:c/></p:a>");
    EXPECT_EQ(tree.doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(tree.doc.uri_prefix_get("urn:y"), "p");
}

TEST(loaded_tree, interns_names_in_the_order_of_the_document) {
    loaded_t tree("<p:a xmlns:p='urn:x' z='1' b='2'><c xmlns='urn:y'/></p:a>");
    int next = 1;
    for (const char* name : {"p", "urn:x", "a", "b", "z", "c", "urn:y"}) {
        EXPECT_EQ(tree.doc.atoms->find(name), next++) << name;
    }
}

TEST(loaded_tree, is_the_same_in_every_encoding) {
    const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE4'>\xF6</a>";
    const std::string utf16 = test::utf16("<a b='\xE4'>\xF6</a>", false);
    for (const std::string& text : {latin1, utf16, std::string("<a b='\xC3\xA4'>\xC3\xB6</a>")}) {
        loaded_t tree(text);
        EXPECT_EQ(tree.doc.root->text, "\xC3\xB6");
        EXPECT_EQ(tree.doc.root->attribute_get_value("b", ""), "\xC3\xA4");
    }
}

TEST(loaded_tree, takes_a_namespace_that_begins_with_a_quote_as_part_of_the_name) {
    loaded_t tree("<p:a xmlns:p='\"urn'/>");
    EXPECT_EQ(tree.doc.root->name_get(), "urn|a|p");
    EXPECT_EQ(tree.doc.root->ns, 0);
}

} // namespace

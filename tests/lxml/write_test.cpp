#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <vector>

#include "lxml/lxml.h"
#include "support/comma_locale.h"
#include "support/throws.h"
#include "support/tree_texts.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::described;
using test::loaded_t;

using words_t = std::vector<std::string>;

/// A layout with two spaces a level.
const write_options_t laid_out = {false, 2};

std::string written(const document_t& doc, const write_options_t& options = {false, -1}) {
    std::ostringstream out;
    doc.write(out, options);
    return out.str();
}

/// What is written for a document that was read.
std::string rewritten(const std::string& text, const write_options_t& options = {false, -1}) {
    const loaded_t tree(text);
    return written(tree.doc, options);
}

/// A document with a lone root.
struct lone_t : document_t {
    lone_t() { root = element_create("a", ""); }
};

void expect_refused(const document_t& doc, const std::string& what) {
    std::ostringstream out;
    EXPECT_THROWS(doc.write(out), "document_t::write() -- " + what + " cannot be written as XML");
    EXPECT_EQ(out.str(), "");
}

TEST(write, begins_with_the_declaration_when_it_is_asked_for) {
    EXPECT_EQ(rewritten("<a/>", {}), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>");
    EXPECT_EQ(rewritten("<a/>", {false}), "<a/>");
}

TEST(write, refers_to_the_stylesheet_below_the_declaration) {
    lone_t doc;
    doc.stylesheet = "s.xsl?a&\"b\"";
    EXPECT_EQ(written(doc, {}), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                "<?xml-stylesheet type=\"text/xsl\" "
                                "href=\"s.xsl?a&amp;&quot;b&quot;\"?>\n<a/>");
    EXPECT_EQ(written(doc), "<a/>");
}

TEST(write, leaves_no_blanks_in_tags) {
    EXPECT_EQ(rewritten("<a ><b  c='1'   d='2' /></a >"), "<a><b c=\"1\" d=\"2\"/></a>");
}

TEST(write, keeps_utf_8) {
    EXPECT_EQ(rewritten("<\xC3\xA9 \xC3\xA8='\xE2\x82\xAC'>\xF0\x9F\x98\x80</\xC3\xA9>"),
              "<\xC3\xA9 \xC3\xA8=\"\xE2\x82\xAC\">\xF0\x9F\x98\x80</\xC3\xA9>");
}

TEST(write, escapes_the_text_of_every_element) {
    EXPECT_EQ(rewritten("<a>&lt;&amp;>\"'</a>"), "<a>&lt;&amp;&gt;\"'</a>");
    EXPECT_EQ(rewritten("<a>&lt;&amp;]]&gt;<b/></a>"), "<a>&lt;&amp;]]&gt;<b/></a>");
}

TEST(write, escapes_white_space_that_would_be_read_as_another) {
    EXPECT_EQ(rewritten("<a>&#13;\n\t</a>"), "<a>&#13;\n\t</a>");
    EXPECT_EQ(rewritten("<a b='&#13;&#10;&#9; '/>"), "<a b=\"&#13;&#10;&#9; \"/>");
}

TEST(write, escapes_quotes_in_attributes) {
    EXPECT_EQ(rewritten("<a b='&lt;&amp;>&quot;&apos;'/>"), "<a b=\"&lt;&amp;&gt;&quot;'\"/>");
}

TEST(write, divides_an_end_of_cdata_between_two_sections) {
    EXPECT_EQ(rewritten("<a><![CDATA[x]]]]><![CDATA[>y]]></a>"),
              "<a><![CDATA[x]]]]><![CDATA[>y]]></a>");
    EXPECT_EQ(rewritten("<a>t<![CDATA[]]]]><![CDATA[>]]]]><![CDATA[>]]></a>"),
              "<a>t<![CDATA[]]]]><![CDATA[>]]]]><![CDATA[>]]></a>");
}

TEST(write, puts_text_and_cdata_before_the_children) {
    EXPECT_EQ(rewritten("<a><b/>x<c/><![CDATA[<]]>y</a>"), "<a>xy<![CDATA[<]]><b/><c/></a>");
}

TEST(write_namespaces, declares_prefixes_on_the_root) {
    EXPECT_EQ(rewritten("<p:a xmlns:p='urn:x'><q:b xmlns:q='urn:y' p:c='1'/></p:a>"),
              "<p:a xmlns:p=\"urn:x\" xmlns:q=\"urn:y\"><q:b p:c=\"1\"/></p:a>");
}

TEST(write_namespaces, escapes_their_names) {
    EXPECT_EQ(rewritten("<p:a xmlns:p='u?a&amp;b=&quot;&#10;'/>"),
              "<p:a xmlns:p=\"u?a&amp;b=&quot;&#10;\"/>");
}

TEST(write_namespaces, uses_the_default_namespace_where_there_is_no_prefix) {
    EXPECT_EQ(rewritten("<a xmlns='urn:x'><b/><c xmlns='urn:y'><d/></c></a>"),
              "<a xmlns=\"urn:x\"><b/><c xmlns=\"urn:y\"><d/></c></a>");
}

TEST(write_namespaces, leaves_the_default_namespace_again) {
    EXPECT_EQ(rewritten("<a xmlns='urn:x'><b xmlns=''><c/></b></a>"),
              "<a xmlns=\"urn:x\"><b xmlns=\"\"><c/></b></a>");
}

TEST(write_namespaces, makes_up_a_prefix_for_one_that_is_taken) {
    EXPECT_EQ(rewritten("<a><p:b xmlns:p='urn:x'/><p:c xmlns:p='urn:y' p:d=''/></a>"),
              "<a xmlns:ns1=\"urn:x\" xmlns:p=\"urn:y\"><ns1:b/><p:c p:d=\"\"/></a>");
}

TEST(write_namespaces, makes_up_a_prefix_for_attributes) {
    loaded_t tree("<ns1:a xmlns:ns1='urn:x'><b/></ns1:a>");
    tree.find("b")->attribute_set_ns("c", "urn:y", "1");
    EXPECT_EQ(written(tree.doc),
              "<ns1:a xmlns:ns1=\"urn:x\" xmlns:ns2=\"urn:y\"><b ns2:c=\"1\"/></ns1:a>");
}

TEST(write_namespaces, gives_up_prefixes_that_cannot_be_declared) {
    for (const char* prefix : {"xml", "xmlns", "a b", "1", "p:q", "\xC3"}) {
        lone_t doc;
        doc.add_ns_prefix(prefix, "urn:x");
        doc.root->attribute_set_ns("b", "urn:x", "1");
        EXPECT_EQ(written(doc), "<a xmlns:ns1=\"urn:x\" ns1:b=\"1\"/>") << prefix;
    }
}

TEST(write_namespaces, declares_those_that_no_name_is_in) {
    lone_t doc;
    doc.add_ns_prefix("p", "urn:x");
    doc.add_ns_prefix("q", "no|name");
    EXPECT_EQ(written(doc), "<a xmlns:p=\"urn:x\"/>");
}

TEST(write_namespaces, takes_the_prefix_xml_as_declared) {
    EXPECT_EQ(rewritten("<a xml:lang='en'><xml:b/></a>"), "<a xml:lang=\"en\"><xml:b/></a>");
}

TEST(write_layout, puts_children_on_lines_of_their_own) {
    EXPECT_EQ(rewritten("<a><b><c/></b><d>t</d></a>", laid_out),
              "<a>\n  <b>\n    <c/>\n  </b>\n  <d>t</d>\n</a>\n");
    EXPECT_EQ(rewritten("<a><b/></a>", {false, 0}), "<a>\n<b/>\n</a>\n");
}

TEST(write_layout, leaves_an_element_with_a_text_alone) {
    EXPECT_EQ(rewritten("<a>t<b><c/></b></a>", laid_out), "<a>t<b><c/></b></a>\n");
    EXPECT_EQ(rewritten("<a><![CDATA[ ]]><b/></a>", laid_out), "<a><![CDATA[ ]]><b/></a>\n");
    EXPECT_EQ(rewritten("<a>\n<b>x</b> <b>\n</b></a>", laid_out),
              "<a>\n  <b>x</b>\n  <b>\n</b>\n</a>\n");
}

TEST(write_layout, takes_a_blank_for_a_text_and_a_line_break_for_layout) {
    EXPECT_EQ(rewritten("<a><b/> <c/></a>", laid_out), "<a> <b/><c/></a>\n");
    EXPECT_EQ(rewritten("<a>\n\t<b/>\n\t<c/>\n</a>", laid_out), "<a>\n  <b/>\n  <c/>\n</a>\n");
}

TEST(write_layout, keeps_what_is_to_be_preserved) {
    EXPECT_EQ(rewritten("<a><b xml:space='preserve'><c><d/></c></b></a>", laid_out),
              "<a>\n  <b xml:space=\"preserve\"><c><d/></c></b>\n</a>\n");
}

TEST(write_layout, indents_no_further_than_80_spaces) {
    const std::string text = rewritten("<a><b><c/></b></a>", {false, 2000000000});
    const std::string spaces(80, ' ');
    EXPECT_EQ(text, "<a>\n" + spaces + "<b>\n" + spaces + "<c/>\n" + spaces + "</b>\n</a>\n");
}

TEST(write, of_a_document_without_a_root_is_an_error) {
    std::ostringstream out;
    EXPECT_THROWS(document_t().write(out), "document_t::write() -- document has no root");
    EXPECT_EQ(out.str(), "");
}

TEST(write, refuses_names_that_xml_does_not_know) {
    for (const std::string& name : words_t{"", "a b", "1", "-a", "p:b", "a\n", "\xC3", "\xC3\x97",
                                           "a>", "\xEF\xBB\xBF", "\xF0\x90\x80\x80/><b"}) {
        lone_t doc;
        doc.root->append(doc.element_create(name, ""));
        expect_refused(doc, "the name '" + name + "'");
        lone_t other;
        other.root->attribute_set(name, "");
        expect_refused(other, "the name '" + name + "'");
    }
}

TEST(write, refuses_an_attribute_that_would_be_read_as_a_declaration) {
    lone_t doc;
    doc.root->attribute_set("xmlns", "urn:x");
    expect_refused(doc, "the attribute 'xmlns'");
}

TEST(write, refuses_characters_that_xml_does_not_know) {
    for (const std::string& text : words_t{
             std::string(1, '\0'), std::string("x\1"), std::string("\x1F"), std::string("\x80"),
             std::string("\xC0\x80"), std::string("\xC3"), std::string("\xE0\x80\x80"),
             std::string("\xED\xA0\x80"), std::string("\xEF\xBF\xBE"),
             std::string("\xEF\xBF\xBF"), std::string("\xF0\x80\x80\x80"),
             std::string("\xF4\x90\x80\x80"), std::string("\xF8\x88\x80\x80\x80"),
             std::string("\xF0\x9F\x98"), std::string("\xC2("), std::string("\xE2(\xA1"),
             std::string("\xE2\x82("), std::string("\xF0\x90\x80(")}) {
        lone_t doc;
        doc.root->text = text;
        expect_refused(doc, "the text of 'a'");
        doc.root->text.swap(doc.root->cdata);
        expect_refused(doc, "the CDATA of 'a'");
        doc.root->cdata.clear();
        doc.root->attribute_set("b", text);
        expect_refused(doc, "the attribute 'b'");
    }
}

TEST(write, keeps_the_first_and_last_characters_of_every_length) {
    for (const std::string& text :
         words_t{"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                 "\xEF\xBE\xBE", "\xEF\xBF\xBD", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        lone_t doc;
        doc.root->text = text;
        std::ostringstream out;
        doc.write(out, {false, -1});
        EXPECT_EQ(out.str(), "<a>" + text + "</a>");
    }
}

TEST(write, refuses_a_carriage_return_in_cdata) {
    lone_t doc;
    doc.root->cdata = "x\r\n";
    expect_refused(doc, "the CDATA of 'a'");
}

TEST(write, refuses_names_of_namespaces_that_cannot_be_read) {
    for (const char* uri : {"a|b", "\"a", "a\1", "\xC3", "http://www.w3.org/2000/xmlns/"}) {
        lone_t doc;
        doc.root->append(doc.element_create("b", uri));
        expect_refused(doc, "the namespace name '" + std::string(uri) + "'");
    }
}

TEST(write, refuses_a_stylesheet_with_characters_that_xml_does_not_know) {
    lone_t doc;
    doc.stylesheet = "s\1";
    expect_refused(doc, "the stylesheet 's\1'");
}

TEST(write, refuses_an_element_that_holds_itself) {
    lone_t doc;
    doc.root->append(doc.element_create("b", ""))->append(doc.root);
    expect_refused(doc, "an element that holds itself, 'a'");
}

TEST(write, refuses_elements_and_attributes_of_another_document) {
    lone_t doc;
    lone_t other;
    std::ostringstream out;
    doc.root->children.push_back(other.root);
    EXPECT_THROWS(doc.write(out), "elements cannot span documents");
    doc.root->children.clear();
    doc.root->attributes.insert(new attribute_t(other.atoms, 0, 0, ""));
    EXPECT_THROWS(doc.write(out), "elements cannot span documents");
    EXPECT_EQ(out.str(), "");
}

TEST(write, writes_an_element_linked_twice_twice) {
    loaded_t tree("<a><b/></a>");
    tree.doc.root->append(tree.find("b"));
    EXPECT_EQ(written(tree.doc), "<a><b/><b/></a>");
}

TEST(write, adds_no_atoms) {
    const loaded_t tree("<a xmlns='urn:x'><b/></a>");
    written(tree.doc, laid_out);
    tree.doc.atoms->get("next");
    EXPECT_EQ(tree.doc.atoms->find("next"), 4);
}

TEST(write, does_not_depend_on_the_state_of_the_stream) {
    const test::comma_cpp_locale_t comma;
    std::ostringstream out;
    out << std::hex << std::showbase << std::setfill('*') << std::setw(20);
    loaded_t("<a>&#13;</a>").doc.write(out, {false});
    EXPECT_EQ(out.str(), "<a>&#13;</a>");
}

TEST(write, leaves_errors_in_the_state_of_the_stream) {
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    EXPECT_NO_THROW(loaded_t("<a/>").doc.write(out));
    EXPECT_EQ(out.str(), "");
}

TEST(write, carries_texts_larger_than_its_block) {
    const std::string large = test::repeated("<b>0123456789</b>", 10000);
    EXPECT_TRUE(rewritten("<a>" + large + "</a>") == "<a>" + large + "</a>");
    const std::string text(100000, 'x');
    EXPECT_TRUE(rewritten("<a>" + text + "<b/></a>") == "<a>" + text + "<b/></a>");
}

TEST(write, stands_deep_trees) {
    const std::size_t levels = 100000;
    const std::string text =
        test::repeated("<a>", levels) + "<b/>" + test::repeated("</a>", levels);
    EXPECT_TRUE(rewritten(text) == text);
    EXPECT_LT(rewritten(text, laid_out).size(), text.size() + levels * 164);
}

} // namespace

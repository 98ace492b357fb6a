#include <gtest/gtest.h>

#include <iomanip>

#include "lxml/lxml.h"
#include "support/comma_locale.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::printed;

const std::string declaration = "<?xml version=\"1.0\" standalone=\"yes\"?>";

/// What `print` writes for the root of a document, but for the declaration.
std::string root_printed(const std::string& text, bool trim = false) {
    loaded_t tree(text);
    const std::string all = printed(tree.doc.root, trim);
    EXPECT_EQ(all.substr(0, declaration.size()), declaration);
    return all.substr(declaration.size());
}

TEST(print, writes_the_declaration_before_the_root_only) {
    loaded_t tree("<a><b/></a>");
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a ><b /></a>");
    EXPECT_EQ(printed(tree.find("b")), "<b />");
}

TEST(print, writes_a_space_after_every_name_and_attribute) {
    EXPECT_EQ(root_printed("<a/>"), "<a />");
    EXPECT_EQ(root_printed("<a>x</a>"), "<a >x</a>");
    EXPECT_EQ(root_printed("<a b='1' c='2'/>"), "<a b=\"1\" c=\"2\" />");
    EXPECT_EQ(root_printed("<a b=''>x</a>"), "<a b=\"\" >x</a>");
}

TEST(print, ends_an_escaped_text_at_a_zero_byte_however_long_it_is) {
    for (const std::size_t size : {1U, 100U, 32768U, 100000U}) {
        const std::string before(size, 'x');
        const std::string whole = before + std::string("\0<", 2) + before;
        loaded_t tree("<a/>");
        tree.doc.root->text = whole;
        tree.doc.root->attribute_set("b", whole);
        EXPECT_EQ(printed(tree.doc.root),
                  declaration + "<a b=\"" + before + "\" >" + before + "</a>");
    }
}

TEST(print, escapes_values_of_attributes) {
    EXPECT_EQ(root_printed("<a b='&lt;&gt;&amp;&quot;&apos;&#10;&#228;'/>"),
              "<a b=\"&lt;&gt;&amp;&quot;'&#10;&#195;&#164;\" />");
}

TEST(print, escapes_the_text_of_a_leaf) {
    EXPECT_EQ(root_printed("<a>x&lt;y\n&#228;</a>"), "<a >x&lt;y&#10;&#195;&#164;</a>");
}

TEST(print, does_not_escape_the_text_of_an_element_with_children) {
    EXPECT_EQ(root_printed("<a>x&lt;y<b/>\n&#228;</a>"), "<a >x<y\n\xC3\xA4<b /></a>");
}

TEST(print, writes_text_before_children_wherever_it_stood) {
    EXPECT_EQ(root_printed("<a><b/>x<c/>y</a>"), "<a >xy<b /><c /></a>");
}

TEST(print, writes_cdata_after_the_text) {
    EXPECT_EQ(root_printed("<a><![CDATA[<q>]]>t</a>"), "<a >t<![CDATA[<q>]]></a>");
    EXPECT_EQ(root_printed("<a><![CDATA[<q>]]></a>"), "<a ><![CDATA[<q>]]></a>");
    EXPECT_EQ(root_printed("<a><![CDATA[<q>]]>t<b/></a>"), "<a >t<![CDATA[<q>]]><b /></a>");
}

TEST(print, trims_the_text_of_elements_with_children_when_told) {
    const char* const text = "<a>\n x <b> y </b>\t<c> z <d/> </c></a>";
    EXPECT_EQ(root_printed(text, true), "<a >x<b > y </b><c >z<d /></c></a>");
    EXPECT_EQ(root_printed(text, false), "<a >\n x \t<b > y </b><c > z  <d /></c></a>");
}

TEST(print, does_not_trim_cdata) {
    EXPECT_EQ(root_printed("<a> <![CDATA[ q ]]> <b/></a>", true), "<a ><![CDATA[ q ]]><b /></a>");
}

TEST(print, writes_prefixed_names_and_their_declarations_on_the_root) {
    EXPECT_EQ(root_printed("<p:a xmlns:p='urn:x' xmlns:q='urn:y' p:b='1'><q:c q:d='2'/></p:a>"),
              "<p:a xmlns:p=\"urn:x\" xmlns:q=\"urn:y\" p:b=\"1\" ><q:c q:d=\"2\" /></p:a>");
}

TEST(print, orders_declarations_by_the_atom_of_the_uri) {
    loaded_t tree("<a/>");
    tree.doc.atoms->get("urn:1");
    tree.doc.add_ns_prefix("p", "urn:2");
    tree.doc.add_ns_prefix("q", "urn:1");
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a xmlns:q=\"urn:1\" xmlns:p=\"urn:2\" />");
}

TEST(print, leaves_out_the_declaration_of_an_empty_prefix) {
    loaded_t tree("<a/>");
    tree.doc.add_ns_prefix("", "urn:x");
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a />");
}

TEST(print, writes_a_uri_of_a_declaration_as_it_is) {
    loaded_t tree("<a/>");
    tree.doc.add_ns_prefix("p", "a&b");
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a xmlns:p=\"a&b\" />");
}

TEST(print, declares_a_default_namespace_where_it_differs_from_the_parents) {
    EXPECT_EQ(root_printed("<a xmlns='urn:x'><b/><c xmlns='urn:y'><d/></c></a>"),
              "<a xmlns=\"urn:x\" ><b /><c xmlns=\"urn:y\" ><d /></c></a>");
}

TEST(print, cannot_return_to_no_namespace) {
    EXPECT_EQ(root_printed("<a xmlns='urn:x'><b xmlns=''/></a>"),
              "<a xmlns=\"urn:x\" ><b /></a>");
}

TEST(print, takes_the_namespace_of_the_parent_from_its_caller) {
    loaded_t tree("<a xmlns='urn:x'><b/></a>");
    const element_t* const b = tree.find("b");
    EXPECT_EQ(printed(b), "<b xmlns=\"urn:x\" />");
    EXPECT_EQ(printed(b, false, false, 0, b->ns), "<b />");
}

TEST(print, writes_a_colon_even_without_a_prefix_for_an_attribute_in_a_namespace) {
    loaded_t tree("<a/>");
    tree.doc.root->attribute_set_ns("b", "urn:x", "1");
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a :b=\"1\" />");
}

TEST(print, writes_an_attribute_of_another_document_with_the_prefix_that_is_bound_here) {
    document_t other;
    const int name = other.atoms->get("b");
    loaded_t tree("<p:r xmlns:p='urn:1'><a/></p:r>");
    element_t* const a = tree.find("a");
    a->attributes.insert(new attribute_t(other.atoms, name, other.atoms->get("urn:1"), "2"));
    EXPECT_EQ(printed(a), "<a p:b=\"2\" />");
}

TEST(print, writes_the_stylesheet_after_the_declaration) {
    loaded_t tree("<a/>");
    tree.doc.stylesheet = "s.xsl";
    const std::string instruction = "<?xml-stylesheet type=\"text/xsl\" href=\"s.xsl\"?>";
    EXPECT_EQ(printed(tree.doc.root), declaration + instruction + "<a />");
    EXPECT_EQ(printed(tree.doc.root, false, true),
              declaration + "\n" + instruction + "\n<a />\n");
}

TEST(print_pretty, breaks_lines_around_a_lone_root) {
    loaded_t tree("<r/>");
    EXPECT_EQ(printed(tree.doc.root, false, true), declaration + "\n<r />\n");
}

TEST(print_pretty, breaks_no_lines_inside_the_subtree) {
    loaded_t tree("<a><b/></a>");
    EXPECT_EQ(printed(tree.doc.root, false, true), declaration + "\n<a >\n<b /></a>\n");
}

TEST(print_pretty, breaks_no_lines_at_any_depth) {
    loaded_t tree("<a><b><c><d/></c>t</b><e/></a>");
    EXPECT_EQ(printed(tree.find("b"), false, true), "<b >\nt<c ><d /></c></b>\n");
}

TEST(print_pretty, indents_its_own_tags_only) {
    loaded_t tree("<a><b x='1'><c><d/></c></b><e>t</e></a>");
    EXPECT_EQ(printed(tree.find("b"), false, true, 3), "   <b x=\"1\" >\n<c ><d /></c>   </b>\n");
    EXPECT_EQ(printed(tree.find("e"), false, true, 2), "  <e >t</e>\n");
    EXPECT_EQ(printed(tree.find("d"), false, true, 2), "  <d />\n");
}

TEST(print_pretty, indents_after_the_declaration) {
    loaded_t tree("<a/>");
    EXPECT_EQ(printed(tree.doc.root, false, true, 2), declaration + "\n  <a />\n");
}

TEST(print_pretty, breaks_the_line_after_cdata_of_an_element_with_children) {
    loaded_t tree("<a><b>t<![CDATA[q]]><c/></b><d><![CDATA[q]]></d></a>");
    EXPECT_EQ(printed(tree.find("b"), false, true), "<b >\nt<![CDATA[q]]>\n<c /></b>\n");
    EXPECT_EQ(printed(tree.find("d"), false, true), "<d ><![CDATA[q]]></d>\n");
}

TEST(print, ignores_the_indent_when_it_is_not_pretty) {
    loaded_t tree("<a><b><c/></b></a>");
    EXPECT_EQ(printed(tree.find("b"), false, false, 4), "<b ><c /></b>");
    EXPECT_EQ(printed(tree.find("b"), false, true, -4), "<b >\n<c /></b>\n");
}

TEST(print, writes_an_element_linked_twice_twice) {
    loaded_t tree("<a><b><c/></b></a>");
    tree.doc.root->append(tree.find("b"));
    EXPECT_EQ(printed(tree.doc.root), declaration + "<a ><b ><c /></b><b ><c /></b></a>");
}

TEST(print, writes_the_declaration_wherever_the_root_hangs) {
    loaded_t tree("<a/>");
    element_t* const above = tree.doc.element_create("above", "");
    above->append(tree.doc.root);
    EXPECT_EQ(printed(above, false, true), "<above >\n" + declaration + "<a /></above>\n");
}

TEST(print, does_not_depend_on_the_state_of_the_stream) {
    const test::comma_cpp_locale_t comma;
    loaded_t tree("<a b='&#228;'>x</a>");
    std::ostringstream out;
    out << std::hex << std::showbase << std::setfill('*') << std::setw(20);
    tree.doc.root->print(out, 0, 0, false, false);
    EXPECT_EQ(out.str(), declaration + "<a b=\"&#195;&#164;\" >x</a>");
}

TEST(print, leaves_errors_in_the_state_of_the_stream) {
    loaded_t tree("<a/>");
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    EXPECT_NO_THROW(tree.doc.root->print(out, 0, 0, false, false));
    EXPECT_EQ(out.str(), "");
}

TEST(conditional_endl, writes_a_line_break_when_it_is_on) {
    std::ostringstream out;
    EXPECT_EQ(&(out << conditional_endl_t{true}), &out);
    EXPECT_EQ(out.str(), "\n");
    out << conditional_endl_t(false) << conditional_endl_t();
    EXPECT_EQ(out.str(), "\n");
}

/// A buffer that counts how often it is flushed.
class sync_counter_t : public std::stringbuf {
public:
    int count = 0;

protected:
    int sync() override {
        ++count;
        return 0;
    }
};

TEST(conditional_endl, flushes_when_it_is_on) {
    sync_counter_t buffer;
    std::ostream out(&buffer);
    out << conditional_endl_t{false};
    EXPECT_EQ(buffer.count, 0);
    out << conditional_endl_t{true};
    EXPECT_EQ(buffer.count, 1);
}

} // namespace

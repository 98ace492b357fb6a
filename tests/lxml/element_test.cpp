#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::shape;

const char* const not_owned = "element_free() -- given element not in document";

TEST(node, is_an_element_or_an_attribute) {
    document_t doc;
    element_t* const e = doc.element_create("e", "");
    e->attribute_set("a", "1");
    node_t* const element = e;
    node_t* const attribute = e->attribute_get("a");
    EXPECT_EQ(element->as_element(), e);
    EXPECT_EQ(std::as_const(*element).as_element(), e);
    EXPECT_EQ(attribute->as_attribute(), attribute);
    EXPECT_EQ(std::as_const(*attribute).as_attribute(), attribute);
}

TEST(node, of_the_other_kind_is_an_error) {
    document_t doc;
    element_t* const e = doc.element_create("e", "");
    e->attribute_set("a", "1");
    const node_t* const element = e;
    const node_t* const attribute = e->attribute_get("a");
    const char* const no_element = "node cannot be coverted to element";
    const char* const no_attribute = "node cannot be coverted to attribute";
    EXPECT_THROWS(attribute->as_element(), no_element);
    EXPECT_THROWS(e->attribute_get("a")->as_element(), no_element);
    EXPECT_THROWS(element->as_attribute(), no_attribute);
    EXPECT_THROWS(e->as_attribute(), no_attribute);
}

TEST(node, knows_its_names) {
    document_t doc;
    element_t* const e = doc.element_create("e", "urn:x");
    e->attribute_set_ns("a", "urn:y", "1");
    EXPECT_EQ(e->name_get(), "e");
    EXPECT_EQ(e->ns_get(), "urn:x");
    EXPECT_EQ(e->attribute_get("a", "urn:y")->ns_get(), "urn:y");
    EXPECT_EQ(e->attribute_get("a", "urn:y")->name_get(), "a");
    EXPECT_EQ(e->atoms, doc.atoms);
}

TEST(element, is_made_empty_and_unattached) {
    document_t doc;
    element_t* const e = doc.element_create("e", "urn:x");
    EXPECT_EQ(e->document, &doc);
    EXPECT_TRUE(e->children.empty());
    EXPECT_TRUE(e->attributes.empty());
    EXPECT_EQ(e->text + e->cdata, "");
    EXPECT_EQ(doc.elements, document_t::elements_t{e});
    EXPECT_EQ(doc.root, nullptr);
}

TEST(element, interns_its_name_before_its_namespace) {
    document_t doc;
    const element_t* const e = doc.element_create("e", "urn:x");
    EXPECT_EQ(e->name, 1);
    EXPECT_EQ(e->ns, 2);
}

TEST(append, adds_at_the_end_and_gives_the_child) {
    loaded_t tree("<a><b/></a>");
    element_t* const c = tree.doc.element_create("c", "");
    EXPECT_EQ(tree.doc.root->append(c), c);
    EXPECT_EQ(shape(tree.doc.root), "a(b,c)");
}

TEST(append, does_not_check_whether_the_child_is_linked_already) {
    loaded_t tree("<a><b/><c/></a>");
    tree.doc.root->append(tree.find("b"));
    tree.find("c")->append(tree.find("b"));
    EXPECT_EQ(shape(tree.doc.root), "a(b,c(b),b)");
}

TEST(append, refuses_an_element_of_another_document) {
    loaded_t tree("<a/>");
    loaded_t other("<b/>");
    EXPECT_THROWS(tree.doc.root->append(other.doc.root), "elements cannot span documents");
    EXPECT_EQ(shape(tree.doc.root), "a");
}

TEST(append, refuses_null_and_the_element_itself) {
    loaded_t tree("<a/>");
    EXPECT_THROWS(tree.doc.root->append(nullptr), "element_t::append() -- given element is null");
    EXPECT_THROWS(tree.doc.root->append(tree.doc.root),
                  "element_t::append() -- an element cannot hold itself");
}

TEST(clone, copies_names_attributes_and_children) {
    loaded_t tree("<p:a xmlns:p='urn:x' b='1' p:c='2'><d e='3'/><f><g/></f></p:a>");
    document_t target;
    target.add_ns_prefix("p", "urn:x");
    const element_t* const copy = tree.doc.root->clone(target, true);
    EXPECT_EQ(test::printed(copy), "<p:a b=\"1\" p:c=\"2\" ><d e=\"3\" /><f ><g /></f></p:a>");
    EXPECT_EQ(copy->document, &target);
    EXPECT_EQ(target.elements.size(), 4u);
}

TEST(clone, leaves_texts_and_cdata_out) {
    loaded_t tree("<a>x<b>y<![CDATA[z]]></b></a>");
    const element_t* const copy = tree.doc.root->clone(tree.doc, true);
    EXPECT_EQ(test::printed(copy), "<a ><b /></a>");
}

TEST(clone, that_is_not_deep_has_no_children) {
    loaded_t tree("<a b='1'><c/></a>");
    EXPECT_EQ(test::printed(tree.doc.root->clone(tree.doc, false)), "<a b=\"1\" />");
}

TEST(clone, hangs_nowhere) {
    loaded_t tree("<a><b/></a>");
    element_t* const copy = tree.find("b")->clone(tree.doc, true);
    EXPECT_EQ(shape(tree.doc.root), "a(b)");
    EXPECT_EQ(tree.doc.elements.count(copy), 1u);
}

TEST(clone, interns_names_of_a_parent_before_those_of_its_children) {
    loaded_t tree("<a><b c='1'/><d/></a>");
    document_t target;
    tree.doc.root->clone(target, true);
    int next = 1;
    for (const char* name : {"a", "b", "c", "d"}) {
        EXPECT_EQ(target.atoms->find(name), next++) << name;
    }
}

TEST(clone, of_an_element_linked_twice_has_two_copies) {
    loaded_t tree("<a><b><c/></b></a>");
    tree.doc.root->append(tree.find("b"));
    document_t target;
    EXPECT_EQ(shape(tree.doc.root->clone(target, true)), "a(b(c),b(c))");
    EXPECT_EQ(target.elements.size(), 5u);
}

TEST(clone, has_empty_names_for_unknown_atoms) {
    loaded_t tree("<a/>");
    tree.doc.root->name = 999;
    tree.doc.root->ns = -5;
    document_t target;
    const element_t* const copy = tree.doc.root->clone(target, true);
    EXPECT_EQ(copy->name, 0);
    EXPECT_EQ(copy->ns, 0);
}

TEST(children_delete, frees_all_descendants) {
    loaded_t tree("<a><b><c/><d><e/></d></b><f/></a>");
    tree.doc.root->children_delete();
    EXPECT_EQ(shape(tree.doc.root), "a");
    EXPECT_EQ(tree.doc.elements, document_t::elements_t{tree.doc.root});
}

TEST(children_delete, of_a_leaf_changes_nothing) {
    loaded_t tree("<a><b/></a>");
    tree.find("b")->children_delete();
    EXPECT_EQ(shape(tree.doc.root), "a(b)");
}

TEST(children_delete, notices_an_element_that_is_linked_twice) {
    loaded_t tree("<a><b/><c/></a>");
    tree.doc.root->append(tree.find("b"));
    EXPECT_THROWS(tree.doc.root->children_delete(), not_owned);
    EXPECT_EQ(tree.doc.elements, document_t::elements_t{tree.doc.root});
    EXPECT_EQ(shape(tree.doc.root), "a");
}

TEST(children_delete, notices_a_parent_that_is_linked_twice) {
    loaded_t tree("<a><b><c/></b><d/></a>");
    tree.find("d")->append(tree.find("b"));
    EXPECT_THROWS(tree.doc.root->children_delete(), not_owned);
    EXPECT_EQ(shape(tree.doc.root), "a(d)");
}

TEST(children_delete, of_the_parent_of_the_root_makes_the_root_null) {
    loaded_t tree("<a/>");
    element_t* const above = tree.doc.element_create("above", "");
    above->append(tree.doc.root);
    above->children_delete();
    EXPECT_EQ(tree.doc.root, nullptr);
}

} // namespace

#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::shape;

const char* const not_owned = "element_free() -- given element not in document";

TEST(document, begins_empty_with_its_own_table) {
    document_t doc;
    EXPECT_EQ(doc.root, nullptr);
    EXPECT_EQ(doc.atoms, &doc.own_atoms);
    EXPECT_EQ(doc.atoms->get(""), 0);
    EXPECT_EQ(doc.atoms->get("first"), 1);
    EXPECT_EQ(doc.file_name + doc.stylesheet, "");
    EXPECT_TRUE(doc.elements.empty());
}

TEST(document, may_share_a_table) {
    atom_table_t table;
    document_t first(&table);
    document_t second(&table);
    EXPECT_EQ(first.element_create("a", "")->name, second.element_create("a", "")->name);
    EXPECT_EQ(first.atoms, &table);
    EXPECT_EQ(first.own_atoms.find("a"), -1);
}

TEST(document, refuses_a_table_that_is_null) {
    EXPECT_THROWS(document_t doc(nullptr), "document_t::document_t() -- atom table is null");
}

TEST(document_copy, holds_the_tree_without_its_texts) {
    loaded_t tree("<a b='1'>x<c/></a>");
    const document_t copy(tree.doc);
    EXPECT_EQ(test::printed(copy.root),
              "<?xml version=\"1.0\" standalone=\"yes\"?><a b=\"1\" ><c /></a>");
    EXPECT_EQ(copy.root->document, &copy);
    EXPECT_EQ(copy.elements.size(), 2u);
}

TEST(document_copy, holds_nothing_but_the_tree) {
    loaded_t tree("<p:a xmlns:p='urn:x'/>");
    tree.doc.file_name = "file";
    tree.doc.stylesheet = "style";
    const document_t copy(tree.doc);
    EXPECT_EQ(copy.file_name + copy.stylesheet, "");
    EXPECT_TRUE(copy.uri_to_prefix.empty());
    EXPECT_TRUE(copy.prefix_to_uri.empty());
    EXPECT_EQ(copy.root->ns_get(), "urn:x");
}

TEST(document_copy, has_a_table_of_its_own) {
    atom_table_t table;
    table.get("unused");
    document_t doc(&table);
    doc.root = doc.element_create("a", "");
    const document_t copy(doc);
    EXPECT_EQ(copy.atoms, &copy.own_atoms);
    EXPECT_EQ(copy.root->name, 1);
    EXPECT_EQ(copy.atoms->find("unused"), -1);
}

TEST(document_copy, of_a_document_without_a_root_is_empty) {
    document_t doc;
    doc.element_create("loose", "");
    const document_t copy(doc);
    EXPECT_EQ(copy.root, nullptr);
    EXPECT_TRUE(copy.elements.empty());
}

TEST(element_free, deletes_the_element_but_not_its_children) {
    loaded_t tree("<a><b><c/></b></a>");
    element_t* const b = tree.find("b");
    const element_t* const c = tree.find("c");
    tree.doc.root->children.clear();
    tree.doc.element_free(b);
    EXPECT_EQ(tree.doc.elements.size(), 2u);
    EXPECT_EQ(c->name_get(), "c");
}

TEST(element_free, refuses_what_the_document_does_not_own) {
    loaded_t tree("<a/>");
    loaded_t other("<b/>");
    EXPECT_THROWS(tree.doc.element_free(other.doc.root), not_owned);
    EXPECT_THROWS(tree.doc.element_free(nullptr), not_owned);
    EXPECT_EQ(shape(other.doc.root), "b");
}

TEST(element_free, of_the_root_makes_the_root_null) {
    loaded_t tree("<a><b/></a>");
    tree.doc.element_free(tree.doc.root);
    EXPECT_EQ(tree.doc.root, nullptr);
    EXPECT_EQ(tree.doc.elements.size(), 1u);
}

TEST(element_remove, unlinks_and_frees_an_element_with_its_descendants) {
    loaded_t tree("<a><b><c/></b><d/></a>");
    tree.doc.element_remove(tree.find("b"));
    EXPECT_EQ(shape(tree.doc.root), "a(d)");
    EXPECT_EQ(tree.doc.elements.size(), 2u);
}

TEST(element_remove, of_the_root_makes_the_root_null) {
    loaded_t tree("<a><b/></a>");
    tree.doc.element_remove(tree.doc.root);
    EXPECT_EQ(tree.doc.root, nullptr);
}

TEST(element_remove, refuses_what_the_document_does_not_own) {
    loaded_t tree("<a/>");
    loaded_t other("<b/>");
    EXPECT_THROWS(tree.doc.element_remove(other.doc.root), not_owned);
    EXPECT_THROWS(tree.doc.element_remove(nullptr), not_owned);
}

TEST(element_remove, works_like_element_free_without_a_root) {
    document_t doc;
    loaded_t other("<b/>");
    EXPECT_THROWS(doc.element_remove(other.doc.root), not_owned);
    doc.element_remove(doc.element_create("loose", ""));
    EXPECT_TRUE(doc.elements.empty());
}

} // namespace

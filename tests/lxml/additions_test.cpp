#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::printed;
using test::shape;

const char* const text = "<p:a xmlns:p='urn:x' b='1' p:b='2'>t<c d='3'/><e/><c xmlns='urn:y'/>"
                         "<c><![CDATA[data]]></c></p:a>";

class additions : public testing::Test {
protected:
    std::string named(const std::string& name, const std::string& ns = "") const {
        std::string out;
        for (const element_t* e : root->children_named(name, ns)) {
            out += e->name_get() + "(" + e->ns_get() + ")";
        }
        return out;
    }

    loaded_t tree{text};
    element_t* root = tree.doc.root;
};

TEST_F(additions, attribute_find_gives_an_attribute_or_null) {
    EXPECT_EQ(root->attribute_find("b")->value, "1");
    EXPECT_EQ(root->attribute_find("b", "urn:x")->value, "2");
    EXPECT_EQ(root->attribute_find("c"), nullptr);
    EXPECT_EQ(root->attribute_find("b", "urn:y"), nullptr);
}

TEST_F(additions, child_find_gives_the_first_child_or_null) {
    EXPECT_EQ(root->child_find("c"), root->children.front());
    EXPECT_EQ(root->child_find("c", "urn:y")->ns_get(), "urn:y");
    EXPECT_EQ(root->child_find("a"), nullptr);
}

TEST_F(additions, look_ups_add_no_name) {
    const element_t& e = *root;
    EXPECT_EQ(e.attribute_find("new", "urn:new"), nullptr);
    EXPECT_EQ(e.child_find("new", "urn:new"), nullptr);
    EXPECT_TRUE(e.children_named("new", "urn:new").empty());
    EXPECT_FALSE(root->attribute_remove("new"));
    EXPECT_EQ(tree.doc.atoms->find("new"), -1);
    EXPECT_EQ(tree.doc.atoms->find("urn:new"), -1);
}

TEST_F(additions, children_named_goes_over_the_children_of_a_name) {
    EXPECT_EQ(named("c"), "c()c()");
    EXPECT_EQ(named("c", "urn:y"), "c(urn:y)");
    EXPECT_EQ(named("none"), "");
}

TEST_F(additions, attribute_remove_deletes_an_attribute) {
    EXPECT_TRUE(root->attribute_remove("b"));
    EXPECT_FALSE(root->attribute_remove("b"));
    EXPECT_TRUE(root->attribute_remove("b", "urn:x"));
    EXPECT_TRUE(root->attributes.empty());
}

TEST_F(additions, insert_before_puts_a_child_before_another) {
    element_t* const x = tree.doc.element_create("x", "");
    EXPECT_EQ(root->insert_before(x, tree.find("e")), x);
    root->insert_before(tree.doc.element_create("y", ""), nullptr);
    root->insert_before(tree.doc.element_create("z", ""), root->children.front());
    EXPECT_EQ(shape(root), "a(z,c,x,e,c,c,y)");
}

TEST_F(additions, insert_before_refuses_what_append_refuses_and_strangers) {
    loaded_t other("<o/>");
    EXPECT_THROWS(root->insert_before(nullptr, nullptr),
                  "element_t::append() -- given element is null");
    EXPECT_THROWS(root->insert_before(root, nullptr),
                  "element_t::append() -- an element cannot hold itself");
    EXPECT_THROWS(root->insert_before(other.doc.root, nullptr), "elements cannot span documents");
    EXPECT_THROWS(root->insert_before(tree.find("e"), root),
                  "element_t::insert_before() -- not a child of the element");
}

TEST_F(additions, child_erase_unlinks_and_frees_a_child_with_its_descendants) {
    tree.find("e")->append(tree.doc.element_create("f", ""));
    root->child_erase(tree.find("e"));
    EXPECT_EQ(shape(root), "a(c,c,c)");
    EXPECT_EQ(tree.doc.elements.size(), 4u);
}

TEST_F(additions, child_erase_refuses_what_is_no_child) {
    const char* const message = "element_t::child_erase() -- not a child of the element";
    EXPECT_THROWS(root->child_erase(root), message);
    EXPECT_THROWS(root->child_erase(nullptr), message);
}

TEST_F(additions, clone_whole_keeps_texts_and_cdata) {
    document_t target;
    const element_t* const copy = root->clone_whole(target);
    EXPECT_EQ(copy->text, "t");
    EXPECT_EQ(copy->children.back()->cdata, "data");
    EXPECT_EQ(shape(copy), shape(root));
    EXPECT_EQ(copy->attribute_find("b", "urn:x")->value, "2");
    EXPECT_EQ(copy->document, &target);
    EXPECT_TRUE(target.prefix_to_uri.empty());
}

TEST_F(additions, clone_whole_keeps_zero_bytes) {
    const std::string zero("a\0b", 3);
    root->attribute_set("z", zero);
    root->text = zero;
    const element_t* const copy = root->clone_whole(tree.doc);
    EXPECT_EQ(copy->attribute_find("z")->value, zero);
    EXPECT_EQ(copy->text, zero);
}

TEST_F(additions, copy_replaces_a_document_by_another) {
    tree.doc.stylesheet = "style";
    tree.doc.file_name = "file";
    loaded_t other("<q:old xmlns:q='urn:q'>gone</q:old>");
    other.doc.copy(tree.doc);
    EXPECT_EQ(printed(other.doc.root), printed(root));
    EXPECT_EQ(other.doc.file_name + other.doc.stylesheet, "filestyle");
    EXPECT_EQ(other.doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(other.doc.uri_prefix_expand("q"), "");
    EXPECT_EQ(other.doc.elements.size(), tree.doc.elements.size());
    for (const element_t* e : other.doc.elements) {
        EXPECT_EQ(e->document, &other.doc);
    }
    other.doc.root->append(other.doc.element_create("new", ""));
    EXPECT_EQ(shape(other.doc.root), "a(c,e,c,c,new)");
}

TEST_F(additions, copy_of_itself_or_of_an_empty_document) {
    tree.doc.copy(tree.doc);
    EXPECT_EQ(shape(tree.doc.root), "a(c,e,c,c)");
    tree.doc.copy(document_t());
    EXPECT_EQ(tree.doc.root, nullptr);
    EXPECT_TRUE(tree.doc.elements.empty());
}

TEST_F(additions, clear_leaves_nothing_but_the_atoms) {
    tree.doc.file_name = tree.doc.stylesheet = "x";
    tree.doc.clear();
    EXPECT_EQ(tree.doc.root, nullptr);
    EXPECT_TRUE(tree.doc.elements.empty());
    EXPECT_TRUE(tree.doc.uri_to_prefix.empty() && tree.doc.prefix_to_uri.empty());
    EXPECT_EQ(tree.doc.file_name + tree.doc.stylesheet, "");
    EXPECT_GT(tree.doc.atoms->find("urn:x"), 0);
    tree.doc.load_from_string("<b/>");
    EXPECT_EQ(shape(tree.doc.root), "b");
}

} // namespace

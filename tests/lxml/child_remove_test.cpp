#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::shape;

TEST(child_remove, unlinks_an_element_and_frees_its_descendants) {
    loaded_t tree("<a><b><c><d/></c></b><e/></a>");
    element_t* const b = tree.find("b");
    tree.doc.root->child_remove(b);
    EXPECT_EQ(shape(tree.doc.root), "a(e)");
    EXPECT_EQ(shape(b), "b");
    EXPECT_EQ(tree.doc.elements.size(), 3u);
}

TEST(child_remove, searches_the_whole_subtree) {
    loaded_t tree("<a><b><c/></b><d><e><f/></e></d></a>");
    tree.doc.root->child_remove(tree.find("f"));
    EXPECT_EQ(shape(tree.doc.root), "a(b(c),d(e))");
}

TEST(child_remove, of_an_element_elsewhere_changes_nothing) {
    loaded_t tree("<a><b><c/></b><d/></a>");
    tree.find("b")->child_remove(tree.find("d"));
    tree.find("b")->child_remove(tree.find("b"));
    tree.doc.root->child_remove(nullptr);
    EXPECT_EQ(shape(tree.doc.root), "a(b(c),d)");
}

/// Children of one list, of which those called "x" are one element that is removed.
struct link_case_t {
    const char* before;
    const char* after;
};

TEST(child_remove, skips_the_sibling_after_and_resumes_at_the_first_after_the_last) {
    const link_case_t cases[] = {
        {"x", ""},     {"xx", "x"},    {"xxx", ""},    {"xxxx", "xx"},
        {"axx", "ax"}, {"xax", "a"},   {"xxa", "xa"},  {"axxb", "axb"},
        {"xxax", "a"}, {"axbx", "ab"}, {"xxxa", "xa"}, {"xxaxx", "xax"},
    };
    for (const link_case_t& c : cases) {
        document_t doc;
        doc.root = doc.element_create("root", "");
        element_t* const x = doc.element_create("x", "");
        for (const char* p = c.before; *p != '\0'; ++p) {
            doc.root->append(*p == 'x' ? x : doc.element_create(std::string(1, *p), ""));
        }
        doc.root->child_remove(x);
        std::string after;
        for (const element_t* child : doc.root->children) {
            after += child->name_get();
        }
        EXPECT_EQ(after, c.after) << c.before;
    }
}

TEST(child_remove, does_not_search_below_the_sibling_after) {
    loaded_t tree("<a><x/><b/><c/></a>");
    element_t* const x = tree.find("x");
    tree.find("b")->append(x);
    tree.find("c")->append(x);
    tree.doc.root->child_remove(x);
    EXPECT_EQ(shape(tree.doc.root), "a(b(x),c)");
}

TEST(child_remove, searches_the_siblings_before_once_more_after_the_last) {
    loaded_t tree("<a><b><c/></b><x/></a>");
    element_t* const x = tree.find("x");
    tree.find("b")->children.push_front(x);
    tree.find("b")->children.push_front(x);
    tree.doc.root->child_remove(x);
    EXPECT_EQ(shape(tree.doc.root), "a(b(c))");
}

TEST(child_remove, notices_a_descendant_that_is_linked_twice) {
    loaded_t tree("<a><b/><x/></a>");
    element_t* const x = tree.find("x");
    x->append(tree.find("b"));
    EXPECT_THROWS(tree.doc.root->child_remove(x),
                  "element_free() -- given element not in document");
}

} // namespace

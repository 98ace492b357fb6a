#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::repeated;

std::size_t count_selected(const element_t* from, const std::string& path) {
    std::list<node_t*> nodes;
    from->select_nodes(path, nodes);
    return nodes.size();
}

TEST(large_query, selects_among_many_children) {
    document_t doc;
    doc.load_from_string("<r>" + repeated("<a i='1'><b/><c/></a>", 30000) + "</r>");
    EXPECT_EQ(count_selected(doc.root, "a"), 30000u);
    EXPECT_EQ(count_selected(doc.root, "a/b"), 30000u);
    EXPECT_EQ(count_selected(doc.root, "a[b]/c"), 30000u);
    EXPECT_EQ(count_selected(doc.root, "a[@i=\"1\"]/@i"), 30000u);
    EXPECT_EQ(count_selected(doc.root, "a[@i=\"2\"]"), 0u);
}

TEST(large_query, follows_many_steps) {
    const std::size_t levels = 1000000;
    document_t doc;
    element_t* bottom = doc.root = doc.element_create("a", "");
    for (std::size_t i = 0; i < levels; ++i) {
        bottom = bottom->append(doc.element_create("a", ""));
    }
    EXPECT_EQ(element_find(doc, "a" + repeated("/a", levels - 1), true), bottom);
}

TEST(large_query, takes_many_filters_one_after_the_other) {
    const std::size_t levels = 50000;
    document_t doc;
    doc.load_from_string(repeated("<a>", levels + 2) + repeated("</a>", levels + 2));
    EXPECT_EQ(count_selected(doc.root, "a[a]" + repeated("/a[a]", levels - 1)), 1u);
}

TEST(large_query, reads_long_names_and_values) {
    const std::string name(1000000, 'n');
    document_t doc;
    doc.load_from_string("<r><" + name + " i='" + name + "'/></r>");
    EXPECT_EQ(count_selected(doc.root, name + "[@i=\"" + name + "\"]"), 1u);
    EXPECT_THROWS(count_selected(doc.root, "a[\"" + name), "parse error : expecting \", got ");
}

} // namespace

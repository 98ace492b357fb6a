#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/temp_dir.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::printed;
using test::repeated;

constexpr std::size_t levels = 1000000;
constexpr std::size_t children = 100000;
constexpr std::size_t attributes = 100000;

const std::string declaration = "<?xml version=\"1.0\" standalone=\"yes\"?>";

/// A chain of elements called "a", each the only child of the one above.
void fill_deep(document_t& doc) {
    element_t* at = doc.root = doc.element_create("a", "");
    for (std::size_t i = 1; i < levels; ++i) {
        at = at->append(doc.element_create("a", ""));
    }
}

element_t* bottom_of(element_t* e) {
    while (!e->children.empty()) {
        e = e->children.front();
    }
    return e;
}

std::size_t depth_of(const element_t* e) {
    std::size_t depth = 1;
    for (; !e->children.empty(); e = e->children.front()) {
        ++depth;
    }
    return depth;
}

std::string deep_text() {
    return declaration + repeated("<a >", levels - 1) + "<a />" + repeated("</a>", levels - 1);
}

TEST(deep_document, is_loaded_and_printed) {
    document_t doc;
    doc.load_from_string(repeated("<a>", levels) + repeated("</a>", levels));
    EXPECT_EQ(doc.elements.size(), levels);
    EXPECT_EQ(depth_of(doc.root), levels);
    EXPECT_TRUE(printed(doc.root) == deep_text());
}

TEST(deep_document, is_saved) {
    const test::temp_dir_t dir;
    document_t doc;
    fill_deep(doc);
    doc.save(dir.path("out.xml"), false, false);
    EXPECT_TRUE(dir.read("out.xml") == deep_text());
}

TEST(deep_document, is_copied_and_loses_its_elements) {
    document_t doc;
    fill_deep(doc);
    document_t copy(doc);
    copy.element_remove(bottom_of(copy.root));
    EXPECT_EQ(depth_of(copy.root), levels - 1);
    copy.root->children_delete();
    EXPECT_EQ(copy.elements.size(), 1u);
    doc.element_remove(doc.root->children.front());
    EXPECT_EQ(doc.elements.size(), 1u);
}

TEST(deep_document, that_is_not_well_formed_is_left_behind) {
    document_t doc;
    EXPECT_ANY_THROW(doc.load_from_string(repeated("<a>", 100000)));
    EXPECT_EQ(doc.elements.size(), 100000u);
}

TEST(wide_document, is_loaded_and_printed) {
    const std::string text = "<a >" + repeated("<b />", children) + "</a>";
    document_t doc;
    doc.load_from_string(text);
    EXPECT_EQ(doc.root->children.size(), children);
    EXPECT_TRUE(printed(doc.root) == declaration + text);
}

TEST(wide_document, is_copied_and_loses_its_children) {
    document_t doc;
    doc.load_from_string("<a>" + repeated("<b/>", children) + "</a>");
    document_t copy(doc);
    EXPECT_EQ(copy.root->children.size(), children);
    copy.element_remove(copy.root->children.back());
    EXPECT_EQ(copy.elements.size(), children);
    copy.root->children_delete();
    EXPECT_EQ(copy.elements.size(), 1u);
}

TEST(element_with_many_attributes, is_loaded_copied_and_printed) {
    std::string text = "<a ";
    for (std::size_t i = 0; i < attributes; ++i) {
        text += "n" + std::to_string(1000000 + i) + "=\"v\" ";
    }
    text += "/>";
    document_t doc;
    doc.load_from_string(text);
    EXPECT_EQ(doc.root->attributes.size(), attributes);
    EXPECT_EQ(doc.root->attribute_get_value("n1077777", ""), "v");
    const document_t copy(doc);
    EXPECT_TRUE(printed(copy.root) == declaration + text);
}

TEST(element_with_much_text, is_loaded_and_printed) {
    const std::string text = repeated("line\n&amp;", 200000);
    document_t doc;
    doc.load_from_string("<a>" + text + "<b/><![CDATA[" + text + "]]></a>");
    EXPECT_TRUE(doc.root->text == repeated("line\n&", 200000));
    EXPECT_TRUE(doc.root->cdata == text);
    const std::string out = printed(doc.root, true);
    EXPECT_EQ(out.size(), declaration.size() + doc.root->text.size() + text.size() +
                              std::string("<a ><![CDATA[]]><b /></a>").size());
}

// The table of names that a load remembers is full soon.
TEST(document_with_very_long_names, has_one_atom_a_name) {
    std::string text = "<a>";
    for (const char* const letter : {"b", "c", "d", "b", "c", "d"}) {
        text += "<" + repeated(letter, 400000) + "/>";
    }
    const test::loaded_t tree(text + "</a>");
    std::vector<int> names;
    for (const element_t* const child : tree.doc.root->children) {
        EXPECT_EQ(child->name_get().size(), 400000u);
        names.push_back(child->name);
    }
    EXPECT_EQ(names, (std::vector<int>{2, 3, 4, 2, 3, 4}));
}

} // namespace

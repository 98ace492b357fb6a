#include <gtest/gtest.h>

#include <array>

#include "lxpath/lxpath.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;

/// Elements are shown by their attribute "n", attributes as "@" and their value.
std::string shown(const std::list<node_t*>& nodes) {
    std::string out;
    for (const node_t* node : nodes) {
        const auto* const attribute = dynamic_cast<const attribute_t*>(node);
        out += out.empty() ? "" : " ";
        out += attribute != nullptr ? "@" + attribute->value
                                    : node->as_element()->attribute_get_value("n", "?");
    }
    return out;
}

std::string selected(const element_t* from, const std::string& path) {
    std::list<node_t*> nodes;
    from->select_nodes(path, nodes);
    return shown(nodes);
}

/// What a path selects below the root of a document.
std::string selected(const std::string& text, const std::string& path) {
    loaded_t tree(text);
    return selected(tree.doc.root, path);
}

const char* const numbered = "<r><a n='1'><b n='2' id='7'/><c n='3'/><b n='4'><c n='5'/></b></a>"
                             "<b n='6'/><a n='7'><b n='8' id='8'><c n='9' id='x'/></b></a></r>";

TEST(select_nodes, gives_grandchildren_in_document_order) {
    EXPECT_EQ(selected(numbered, "a/b"), "2 4 8");
}

TEST(select_nodes, skips_leading_slashes) {
    EXPECT_EQ(selected(numbered, "a"), "1 7");
    EXPECT_EQ(selected(numbered, "/a"), "1 7");
    EXPECT_EQ(selected(numbered, "//a"), "1 7");
}

TEST(select_nodes, gives_attributes) {
    EXPECT_EQ(selected(numbered, "a/b/@id"), "@7 @8");
    EXPECT_EQ(selected(numbered, "a/@n"), "@1 @7");
    EXPECT_EQ(selected(numbered, "@missing"), "");
}

TEST(select_nodes, finds_nothing_below_an_attribute) {
    EXPECT_EQ(selected(numbered, "a/@n/b"), "");
    EXPECT_EQ(selected(numbered, "a/@n/@n"), "");
}

TEST(select_nodes, compares_an_attribute_with_a_value) {
    EXPECT_EQ(selected(numbered, "a/b[@id=\"7\"]"), "2");
    EXPECT_EQ(selected(numbered, "a/b[@id=\"07\"]"), "");
    EXPECT_EQ(selected(numbered, "a/b[c/@id=\"x\"]"), "8");
    EXPECT_EQ(selected(numbered, "a[b/@id=\"8\"]"), "7");
}

TEST(select_nodes, asks_for_a_child) {
    EXPECT_EQ(selected(numbered, "a/b[c]"), "4 8");
    EXPECT_EQ(selected(numbered, "a[c]"), "1");
    EXPECT_EQ(selected(numbered, "a[b[c]]"), "1 7");
    EXPECT_EQ(selected(numbered, "a[b[c[@id]]]/b/c"), "9");
}

TEST(select_nodes, takes_an_empty_value_for_none) {
    EXPECT_EQ(selected(numbered, "a/b[@id=\"\"]"), "2 8");
    EXPECT_EQ(selected(numbered, "a/b[c=\"\"]"), "4 8");
    EXPECT_EQ(selected(numbered, "a/b[@id]"), "2 8");
}

TEST(select_nodes, compares_no_element_with_a_value) {
    EXPECT_EQ(selected("<r><a n='1'><b>x</b></a></r>", "a[b=\"x\"]"), "");
}

TEST(select_nodes, is_satisfied_by_any_of_several_results) {
    EXPECT_EQ(selected("<r><a n='1'><b i='1'/><b i='2'/></a></r>", "a[b/@i=\"2\"]"), "1");
}

TEST(select_nodes, matches_names_byte_for_byte) {
    EXPECT_EQ(selected("<r><a n='1'/><A n='2'/><aa n='3'/></r>", "a"), "1");
    EXPECT_EQ(selected("<r><a-b n='1'/><\xC3\xA4 n='2'/></r>", "\"a-b\""), "1");
    EXPECT_EQ(selected("<r><a-b n='1'/><\xC3\xA4 n='2'/></r>", "\"\xC3\xA4\""), "2");
}

TEST(select_nodes, has_no_wildcard) {
    EXPECT_EQ(selected(numbered, "\"*\""), "");
    EXPECT_EQ(selected(numbered, ".."), "");
    EXPECT_EQ(selected(numbered, "."), "");
    EXPECT_EQ(selected(numbered, ""), "");
    EXPECT_EQ(selected(numbered, "a//b"), "");
}

const char* const spaced =
    "<r xmlns:p='urn:x' xmlns:q='urn:z'><p:a n='1' p:i='k'/><a n='2'/><q:a n='3'/>"
    "<a xmlns='urn:z' n='4'/><a xmlns='urn:x' n='5'/></r>";

TEST(select_nodes, expands_the_prefix_of_an_element) {
    EXPECT_EQ(selected(spaced, "p:a"), "1 5");
    EXPECT_EQ(selected(spaced, "q:a"), "3 4");
}

TEST(select_nodes, takes_a_quoted_namespace_literally) {
    EXPECT_EQ(selected(spaced, "\"urn:z\":a"), "3 4");
    EXPECT_EQ(selected(spaced, "\"p\":a"), "");
    EXPECT_EQ(selected(spaced, "\"\":a"), "2");
}

TEST(select_nodes, takes_an_unprefixed_element_for_one_without_namespace) {
    EXPECT_EQ(selected(spaced, "a"), "2");
    EXPECT_EQ(selected(spaced, "\"a\""), "2");
}

TEST(select_nodes, takes_an_unknown_prefix_for_no_namespace) {
    EXPECT_EQ(selected(spaced, "none:a"), "2");
}

TEST(select_nodes, expands_the_empty_prefix_when_it_is_bound) {
    loaded_t tree(spaced);
    tree.doc.add_ns_prefix("", "urn:z");
    EXPECT_EQ(selected(tree.doc.root, "a"), "3 4");
    EXPECT_EQ(selected(tree.doc.root, "\"a\""), "2");
}

TEST(select_nodes, takes_the_namespace_of_an_attribute_as_written) {
    EXPECT_EQ(selected(spaced, "p:a/@p:i"), "");
    EXPECT_EQ(selected(spaced, "p:a/@\"urn:x\":i"), "@k");
    EXPECT_EQ(selected(spaced, "p:a/@i"), "");
}

TEST(select_nodes, adds_the_names_of_attribute_tests_and_prefixes_to_the_table) {
    loaded_t tree("<r><a/></r>");
    selected(tree.doc.root, "a/@new");
    selected(tree.doc.root, "prefix:child");
    EXPECT_NE(tree.doc.atoms->find("new"), -1);
    EXPECT_NE(tree.doc.atoms->find("prefix"), -1);
    EXPECT_EQ(tree.doc.atoms->find("child"), -1);
}

TEST(select_nodes, appends_to_what_is_there) {
    loaded_t tree(numbered);
    std::list<node_t*> nodes = {tree.doc.root};
    tree.doc.root->select_nodes("b", nodes);
    EXPECT_EQ(shown(nodes), "? 6");
}

TEST(select_nodes, that_does_not_parse_throws_and_adds_nothing) {
    loaded_t tree(numbered);
    std::list<node_t*> nodes;
    EXPECT_THROWS(tree.doc.root->select_nodes("a b", nodes), "parse error : expecting ");
    EXPECT_TRUE(nodes.empty());
}

TEST(select_nodes, meets_an_element_linked_twice_twice) {
    loaded_t tree(numbered);
    tree.doc.root->append(tree.doc.root->children.front());
    EXPECT_EQ(selected(tree.doc.root, "a/b"), "2 4 8 2 4");
}

TEST(select_nodes, starts_at_the_element_that_is_asked) {
    loaded_t tree(numbered);
    EXPECT_EQ(selected(tree.find("a"), "b"), "2 4");
    EXPECT_EQ(selected(tree.find("c"), "b"), "");
}

TEST(select_nodes, evaluates_filters_nested_to_the_limit) {
    const int depth = 200;
    loaded_t tree(test::repeated("<a>", depth + 2) + test::repeated("</a>", depth + 2));
    const std::string path = "a" + test::repeated("[a", depth) + test::repeated("]", depth);
    EXPECT_EQ(selected(tree.doc.root, path), "?");
    EXPECT_EQ(selected(tree.find("a")->children.front(), path), "");
}

TEST(select_nodes, knows_linked_elements_of_another_document_by_their_names) {
    document_t other;
    loaded_t tree("<r xmlns:p='urn:1'><p:a n='1'/></r>");
    for (const auto& [name, ns, n] : {std::array{"a", "urn:1", "2"},
                                      {"a", "urn:2", "3"},
                                      {"b", "urn:1", "4"},
                                      {"a", "", "5"}}) {
        element_t* const made = other.element_create(name, ns);
        made->attribute_set("n", n);
        tree.doc.root->children.push_back(made);
    }
    EXPECT_EQ(selected(tree.doc.root, "p:a"), "1 2");
    EXPECT_EQ(selected(tree.doc.root, "\"urn:1\":a"), "1 2");
    EXPECT_EQ(selected(tree.doc.root, "\"urn:2\":a[@n]"), "3");
    EXPECT_EQ(selected(tree.doc.root, "a"), "5");
}

TEST(select_nodes, takes_an_atom_that_is_not_in_the_table_for_the_empty_text) {
    loaded_t tree("<r><a n='1'/><a n='2'/></r>");
    tree.doc.root->children.front()->ns = 1000000;
    EXPECT_EQ(selected(tree.doc.root, "a"), "1 2");
    tree.doc.root->children.front()->name = 1000000;
    EXPECT_EQ(selected(tree.doc.root, "a"), "2");
    EXPECT_EQ(selected(tree.doc.root, "\"\""), "1");
}

TEST(select_nodes, finds_nothing_that_an_attribute_would_have) {
    EXPECT_EQ(selected(numbered, "a/@n"), "@1 @7");
    for (const char* path : {"a/@n[@n]", "a/@n[x]", "a[@n[@n]]", "a[@n/x]", "a[@n/@n]"}) {
        EXPECT_EQ(selected(numbered, path), "") << path;
    }
}

TEST(select_single_node, gives_the_first_of_all) {
    loaded_t tree(numbered);
    EXPECT_EQ(
        tree.doc.root->select_single_node("a/b")->as_element()->attribute_get_value("n", ""),
        "2");
    EXPECT_EQ(tree.doc.root->select_single_node("a/@n")->as_attribute()->value, "1");
    EXPECT_EQ(tree.doc.root->select_single_node("none"), nullptr);
}

TEST(multi_matches, matches_every_node_in_order) {
    loaded_t tree(numbered);
    std::list<node_t*> in;
    tree.doc.root->select_nodes("a", in);
    in.reverse();
    in.push_back(tree.doc.root->select_single_node("a/@n"));
    xname_t name;
    name._parse("b");
    std::list<node_t*> out;
    name.multi_matches(in, out);
    EXPECT_EQ(shown(out), "8 2 4");
}

TEST(multi_matches, may_append_to_the_list_that_it_reads) {
    loaded_t tree(numbered);
    std::list<node_t*> nodes;
    tree.doc.root->select_nodes("a", nodes);
    const std::size_t before = nodes.size();
    const xfilter_t filter;
    filter.multi_matches(nodes, nodes);
    EXPECT_EQ(nodes.size(), 2 * before);
}

TEST(matches, of_a_parsed_path_can_be_asked_of_any_document) {
    xpath_t path;
    path.parse("p:a[@i]");
    for (const char* uri : {"urn:1", "urn:2"}) {
        loaded_t tree("<r xmlns:p='" + std::string(uri) + "'><p:a n='" + uri + "' i=''/></r>");
        std::list<node_t*> out;
        path.matches(tree.doc.root, out);
        EXPECT_EQ(shown(out), uri);
    }
}

TEST(matches, of_one_step_selects_below_its_context) {
    loaded_t tree(numbered);
    xpath_t path;
    path.parse("b[@id]/c");
    std::list<node_t*> out;
    path.steps.front()->matches(tree.find("a"), out);
    EXPECT_EQ(shown(out), "2");
    path.steps.back()->matches(tree.find("a"), out);
    EXPECT_EQ(shown(out), "2 3");
}

TEST(matches, of_a_filter_without_predicate_lets_everything_pass) {
    loaded_t tree(numbered);
    const xfilter_t filter;
    std::list<node_t*> out;
    filter.matches(tree.find("c"), out);
    EXPECT_EQ(shown(out), "3");
}

TEST(matches, of_a_path_without_steps_is_the_context) {
    loaded_t tree(numbered);
    std::list<node_t*> out;
    xpath_t().matches(tree.find("c"), out);
    EXPECT_EQ(shown(out), "3");
}

TEST(element_find, gives_the_element) {
    loaded_t tree(numbered);
    element_t* const b = tree.find("b");
    EXPECT_EQ(element_find(tree.doc, "a/b", true), b);
    EXPECT_EQ(element_find(tree.doc.root, "a/b", true), b);
    EXPECT_EQ(element_find(std::as_const(tree.doc.root), "a/b", false), b);
    const element_t* const root = tree.doc.root;
    EXPECT_EQ(element_find(root, "a/b", true), b);
}

TEST(element_find, throws_where_there_is_none_and_one_is_required) {
    loaded_t tree(numbered);
    const element_t* const root = tree.doc.root;
    const char* const message = "element 'a/x[y=\"%s\"]' not found in document";
    const char* const path = "a/x[y=\"%s\"]";
    EXPECT_THROWS(element_find(tree.doc, path, true), message);
    EXPECT_THROWS(element_find(tree.doc.root, path, true), message);
    EXPECT_THROWS(element_find(root, path, true), message);
}

TEST(element_find, cuts_its_message_as_the_library_does) {
    loaded_t tree(numbered);
    const std::string path(600, 'x');
    EXPECT_THROWS(element_find(tree.doc, path, true), ("element '" + path).substr(0, 510));
}

TEST(element_find, gives_null_where_there_is_none) {
    loaded_t tree(numbered);
    const element_t* const root = tree.doc.root;
    EXPECT_EQ(element_find(tree.doc, "x", false), nullptr);
    EXPECT_EQ(element_find(tree.doc.root, "x", false), nullptr);
    EXPECT_EQ(element_find(root, "x", false), nullptr);
}

TEST(element_find, does_not_take_an_attribute) {
    loaded_t tree(numbered);
    EXPECT_EQ(element_find(tree.doc, "a/@n", false), nullptr);
    EXPECT_THROWS(element_find(tree.doc, "a/@n", true), "element 'a/@n' not found in document");
}

TEST(element_find, finds_nothing_without_a_place_to_start) {
    document_t empty;
    element_t* const none = nullptr;
    EXPECT_EQ(element_find(empty, "a", false), nullptr);
    EXPECT_EQ(element_find(none, "a", false), nullptr);
    EXPECT_THROWS(element_find(empty, "a", true), "element 'a' not found in document");
    EXPECT_THROWS(element_find(none, "a", true), "element 'a' not found in document");
}

TEST(element_find, throws_when_the_path_does_not_parse) {
    loaded_t tree(numbered);
    EXPECT_THROWS(element_find(tree.doc, "a[", false), "parse error : expecting ], got ");
}

xpath_t& parse(xpath_t& path, const char* text) {
    path.parse(text);
    return path;
}

TEST(parsed_path, selects_as_its_text_does) {
    loaded_t tree(numbered);
    xpath_t path;
    std::list<node_t*> nodes;
    tree.doc.root->select_nodes(parse(path, "a/b[@id]"), nodes);
    EXPECT_EQ(shown(nodes), "2 8");
    EXPECT_EQ(tree.doc.root->select_single_node(path), nodes.front());
    EXPECT_EQ(element_find(tree.doc, path, true), nodes.front());
    EXPECT_EQ(element_find(tree.doc.root, path, true), nodes.front());
    EXPECT_EQ(element_find(std::as_const(tree.doc.root), path, true), nodes.front());
}

TEST(parsed_path, that_selects_nothing_is_named_as_it_would_be_written) {
    loaded_t tree(numbered);
    for (const char* text :
         {"x", "x[@y=\"1\"]/\"a-b\"", "\"urn:z\":x/@p:y", "p:\"-\"[q[\"r\"]]", "@\"x\"", "x/"}) {
        xpath_t path;
        const std::string message = "element '" + std::string(text) + "' not found in document";
        EXPECT_EQ(element_find(tree.doc, parse(path, text), false), nullptr) << text;
        EXPECT_THROWS(element_find(tree.doc, path, true), message) << text;
    }
}

TEST(parsed_path, finds_nothing_without_a_place_to_start) {
    const element_t* const none = nullptr;
    EXPECT_EQ(element_find(none, xpath_t(), false), nullptr);
    xpath_t path;
    EXPECT_THROWS(element_find(none, parse(path, "a"), true),
                  "element 'a' not found in document");
}

/// A step of a host's own.
class grandchildren_t : public xnode_t {
public:
    void matches(node_t* context, std::list<node_t*>& out) const override {
        for (element_t* child : context->as_element()->children) {
            out.insert(out.end(), child->children.begin(), child->children.end());
        }
    }
};

TEST(parsed_path, takes_steps_of_a_hosts_own) {
    loaded_t tree(numbered);
    xpath_t path;
    path.steps.push_back(std::make_unique<grandchildren_t>());
    std::list<node_t*> nodes;
    tree.doc.root->select_nodes(path, nodes);
    EXPECT_EQ(shown(nodes), "2 3 4 8");
    EXPECT_EQ(tree.doc.root->select_single_node(path), nodes.front());
    EXPECT_EQ(tree.find("c")->select_single_node(path), nullptr);
}

TEST(parsed_path, takes_filters_of_a_hosts_own) {
    loaded_t tree(numbered);
    xpath_t path;
    parse(path, "a[x]");
    path.steps.front()->filter.predicate->steps.front() = std::make_unique<grandchildren_t>();
    std::list<node_t*> nodes;
    tree.doc.root->select_nodes(path, nodes);
    EXPECT_EQ(shown(nodes), "1 7");
}

} // namespace

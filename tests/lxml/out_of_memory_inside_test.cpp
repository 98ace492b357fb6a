#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <stdexcept>

#include "expat_parser/expat_parser.h"
#include "lxml/lxml.h"
#include "lxpath/lxpath.h"
#include "support/allocations.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::allocations_left;
using test::fail_each;
using test::outcome;

const char* const text =
    "<a:element_with_a_long_name xmlns:a='urn:a_namespace_with_a_long_name' attribute='a value'>"
    "text that is too long for a short string<b><c/></b><![CDATA[character data in a section]]>"
    "<d with='another long attribute value'/></a:element_with_a_long_name>";

const char* const path = "b[\"a long name of an element\"]/\"another long name of an element\"";

class out_of_memory : public testing::Test {
protected:
    test::loaded_t tree{text};
    element_t* root = tree.doc.root;
    std::list<node_t*> nodes;
};

TEST_F(out_of_memory, while_loading_is_reported) {
    EXPECT_GT(fail_each("load a text", [] { document_t().load_from_string(text); }), 0);
}

TEST_F(out_of_memory, while_loading_leaves_the_document_usable) {
    EXPECT_GT(fail_each("load another text", [this] { tree.doc.load_from_string(text); }), 0);
    EXPECT_EQ(test::shape(tree.doc.root), "element_with_a_long_name(b(c),d)");
}

TEST_F(out_of_memory, while_loading_a_file_is_reported) {
    const test::temp_dir_t dir;
    const std::string file = dir.write("a.xml", text);
    testing::internal::CaptureStdout();
    EXPECT_GT(fail_each("load a file", [&] { tree.doc.load(file); }), 0);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(test::shape(tree.doc.root), "element_with_a_long_name(b(c),d)");
}

TEST_F(out_of_memory, while_saving_is_reported) {
    const test::temp_dir_t dir;
    const std::string file = dir.path("a.xml");
    EXPECT_GT(fail_each("save", [&] { tree.doc.save(file, true, true); }), 0);
    EXPECT_EQ(dir.read("a.xml"), test::printed(root, true, true));
}

/// A stream buffer that takes everything and keeps nothing.
class sink_t : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

TEST_F(out_of_memory, while_printing_is_reported) {
    sink_t sink;
    std::ostream out(&sink);
    EXPECT_GT(fail_each("print", [&] { root->print(out, 0, 0, true, true); }), 1);
    EXPECT_TRUE(out.good());
}

TEST_F(out_of_memory, while_writing_is_reported) {
    sink_t sink;
    std::ostream out(&sink);
    root->append(tree.doc.element_create("\xC3\xA9", ""))->attribute_set_ns("x", "urn:y", "");
    EXPECT_GT(fail_each("write", [&] { tree.doc.write(out, {true, 2}); }), 5);
    EXPECT_TRUE(out.good());
}

TEST_F(out_of_memory, while_a_name_is_looked_at_before_it_is_written_is_reported) {
    sink_t sink;
    std::ostream out(&sink);
    root->append(tree.doc.element_create(test::repeated("\xC3\xA9", 50), ""));
    EXPECT_GT(fail_each("write a long name", [&] { tree.doc.write(out); }), 5);
    EXPECT_TRUE(out.good());
}

TEST_F(out_of_memory, while_building_a_tree_keeps_it_whole) {
    const std::string name = "a name that is too long for a short string";
    EXPECT_GT(fail_each("element_create and append",
                        [&] { root->append(tree.doc.element_create(name, name + "space")); }),
              0);
    EXPECT_EQ(test::shape(root), "element_with_a_long_name(b(c),d," + name + ")");
}

TEST_F(out_of_memory, while_binding_a_prefix_is_reported) {
    const std::string uri = "a namespace that is too long for a short string";
    EXPECT_GT(fail_each("add_ns_prefix", [&] { tree.doc.add_ns_prefix("q", uri); }), 0);
    EXPECT_EQ(tree.doc.uri_prefix_expand("q"), uri);
    EXPECT_GT(fail_each("uri_prefix_get", [&] { tree.doc.uri_prefix_get(uri + "'s end"); }), 0);
}

TEST_F(out_of_memory, while_cloning_and_copying_is_reported) {
    document_t target;
    EXPECT_GT(fail_each("clone", [&] { root->clone(target, true); }), 0);
    EXPECT_GT(fail_each("copy of a document", [&] { document_t copy(tree.doc); }), 0);
}

TEST_F(out_of_memory, while_selecting_is_reported) {
    EXPECT_GT(fail_each("select_nodes, long names", [this] { root->select_nodes(path, nodes); }),
              0);
    EXPECT_GT(fail_each("select_nodes", [this] { root->select_nodes("b[c]", nodes); }), 0);
    EXPECT_GT(fail_each("element_find", [this] { element_find(root, path, false); }), 0);
    EXPECT_GT(fail_each("a long path",
                        [this] { element_find(root, "b/c/d/e/f/g/h/i/j/k/l/m", false); }),
              0);
}

TEST_F(out_of_memory, while_reading_a_path_is_reported) {
    xpath_t parsed;
    EXPECT_GT(fail_each("xpath_t::parse", [&] { parsed.parse("b[c]"); }), 0);
    EXPECT_GT(fail_each("select_nodes, parsed", [&] { root->select_nodes(parsed, nodes); }), 0);
    EXPECT_EQ(element_find(root, parsed, true), tree.find("b"));
}

TEST_F(out_of_memory, is_met_by_no_short_query) {
    EXPECT_EQ(fail_each("a short query", [this] { element_find(root, "b[c]/c", true); }), 0);
}

TEST_F(out_of_memory, while_loading_with_positions_leaves_what_was_there) {
    load_options_t options;
    options.positions = true;
    const auto load = [&] {
        const std::size_t before = tree.doc.elements.size();
        const auto bindings = tree.doc.prefix_to_uri;
        try {
            tree.doc.load_from_string(text, options);
        } catch (...) {
            allocations_left = -1;
            EXPECT_EQ(tree.doc.elements.size(), before);
            EXPECT_EQ(tree.doc.prefix_to_uri, bindings);
            throw;
        }
    };
    EXPECT_GT(fail_each("load with positions", load), 0);
    EXPECT_NE(tree.doc.position_get(tree.doc.root), nullptr);
}

TEST_F(out_of_memory, while_loading_a_file_or_stream_with_options_is_reported) {
    const test::temp_dir_t dir;
    const std::string file = dir.write("a.xml", text);
    const load_options_t options;
    EXPECT_GT(fail_each("load a file with options", [&] { tree.doc.load(file, options); }), 0);
    const auto load = [&] {
        std::istringstream in(text);
        tree.doc.load(in, options);
    };
    EXPECT_GT(fail_each("load a stream with options", load), 0);
    EXPECT_EQ(test::shape(tree.doc.root), "element_with_a_long_name(b(c),d)");
}

TEST_F(out_of_memory, while_copying_a_document_leaves_the_target) {
    document_t target;
    target.load_from_string("<a><b/></a>");
    const auto copy = [&] {
        const std::size_t before = target.elements.size();
        try {
            target.copy(tree.doc);
        } catch (...) {
            allocations_left = -1;
            EXPECT_EQ(test::shape(target.root), "a(b)");
            EXPECT_EQ(target.elements.size(), before);
            throw;
        }
    };
    EXPECT_GT(fail_each("document_t::copy", copy), 0);
    EXPECT_EQ(test::shape(target.root), test::shape(root));
}

TEST_F(out_of_memory, while_cloning_whole_is_reported) {
    document_t target;
    EXPECT_GT(fail_each("clone_whole", [&] { target.root = root->clone_whole(target); }), 0);
    EXPECT_EQ(test::shape(target.root), test::shape(root));
}

/// The memory of the document has room for some links: many are made.
TEST_F(out_of_memory, while_inserting_before_leaves_the_children) {
    const element_t* const last = root->children.back();
    int failures = 0;
    for (std::size_t size = 3; size < 1000; ++size) {
        element_t* const made = tree.doc.element_create("e", "");
        const auto insert = [&] {
            root->insert_before(made, last);
        };
        if (outcome(insert, 0) == "std::bad_alloc") {
            ++failures;
            ASSERT_EQ(root->children.size(), size - 1);
            insert();
        }
        ASSERT_EQ(root->children.size(), size);
    }
    EXPECT_GT(test::tell("insert_before", failures), 0);
    EXPECT_EQ(root->children.back(), last);
}

TEST_F(out_of_memory, while_erasing_a_child_leaves_a_tree) {
    element_t* const child = tree.find("b");
    const auto erase = [&] {
        EXPECT_EQ(root->children.front(), child);
        EXPECT_EQ(child->children.size(), 1u);
        root->child_erase(child);
    };
    EXPECT_GT(fail_each("child_erase", erase), 0);
    EXPECT_EQ(test::shape(root), "element_with_a_long_name(d)");
}

TEST_F(out_of_memory, is_met_by_none_that_look_or_remove) {
    const auto look = [&] {
        for (const element_t* e : root->children_named("b")) {
            EXPECT_EQ(e->child_find("c"), e->children.front());
        }
    };
    EXPECT_EQ(fail_each("children_named", look), 0);
    EXPECT_EQ(fail_each("attribute_remove", [&] { root->attribute_remove("attribute"); }), 0);
    EXPECT_TRUE(root->attributes.empty());
    EXPECT_EQ(fail_each("clear", [&] { tree.doc.clear(); }), 0);
    EXPECT_TRUE(tree.doc.elements.empty());
}

TEST_F(out_of_memory, while_interning_changes_nothing) {
    atom_table_t table;
    const std::string name = "a name that is too long for a short string";
    for (long number = 0; outcome([&] { table.get(name); }, number) != "not reached"; ++number) {
        EXPECT_EQ(table.find(name), -1);
    }
    EXPECT_EQ(table.get(name), 1);
}

TEST_F(out_of_memory, while_setting_an_attribute_keeps_the_others) {
    const std::string value = "a value that is too long for a short string";
    EXPECT_GT(fail_each("attribute_set", [&] { root->attribute_set("new", value); }), 0);
    EXPECT_EQ(root->attributes.size(), 2u);
}

TEST_F(out_of_memory, while_setting_one_of_many_attributes_keeps_the_others) {
    for (int i = 0; i < 400; ++i) {
        root->attribute_set("n" + std::to_string(i), "");
    }
    const std::string value = "a value that is too long for a short string";
    tree.doc.atoms->get("new");
    EXPECT_GT(fail_each("attribute_set, many", [&] { root->attribute_set("new", value); }), 1);
    EXPECT_EQ(root->attributes.size(), 402u);
    EXPECT_EQ(root->attribute_get_value("new", ""), value);
}

TEST_F(out_of_memory, while_loading_many_attributes_is_reported) {
    std::string many = "<a";
    for (int i = 0; i < 300; ++i) {
        many += " n" + std::to_string(i) + "=''";
    }
    EXPECT_GT(fail_each("load many attributes", [&] { tree.doc.load_from_string(many + "/>"); }),
              300);
    EXPECT_EQ(tree.doc.root->attributes.size(), 300u);
}

TEST_F(out_of_memory, while_inserting_a_range_leaves_the_list) {
    element_t::children_t list = {root};
    const std::vector<element_t*> more(3, root);
    const auto insert = [&] {
        try {
            list.insert(list.begin(), more.begin(), more.end());
        } catch (...) {
            EXPECT_EQ(list.size(), 1u);
            throw;
        }
    };
    EXPECT_GT(fail_each("insert a range", insert), 2);
    EXPECT_EQ(list.size(), 4u);
}

TEST_F(out_of_memory, while_a_document_is_refused_is_reported) {
    const std::string refused = "<a xmlns='" + std::string(5000, 'u') + "'/>";
    const auto load = [&] {
        try {
            tree.doc.load_from_string(refused);
        } catch (const ko::errorcode_t& e) {
            if (std::string(e.what()).find("namespace name longer than 4096 bytes") != 0) {
                throw;
            }
        }
    };
    EXPECT_GT(fail_each("refuse a document", load), 0);
}

TEST_F(out_of_memory, while_removing_leaves_a_tree) {
    EXPECT_EQ(outcome([&] { root->children_delete(); }, 0), "std::bad_alloc");
    EXPECT_EQ(test::shape(root), "element_with_a_long_name(b(c),d)");
    EXPECT_EQ(outcome([&] { tree.doc.element_remove(tree.find("b")); }, 0), "std::bad_alloc");
    EXPECT_EQ(test::shape(root), "element_with_a_long_name(b(c),d)");
}

/// Throws a long text and lets the note that is taken of it fail.
class thrower_t : public ko::xml::expat_parser_t {
public:
    thrower_t() : expat_parser_t(true) {}

    void start_element(const std::string&, const attribute_map_t&) override {
        allocations_left = 0;
        throw error;
    }

private:
    const std::runtime_error error{"a text that is too long for a short string"};
};

TEST_F(out_of_memory, while_noting_an_exception_is_what_is_reported) {
    thrower_t thrower;
    EXPECT_THROWS(thrower.parse_buffer("<a/>"), ko::errorcode::xml_rethrow_exception,
                  "std::bad_alloc: xml error");
}

} // namespace

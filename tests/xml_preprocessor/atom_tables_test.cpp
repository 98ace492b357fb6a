#include "xml_preprocessor/include_fixture.h"

#include <memory>
#include <ostream>
#include <vector>

namespace {

using ko::lxml::atom_table_t;
using ko::lxml::document_t;
using ko::lxml::element_t;

/// Where an element with directives in it comes from.
enum class origin_e { source, included, plugin, defined };

constexpr origin_e origins[] = {origin_e::source, origin_e::included, origin_e::plugin,
                                origin_e::defined};

struct pairing_t {
    origin_e outer;
    origin_e inner;
    bool cached;
    bool shared; ///< source, definitions and plug-in results use the table of the cache
};

void PrintTo(const pairing_t& p, std::ostream* out) {
    const char* const names[] = {"source", "included", "plugin", "defined"};
    *out << names[static_cast<int>(p.inner)] << " in " << names[static_cast<int>(p.outer)]
         << (p.cached ? ", cache" : "") << (p.shared ? ", one table" : "");
}

/// Content of one origin inside content of another one. Every document but those that share the
/// cache's table numbers its names differently.
class atom_tables : public testing::TestWithParam<pairing_t> {
protected:
    /// A document whose keywords have atoms of their own.
    element_t* load(const std::string& content) {
        documents.push_back(GetParam().shared
                                ? std::make_unique<document_t>(&cache.atom_table_get())
                                : std::make_unique<document_t>());
        for (std::size_t i = 0; i < 100 * documents.size(); ++i) {
            documents.back()->atoms->get("shift" + std::to_string(i));
        }
        documents.back()->load_from_string(test::wrapped(content));
        return documents.back()->root;
    }

    /// A directive, to stand in a place of the origin `around`, that brings in `content` from a
    /// place of the origin `origin`.
    std::string bring_in(origin_e origin, const std::string& content,
                         origin_e around = origin_e::source) {
        const std::string name = "n" + std::to_string(++names);
        switch (origin) {
        case origin_e::source:
            return content;
        case origin_e::included:
            dir.write(name, test::wrapped(content));
            return "<x:include file='" + (around == origin_e::included ? name : dir.path(name)) +
                   "'/>";
        case origin_e::plugin:
            preprocessor.register_plugin(name, new test::generator_t(load(content)));
            return "<x:plugin name='" + name + "'/>";
        case origin_e::defined:
            preprocessor.process(load("<x:define name='" + name + "'>" + content + "</x:define>"),
                                 flags);
            return "<x:insert name='" + name + "'/>";
        }
        return "";
    }

    static constexpr auto flags = ko::xpp::preprocessor_t::process_include;
    test::temp_dir_t dir;
    int names = 0;
    std::vector<std::unique_ptr<document_t>> documents;
    ko::xpp::file_cache_t cache;
    document_t output;
    ko::xpp::preprocessor_t preprocessor{output, GetParam().cached ? &cache : nullptr};
};

TEST_P(atom_tables, directives_of_every_origin_are_recognised) {
    const std::string inner =
        "<x:repeat index='i' first='1' last='2'><x:switch condition='i'>"
        "<x:case expression='2'><b e:i='i'/></x:case></x:switch></x:repeat>";
    const std::string outer = "<x:if condition='1'><a>" +
                              bring_in(GetParam().inner, inner, GetParam().outer) +
                              "</a></x:if><x:if condition='0'><no/></x:if>";
    element_t* top = load(bring_in(GetParam().outer, outer));
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)), "<r ><a ><b i=\"2\" /></a></r>");
}

TEST_P(atom_tables, directives_after_what_was_brought_in_are_recognised) {
    const std::string inner = bring_in(GetParam().inner, "<a/>", GetParam().outer);
    const std::string outer =
        bring_in(GetParam().outer, inner + "<x:if condition='0'><no/></x:if>");
    element_t* top = load(outer + "<x:if condition='0'><no/></x:if>");
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)), "<r ><a /></r>");
}

std::vector<pairing_t> pairings() {
    std::vector<pairing_t> result;
    for (const origin_e outer : origins) {
        for (const origin_e inner : origins) {
            result.push_back({outer, inner, false, false});
            result.push_back({outer, inner, true, false});
            result.push_back({outer, inner, true, true});
        }
    }
    return result;
}

INSTANTIATE_TEST_SUITE_P(every_pairing, atom_tables, testing::ValuesIn(pairings()));

class foreign_children : public test::preprocessor_test_t {};

TEST_F(foreign_children, linked_into_a_tree_are_recognised_by_their_own_table) {
    element_t* top = source("<r/>");
    sources.emplace_back();
    sources.back().atoms->get("shift");
    sources.back().load_from_string(test::wrapped("<x:if condition='1'><a/></x:if>"));
    top->children.push_back(sources.back().root);
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)), "<r ><r ><a /></r></r>");
}

TEST_F(foreign_children, of_a_switch_are_recognised_by_their_own_table) {
    element_t* top = source(test::wrapped("<x:switch condition='2'/>"));
    sources.emplace_back();
    sources.back().atoms->get("shift");
    sources.back().load_from_string(test::wrapped("<x:case expression='1'><a/></x:case>"
                                                  "<x:case expression='2'><b/></x:case>"));
    top->children.front()->children = sources.back().root->children;
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)), "<r ><b /></r>");
}

/// Names that only included files hold.
class texts_of_included_files : public test::include_test_t {
protected:
    texts_of_included_files() {
        dir.write("first.xml", "<r xmlns:x='" + ko::xpp::default_xpp_uri +
                                   "'><x:if condition='0' z='1'/></r>");
        dir.write("second.xml", "<r><b a='1' z='2'/></r>");
        write("main.xml", "<x:include file='first.xml'/><x:if condition='again'>"
                          "<x:include file='second.xml'/></x:if>");
        sources.emplace_back();
        sources.back().load(dir.path("main.xml"));
        preprocessor.insert_argument("again", false);
        preprocessor.process(sources.back().root, flags);
    }

    /// What a second `process` on the same source makes.
    std::string again(ko::xpp::preprocessor_t& by) {
        by.insert_argument("again", true);
        return test::printed(by.process(sources.back().root, flags));
    }
};

TEST_F(texts_of_included_files, order_the_attributes_of_later_ones_as_in_one_table) {
    EXPECT_EQ(again(preprocessor), "<r ><b z=\"2\" a=\"1\" /></r>");
}

TEST_F(texts_of_included_files, do_so_for_another_preprocessor_too) {
    document_t other_output;
    ko::xpp::preprocessor_t other(other_output, nullptr);
    EXPECT_EQ(again(other), "<r ><b z=\"2\" a=\"1\" /></r>");
}

TEST_F(texts_of_included_files, are_added_to_the_table_of_the_source) {
    EXPECT_GE(sources.back().atoms->find("z"), 0);
    EXPECT_EQ(sources.back().atoms->find("a"), -1);
}

TEST_F(texts_of_included_files, stay_good_when_the_source_is_gone) {
    write("define.xml", "<x:define name='d'><b a='1' z='2'/></x:define>");
    process_file("define.xml");
    sources.clear();
    EXPECT_EQ(run("<x:include file='" + dir.path("define.xml") + "'/><x:insert name='d'/>"),
              "<b a=\"1\" z=\"2\" />");
}

} // namespace

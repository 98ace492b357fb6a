#include "xml_preprocessor/fixture.h"

#include <sstream>

namespace {

using ko::lxml::element_t;

/// Large and deep sources. Each would take minutes at a quadratic cost, or end the program by
/// recursion.
class large_source : public test::preprocessor_test_t {
protected:
    /// A chain below a new top element: of elements "a", or of directives of that name.
    element_t* chain(std::size_t depth, const std::string& directive = "") {
        sources.emplace_back();
        auto& document = sources.back();
        const std::string name = directive.empty() ? "a" : directive;
        const std::string ns = directive.empty() ? "" : ko::xpp::default_xpp_uri;
        element_t* top = document.element_create("r", "");
        element_t* end = top;
        for (std::size_t i = 0; i < depth; ++i) {
            end = end->append(document.element_create(name, ns));
            if (directive == "if") {
                end->attribute_set("condition", "1");
            }
        }
        end->append(document.element_create("end", ""));
        return top;
    }

    static std::size_t depth_of(const element_t* e) {
        std::size_t depth = 0;
        for (; !e->children.empty(); e = e->children.front()) {
            ++depth;
        }
        return depth;
    }

    /// `count` pieces of text, in each of which "#" stands for its number.
    static std::string many(std::size_t count, const std::string& pattern) {
        std::string result;
        for (std::size_t i = 0; i < count; ++i) {
            for (const char c : pattern) {
                result += c == '#' ? std::to_string(i) : std::string(1, c);
            }
        }
        return result;
    }
};

TEST_F(large_source, may_be_a_million_levels_deep) {
    const element_t* top = preprocessor.process(chain(1000000), flags);
    EXPECT_EQ(depth_of(top), 1000001U);
}

TEST_F(large_source, may_nest_directives_a_hundred_thousand_levels_deep) {
    const element_t* top = preprocessor.process(chain(100000, "if"), flags);
    EXPECT_EQ(test::printed(top), "<r ><end /></r>");
}

TEST_F(large_source, may_nest_pragmas_a_million_levels_deep) {
    const element_t* top = preprocessor.process(chain(1000000, "pragma"), flags);
    EXPECT_EQ(test::printed(top), "<r ><end /></r>");
}

TEST_F(large_source, may_fail_at_its_deepest_level) {
    element_t* top = chain(100000);
    element_t* end = top;
    while (!end->children.empty()) {
        end = end->children.front();
    }
    end->append(end->document->element_create("if", ko::xpp::default_xpp_uri));
    EXPECT_THROWS(preprocessor.process(top, flags), "attribute condition missing in element if");
}

TEST_F(large_source, may_hold_a_hundred_thousand_definitions_and_insertions) {
    const std::string text = test::wrapped(many(100000, "<x:define name='d#'><a/></x:define>") +
                                           many(100000, "<x:insert name='d#'/>"));
    EXPECT_EQ(preprocessor.process(source(text), flags)->children.size(), 100000U);
}

TEST_F(large_source, may_hold_many_values_to_specify) {
    const std::string text = test::wrapped("<x:specify index='i' values='" + many(50000, "#,") +
                                           "0'><a/></x:specify>");
    EXPECT_EQ(preprocessor.process(source(text), flags)->children.size(), 50001U);
}

TEST_F(large_source, may_hold_many_cases) {
    const std::string text =
        test::wrapped("<x:switch condition='29999'>" +
                      many(30000, "<x:case expression='#'><a/></x:case>") + "</x:switch>");
    EXPECT_EQ(preprocessor.process(source(text), flags)->children.size(), 1U);
}

TEST_F(large_source, may_hold_an_element_with_a_hundred_thousand_attributes) {
    const std::string text = "<r" + many(100000, " a#='#'") + "/>";
    EXPECT_EQ(preprocessor.process(source(text), flags)->attributes.size(), 100000U);
}

/// "insert" of a definition that inserts itself.
class recursive_insert : public test::preprocessor_test_t {};

TEST_F(recursive_insert, may_end_by_a_condition) {
    EXPECT_EQ(run("<x:define name='count'><x:if condition='n=n-1'><x:insert name='count'/>"
                  "</x:if><x:evaluate expression='calls=calls+1'/></x:define>"
                  "<x:evaluate expression='n=5000'/><x:evaluate expression='calls=0'/>"
                  "<x:insert name='count'/><a e:calls='calls'/>"),
              "<a calls=\"5000\" />");
}

TEST_F(recursive_insert, without_an_end_stops_at_the_limit) {
    EXPECT_TRUE(fails("<x:define name='d'><a><x:insert name='d'/></a></x:define>"
                      "<x:insert name='d'/>",
                      "insert nested more than 10000 levels deep: d"));
    EXPECT_EQ(run("<x:define name='d'><b/></x:define><x:insert name='d'/>"), "<b />");
}

TEST_F(recursive_insert, works_to_the_limit_and_not_one_level_more) {
    const std::string define = "<x:define name='d'><x:if condition='n=n-1'><x:insert name='d'/>"
                               "</x:if></x:define>";
    EXPECT_EQ(run(define + "<x:evaluate expression='n=10000'/><x:insert name='d'/>"), "");
    EXPECT_TRUE(fails("<x:evaluate expression='n=10001'/><x:insert name='d'/>",
                      "insert nested more than 10000 levels deep: d"));
}

TEST_F(recursive_insert, limit_counts_levels_and_not_insertions) {
    EXPECT_EQ(run("<x:define name='d'/><x:repeat index='i' first='1' last='10001'>"
                  "<x:insert name='d'/></x:repeat>"),
              "");
}

} // namespace

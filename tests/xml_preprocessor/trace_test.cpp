// Where a failure arose: `trace_get`.
#include "xml_preprocessor/include_fixture.h"

#include <vector>

namespace {

using ko::lxml::element_t;
using ko::xpp::place_t;
using ko::xpp::preprocessor_t;

/// Places as one text, the innermost first: "FILE: DIRECTIVE DETAIL", the file without its
/// folder.
std::string shown(const std::vector<place_t>& places) {
    std::string result;
    for (const place_t& place : places) {
        result += result.empty() ? "" : " | ";
        result += place.file.substr(place.file.rfind('/') + 1) + ": " + place.directive;
        result += place.detail.empty() ? "" : " " + place.detail;
    }
    return result;
}

class preprocessor_trace : public test::include_test_t {
protected:
    /// The trace of a document that fails.
    std::string trace_of(const std::string& content) {
        EXPECT_ANY_THROW(run(content)) << content;
        return shown(preprocessor.trace_get());
    }
    /// The trace of a file that fails.
    std::string trace_of_file(const std::string& name) {
        EXPECT_ANY_THROW(process_file(name)) << name;
        return shown(preprocessor.trace_get());
    }
};

struct failure_t {
    const char* content;
    const char* trace;
};

TEST_F(preprocessor_trace, begins_with_the_directive_and_the_expression_at_fault) {
    const failure_t failures[] = {
        {"<x:if condition='1 +'/>", ": if condition=\"1 +\""},
        {"<x:if/>", ": if"},
        {"<x:evaluate expression='v'/>", ": evaluate expression=\"v\""},
        {"<x:define/>", ": define"},
        {"<x:for initialize='i=0' condition='i&lt;' update=''/>", ": for condition=\"i<\""},
        {"<x:for initialize='(' condition='0' update=''/>", ": for initialize=\"(\""},
        {"<x:repeat index='i' first='1' last='v'/>", ": repeat last=\"v\""},
        {"<x:repeat index='i' first='1'/>", ": repeat"},
        {"<x:switch condition='\"'/>", ": switch condition=\"\"\""},
        {"<x:switch condition='1'><x:case/></x:switch>", ": case"},
        {"<x:switch condition='1'><x:case expression='v'/></x:switch>",
         ": case expression=\"v\""},
        {"<x:insert name='n'/>", ": insert name=\"n\""},
        {"<x:specify index='i' values='1,v'/>", ": specify i = v"},
        {"<x:specify index='i'/>", ": specify"},
        {"<x:include file='none.xml'/>", ": include file=\"none.xml\""},
        {"<x:include/>", ": include"},
        {"<x:plugin name='p'/>", ": plugin name=\"p\""},
    };
    for (const failure_t& failure : failures) {
        EXPECT_EQ(trace_of(failure.content), failure.trace) << failure.content;
    }
}

TEST_F(preprocessor_trace, names_the_loops_around_it_with_the_value_of_their_variable) {
    EXPECT_EQ(trace_of("<x:for initialize=' i = 3' condition='i&lt;9' update='i=i+2'>"
                       "<x:repeat index='n' first='1' last='2'>"
                       "<x:specify index='m' values='4,n+1'><a><x:if condition='1'>"
                       "<x:evaluate expression='i==5 &amp;&amp; n==2 &amp;&amp; m==3 ? v : 0'/>"
                       "</x:if></a></x:specify></x:repeat></x:for>"),
              ": evaluate expression=\"i==5 && n==2 && m==3 ? v : 0\" | : specify m = 3 | "
              ": repeat n = 2 | : for i = 5");
}

TEST_F(preprocessor_trace, tells_the_pass_that_a_loop_is_in) {
    EXPECT_EQ(trace_of("<x:repeat index='n' first='1' last='9'>"
                       "<x:if condition='n == 4'><x:insert name='d'/></x:if></x:repeat>"),
              ": insert name=\"d\" | : repeat n = 4");
}

TEST_F(preprocessor_trace, shows_the_condition_of_a_loop_whose_variable_cannot_be_told) {
    EXPECT_EQ(trace_of("<x:for initialize='0' condition='1' update='0'><x:if/></x:for>"),
              ": if | : for 1");
    EXPECT_EQ(trace_of("<x:for initialize='2==2' condition='1' update='0'><x:if/></x:for>"),
              ": if | : for 1");
    EXPECT_EQ(trace_of("<x:for initialize='\"i\"=0' condition='1' update='0'><x:if/></x:for>"),
              ": if | : for 1");
}

TEST_F(preprocessor_trace, shows_an_expression_that_assigns_to_no_name) {
    for (const std::string& name : std::vector<std::string>{"{", ":", "[", "`", "1i"}) {
        EXPECT_EQ(trace_of("<x:for initialize='" + name + "=0' condition='0' update='0'/>"),
                  ": for initialize=\"" + name + "=0\"");
    }
}

TEST_F(preprocessor_trace, of_a_loop_that_fails_after_a_pass_names_it_once) {
    EXPECT_EQ(trace_of("<x:for initialize='i=0' condition='i&lt;1' update='v'><a/></x:for>"),
              ": for update=\"v\"");
    EXPECT_EQ(trace_of("<x:specify index='i' values='1,v'><a/></x:specify>"), ": specify i = v");
}

TEST_F(preprocessor_trace, goes_through_includes_insertions_and_files) {
    write("top.xml", "<x:include file='middle.xml'/><x:repeat index='n' first='7' last='7'>"
                     "<x:insert e:name='\"d\"'/></x:repeat>");
    write("middle.xml", "<x:define name='d'><x:include file='low.xml'/></x:define>");
    write("low.xml", "<a><x:repeat index='b' first='1'/></a>");
    EXPECT_EQ(trace_of_file("top.xml"),
              "low.xml: repeat | middle.xml: include file=\"low.xml\" | "
              "top.xml: insert name=\"d\" | top.xml: repeat n = 7");
}

TEST_F(preprocessor_trace, goes_through_plugins_even_one_that_freed_its_directive) {
    class freeing_t : public test::generator_t {
    public:
        using test::generator_t::generator_t;
        element_t* generate(element_t* directive) override {
            directive->document->element_remove(directive);
            return test::generator_t::generate(nullptr);
        }
    };
    element_t* const generated = source(test::wrapped("<x:insert name='none'/>"));
    preprocessor.register_plugin("p", new freeing_t(generated));
    EXPECT_EQ(trace_of("<a><x:plugin name='p'/></a>"),
              ": insert name=\"none\" | : plugin name=\"p\"");
}

TEST_F(preprocessor_trace, is_that_of_any_exception_of_a_plugin) {
    class throwing_t : public ko::xpp::plugin_t {
        element_t* generate(element_t*) override { throw 5; }
    };
    preprocessor.register_plugin("p", new throwing_t);
    EXPECT_EQ(trace_of("<x:repeat index='i' first='2' last='3'><x:plugin name='p'/></x:repeat>"),
              ": plugin name=\"p\" | : repeat i = 2");
}

/// A plug-in that processes the first child of its directive, and what then is to be done.
class nested_t : public ko::xpp::plugin_t {
public:
    nested_t(preprocessor_t& by, bool keeps) : preprocessor(by), swallows(keeps) {}
    element_t* generate(element_t* directive) override {
        try {
            preprocessor.process(directive->children.front(), preprocessor_t::process_include);
        } catch (const ko::exception_t&) {
            if (!swallows) {
                throw;
            }
        }
        return nullptr;
    }

private:
    preprocessor_t& preprocessor;
    bool swallows;
};

TEST_F(preprocessor_trace, of_a_process_inside_a_plugin_goes_on_with_what_is_around_the_plugin) {
    preprocessor.register_plugin("p", new nested_t(preprocessor, false));
    EXPECT_EQ(trace_of("<x:repeat index='i' first='2' last='3'><x:plugin name='p'>"
                       "<x:if condition='v'/></x:plugin></x:repeat>"),
              ": if condition=\"v\" | : plugin name=\"p\" | : repeat i = 2");
}

TEST_F(preprocessor_trace, of_a_process_whose_failure_a_plugin_handled_is_gone_after_success) {
    preprocessor.register_plugin("p", new nested_t(preprocessor, true));
    EXPECT_EQ(run("<x:plugin name='p'><x:if condition='v'/></x:plugin><a/>"), "<a />");
    EXPECT_EQ(shown(preprocessor.trace_get()), "");
}

TEST_F(preprocessor_trace, of_a_failure_after_one_that_a_plugin_handled_is_its_own) {
    preprocessor.register_plugin("p", new nested_t(preprocessor, true));
    EXPECT_EQ(trace_of("<x:plugin name='p'><x:if condition='v'/></x:plugin><x:if/>"), ": if");
}

TEST_F(preprocessor_trace, is_empty_before_the_first_process_and_after_a_success) {
    EXPECT_EQ(shown(preprocessor.trace_get()), "");
    EXPECT_EQ(trace_of("<x:if/>"), ": if");
    EXPECT_EQ(run("<a/>"), "<a />");
    EXPECT_EQ(shown(preprocessor.trace_get()), "");
}

TEST_F(preprocessor_trace, stays_until_the_next_process) {
    EXPECT_EQ(trace_of("<x:insert name='n'/>"), ": insert name=\"n\"");
    sources.clear();
    EXPECT_EQ(shown(preprocessor.trace_get()), ": insert name=\"n\"");
}

TEST_F(preprocessor_trace, of_the_top_element_is_that_element) {
    EXPECT_ANY_THROW(process("<x:if xmlns:x='" + ko::xpp::default_xpp_uri + "'/>"));
    EXPECT_EQ(shown(preprocessor.trace_get()), ": if");
}

/// A plug-in that asks where it is.
class asking_t : public ko::xpp::plugin_t {
public:
    asking_t(const preprocessor_t& by, std::string& into) : preprocessor(by), answer(into) {}
    element_t* generate(element_t*) override {
        answer = shown(preprocessor.trace_get());
        return nullptr;
    }

private:
    const preprocessor_t& preprocessor;
    std::string& answer;
};

TEST_F(preprocessor_trace, in_a_plugin_is_where_the_plugin_is) {
    std::string answer;
    preprocessor.register_plugin("ask", new asking_t(preprocessor, answer));
    EXPECT_EQ(run("<x:define name='d'><a><x:plugin name='ask'/></a></x:define>"
                  "<x:repeat index='i' first='1' last='2'><x:insert name='d'/></x:repeat>"),
              "<a /><a />");
    EXPECT_EQ(answer, ": plugin name=\"ask\" | : insert name=\"d\" | : repeat i = 2");
}

/// Documents that were loaded with positions.
class traced_positions : public preprocessor_trace {
protected:
    /// "FILE:LINE:COLUMN" of each place of a file that fails.
    std::string places_of(const std::string& name) {
        ko::lxml::load_options_t options;
        options.positions = true;
        sources.emplace_back();
        sources.back().load(dir.path(name), options);
        EXPECT_ANY_THROW(preprocessor.process(sources.back().root, flags));
        std::string result;
        for (const place_t& place : preprocessor.trace_get()) {
            result += " " + place.file.substr(place.file.rfind('/') + 1) + ":" +
                      std::to_string(place.line) + ":" + std::to_string(place.column);
        }
        return result;
    }
};

TEST_F(traced_positions, of_a_source_are_those_of_its_start_tags) {
    write("a.xml", "\n<x:repeat index='i' first='1' last='1'>\n  <b/><x:if/>\n</x:repeat>");
    EXPECT_EQ(places_of("a.xml"), " a.xml:3:6 a.xml:2:0");
}

TEST_F(traced_positions, go_on_in_what_a_source_includes) {
    write("a.xml", "\n\n <x:include file='b.xml'/>");
    write("b.xml", "\n<c/><x:include file='c.xml'/>");
    write("c.xml", "\n\n\n<x:insert name='n'/>");
    EXPECT_EQ(places_of("a.xml"), " c.xml:4:0 b.xml:2:4 a.xml:3:1");
}

TEST_F(traced_positions, are_not_there_for_a_source_without_them) {
    write("a.xml", "<x:include file='b.xml'/>");
    write("b.xml", "<x:if/>");
    EXPECT_ANY_THROW(process_file("a.xml"));
    EXPECT_EQ(preprocessor.trace_get().front().line, 0U);
}

TEST_F(traced_positions, change_neither_the_line_nor_the_message_of_a_file_that_cannot_be_read) {
    dir.write("bad.xml", "<r>\n<a></r>");
    write("a.xml", "<x:include file='bad.xml'/>");
    const auto outcome = [&](bool with_positions) {
        ko::lxml::load_options_t options;
        options.positions = with_positions;
        ko::lxml::document_t document;
        document.load(dir.path("a.xml"), options);
        std::string message;
        const std::string line = test::standard_output([&] {
            try {
                preprocessor.process(document.root, flags);
            } catch (const ko::errorcode_t& e) {
                message = std::to_string(e.code_get()) + e.what();
            }
        });
        return line + message;
    };
    EXPECT_EQ(outcome(true), outcome(false));
    EXPECT_NE(outcome(true).find("line=2"), std::string::npos);
}

} // namespace

// What an observer is told: `observer_set`, and the files of `files_get`.
#include "xml_preprocessor/include_fixture.h"

#include <gmock/gmock.h>
#include <vector>

namespace {

using ko::lxml::element_t;
using ko::xpp::place_t;
using ko::xpp::preprocessor_t;
using testing::ElementsAre;
using testing::IsEmpty;

std::string name_of(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Writes down what it is told.
class recorder_t : public ko::xpp::observer_t {
public:
    void file_opened(const std::string& path) override { told("file " + name_of(path)); }
    void expression_failed(const place_t& place, const std::string& expression,
                           const std::string& message) override {
        told("expression " + shown(place) + " [" + expression + "] " + message);
    }
    void directive_unknown(const place_t& place, const std::string& name) override {
        told("unknown " + shown(place) + " [" + name + "]");
    }
    void text_dropped(const place_t& place) override { told("text " + shown(place)); }
    void element_made(const element_t& source, const element_t& output) override {
        if (elements) {
            told("element " + source.name_get() + " " + test::printed(&output));
        }
    }

    void pass_begun(const element_t& loop) override {
        if (elements) {
            told("pass " + loop.name_get());
        }
    }

    std::vector<std::string> lines;
    bool elements = false; ///< whether elements and passes are written down
    std::string refused;   ///< what makes it throw

private:
    static std::string shown(const place_t& place) {
        return name_of(place.file) + ":" + place.directive +
               (place.detail.empty() ? "" : " " + place.detail);
    }
    void told(const std::string& line) {
        if (!refused.empty() && line.compare(0, refused.size(), refused) == 0) {
            throw ko::exception_t("refused: " + line);
        }
        lines.push_back(line);
    }
};

class preprocessor_observer : public test::include_test_t {
protected:
    preprocessor_observer() { preprocessor.observer_set(&recorder); }

    /// What is told of a document.
    const std::vector<std::string>& told(const std::string& content) {
        recorder.lines.clear();
        test::standard_output([&] { run(content); });
        return recorder.lines;
    }

    recorder_t recorder;
};

TEST_F(preprocessor_observer, is_told_of_expressions_that_are_kept_as_they_are) {
    EXPECT_THAT(told("<a e:k='1+' e:m='1' e:v='none' n='+'/>"),
                ElementsAre("expression :a k=\"1+\" [1+] "
                            "binary_t::construct() -- expected right operand",
                            "expression :a v=\"none\" [none] "
                            "label_t::evaluate() -- access to undefined term, 'none'"));
}

TEST_F(preprocessor_observer, is_told_of_a_blank_expression_by_a_message_of_its_own) {
    EXPECT_THAT(told("<a e:k='1+'/><a e:m=' '/>"),
                ElementsAre("expression :a k=\"1+\" [1+] "
                            "binary_t::construct() -- expected right operand",
                            "expression :a m=\" \" [ ] expression is blank"));
}

TEST_F(preprocessor_observer, is_told_of_a_value_of_a_directive_that_is_kept) {
    EXPECT_THAT(told("<x:define name='d+'/><x:insert e:name='d+'/>"),
                ElementsAre("expression :insert name=\"d+\" [d+] "
                            "binary_t::construct() -- expected right operand"));
}

TEST_F(preprocessor_observer, leaves_the_line_on_standard_output) {
    EXPECT_EQ(test::standard_output([&] { run("<a e:k='none'/>"); }),
              "Caught exception in expression : none\n");
}

TEST_F(preprocessor_observer, is_told_of_directives_that_are_dropped) {
    EXPECT_THAT(told("<x:repaet><x:if/></x:repaet><x:if condition='1'><x:case/></x:if>"
                     "<x:if condition='0'><x:defualt/></x:if>"),
                ElementsAre("unknown :repaet [repaet]", "unknown :case [case]"));
}

TEST_F(preprocessor_observer, is_told_of_text_that_is_dropped) {
    EXPECT_THAT(
        told("<x:if condition='1'> t </x:if><x:if condition='0'><![CDATA[t]]></x:if>"
             "<x:define name='d'>t<a/></x:define><x:evaluate expression='1'>t</x:evaluate>"
             "<x:switch condition='1'>t<x:case expression='2'>t</x:case>"
             "<x:default>t</x:default></x:switch>"),
        ElementsAre("text :if", "text :if", "text :define", "text :evaluate", "text :switch",
                    "text :default"));
}

TEST_F(preprocessor_observer, is_not_told_of_white_space_nor_of_text_that_is_copied) {
    EXPECT_THAT(told("t<a>t</a><x:if condition='1'> \n\t<a/> </x:if>"), IsEmpty());
}

TEST_F(preprocessor_observer, is_told_of_the_text_beside_what_an_include_brings_in) {
    dir.write("part.xml", "<part>lost<a/></part>");
    write("main.xml", "<x:include file='part.xml'/>");
    process_file("main.xml");
    EXPECT_THAT(recorder.lines, ElementsAre("file part.xml", "text part.xml:part"));
}

TEST_F(preprocessor_observer, is_told_of_each_element_with_its_texts_and_attributes) {
    recorder.elements = true;
    EXPECT_THAT(told("<x:repeat index='i' first='1' last='2'><a e:n='i'>t<b/></a></x:repeat>"),
                ElementsAre("element r <r />", "pass repeat", "element a <a n=\"1\" >t</a>",
                            "element b <b />", "pass repeat", "element a <a n=\"2\" >t</a>",
                            "element b <b />"));
}

TEST_F(preprocessor_observer, is_told_of_each_pass_of_a_loop_that_makes_nothing) {
    recorder.elements = true;
    EXPECT_THAT(told("<x:repeat index='i' first='1' last='2'/>"
                     "<x:for initialize='k=0' condition='k&lt;1' update='k=k+1'/>"
                     "<x:repeat index='i' first='2' last='1'/>"),
                ElementsAre("element r <r />", "pass repeat", "pass repeat", "pass for"));
}

TEST_F(preprocessor_observer, can_ask_where_an_element_is_made) {
    class asking_t : public ko::xpp::observer_t {
    public:
        void element_made(const element_t&, const element_t&) override {
            answer.clear();
            for (const place_t& place : preprocessor->trace_get()) {
                answer += place.directive + " " + place.detail + "|";
            }
        }
        preprocessor_t* preprocessor = nullptr;
        std::string answer;
    } asking;
    asking.preprocessor = &preprocessor;
    preprocessor.observer_set(&asking);
    run("<x:repeat index='i' first='1' last='2'><x:if condition='i'><b/></x:if></x:repeat>");
    EXPECT_EQ(asking.answer, "b |repeat i = 2|");
}

TEST_F(preprocessor_observer, ends_the_process_by_what_it_throws) {
    dir.write("part.xml", "<r/>");
    recorder.elements = true;
    const std::pair<const char*, std::string> cases[] = {
        {"file", "<x:include file='" + dir.path("part.xml") + "'/>"},
        {"expression", "<a e:k='+'/>"},
        {"unknown", "<x:none/>"},
        {"text", "<x:if condition='1'>t</x:if>"},
        {"element b", "<a><b/></a>"},
        {"pass", "<x:repeat index='i' first='1' last='2'/>"},
    };
    for (const auto& [what, content] : cases) {
        recorder.refused = what;
        try {
            run(content);
            ADD_FAILURE() << what;
        } catch (const ko::exception_t& e) {
            EXPECT_EQ(std::string(e.what()).find("refused: " + recorder.refused), 0U) << e.what();
        }
        recorder.refused.clear();
        EXPECT_EQ(run("<a/>"), "<a />") << what;
    }
}

TEST_F(preprocessor_observer, is_told_nothing_more_once_it_is_taken_off) {
    preprocessor.observer_set(nullptr);
    EXPECT_THAT(told("<x:none/><a e:k='+'/><x:if condition='1'>t</x:if>"), IsEmpty());
}

TEST_F(preprocessor_observer, need_not_do_anything) {
    ko::xpp::observer_t silent;
    preprocessor.observer_set(&silent);
    dir.write("part.xml", "<r/>");
    EXPECT_EQ(run("<x:none/><a e:k='+'/><x:if condition='1'>t</x:if><x:include file='" +
                  dir.path("part.xml") + "'/>"),
              "<a k=\"+\" />");
}

class files_read : public test::include_test_t {
protected:
    /// The files that the last `process` read, without their folder.
    std::vector<std::string> read() const {
        std::vector<std::string> names;
        for (const std::string& path : preprocessor.files_get()) {
            names.push_back(name_of(path));
        }
        return names;
    }
};

TEST_F(files_read, are_those_that_were_read_each_once_in_order) {
    write("b.xml", "<x:include file='c.xml'/>");
    write("c.xml", "");
    write("a.xml", "<x:include file='b.xml'/><x:include file='c.xml'/><x:include file='b.xml'/>");
    process_file("a.xml");
    EXPECT_THAT(read(), ElementsAre("b.xml", "c.xml"));
    EXPECT_EQ(preprocessor.files_get().front(), dir.path("b.xml"));
}

TEST_F(files_read, are_those_of_the_last_process_only) {
    write("part.xml", "");
    write("main.xml", "<x:include file='part.xml'/>");
    process_file("main.xml");
    run("<a/>");
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(files_read, include_the_one_that_failed_but_none_that_was_not_found) {
    dir.write("bad.xml", "<r>");
    write("main.xml", "<x:include file='bad.xml'/>");
    write("other.xml", "<x:include file='none.xml'/>");
    test::standard_output([&] { EXPECT_ANY_THROW(process_file("main.xml")); });
    EXPECT_THAT(read(), ElementsAre("bad.xml"));
    EXPECT_ANY_THROW(process_file("other.xml"));
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(files_read, that_a_cache_kept_are_not_read) {
    ko::xpp::file_cache_t cache;
    preprocessor_t cached(output, &cache);
    write("part.xml", "");
    write("main.xml", "<x:include file='part.xml'/>");
    process_file(cached, "main.xml");
    EXPECT_THAT(cached.files_get(), ElementsAre(dir.path("part.xml")));
    process_file(cached, "main.xml");
    EXPECT_THAT(cached.files_get(), IsEmpty());
}

} // namespace

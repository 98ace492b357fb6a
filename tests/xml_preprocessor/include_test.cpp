#include "xml_preprocessor/include_fixture.h"

#include <sys/stat.h>

#include <thread>

#include "errorcode/errorcode.h"
#include "support/expat_failure.h"
#include "support/ordinary_user.h"

namespace {

using ko::xpp::preprocessor_t;

class include : public test::include_test_t {};

TEST_F(include, contributes_the_processed_children_of_the_root_and_not_the_root) {
    write("main.xml", "<a/><x:include file='part.xml'/><z/>");
    dir.write("part.xml", "<part xmlns:x='kobase.org/xmlns/xmlpreprocessor' id='no'>no"
                          "<b/><c><x:if condition='1'><d/></x:if></c><e/></part>");
    EXPECT_EQ(process_file("main.xml"), "<r ><a /><b /><c ><d /></c><e /><z /></r>");
}

TEST_F(include, runs_the_children_of_a_root_that_is_a_directive) {
    write("main.xml", "<x:include file='part.xml'/>");
    dir.write("part.xml", "<x:if xmlns:x='kobase.org/xmlns/xmlpreprocessor' condition='0'>"
                          "<a/></x:if>");
    EXPECT_EQ(process_file("main.xml"), "<r ><a /></r>");
}

TEST_F(include, finds_a_file_beside_the_including_one) {
    write("main.xml", "<x:include file='sub/one.xml'/>");
    write("sub/one.xml", "<x:include file='two.xml'/>");
    write("sub/two.xml", "<x:include file='../three.xml'/>");
    write("three.xml", "<found/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><found /></r>");
}

TEST_F(include, of_a_document_without_a_directory_finds_the_file_by_its_name) {
    write("part.xml", "<found/>");
    EXPECT_EQ(run("<x:include file='" + dir.path("part.xml") + "'/>"), "<found />");
}

TEST_F(include, in_a_definition_looks_beside_the_file_of_the_definition) {
    write("main.xml", "<x:include file='sub/defs.xml'/><x:insert name='d'/>");
    write("sub/defs.xml", "<x:define name='d'><x:include file='part.xml'/></x:define>");
    write("sub/part.xml", "<found/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><found /></r>");
}

TEST_F(include, is_read_again_each_time_without_a_cache) {
    write("main.xml", "<x:include file='part.xml'/>");
    write("part.xml", "<one/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><one /></r>");
    write("part.xml", "<two/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><two /></r>");
}

TEST_F(include, takes_its_file_as_text_in_any_namespace) {
    write("1+1", "<found/>");
    write("main.xml", "<x:include e:file='1+1'/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><found /></r>");
}

TEST_F(include, requires_a_file) {
    EXPECT_TRUE(fails("<x:include/>", "attribute file missing in element include"));
}

TEST_F(include, of_a_missing_file_fails_with_its_name_as_written) {
    write("main.xml", "<x:include file='no%s.xml'/>");
    EXPECT_TRUE(file_fails("main.xml", "failed to load xml file:no%s.xml"));
}

TEST_F(include, keeps_definitions_usable_when_the_source_is_gone) {
    write("main.xml", "<x:include file='defs.xml'/>");
    write("defs.xml", "<x:define name='d'><x:if condition='1'><a b='1'/></x:if></x:define>");
    EXPECT_EQ(process_file("main.xml"), "<r />");
    sources.clear();
    EXPECT_EQ(run("<x:insert name='d'/>"), "<a b=\"1\" />");
}

TEST_F(include, orders_attributes_as_one_table_with_the_source_does) {
    write("main.xml", "<x:if condition='0'><a m='1'/><a b='1'/></x:if>"
                      "<x:include file='part.xml'/>");
    write("part.xml", "<a b='2' m='1'/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><a m=\"1\" b=\"2\" /></r>");
}

TEST_F(include, with_the_flag_clear_touches_no_file) {
    flags = static_cast<preprocessor_t::flags_e>(0);
    write("main.xml", "<x:include file='part.xml'/><x:include file='missing.xml'/>");
    dir.write("part.xml", "not xml");
    EXPECT_EQ(process_file("main.xml"), "<r />");
}

TEST_F(include, reads_any_encoding_that_the_parser_reads) {
    write("main.xml", "<x:include file='latin.xml'/><x:include file='wide.xml'/>");
    dir.write("latin.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><i><a t='\xE9'/></i>");
    const std::string narrow = "<i><b/></i>";
    std::string wide = "\xFF\xFE";
    for (const char c : narrow) {
        wide += c;
        wide += '\0';
    }
    dir.write("wide.xml", wide);
    EXPECT_EQ(process_file("main.xml"), "<r ><a t=\"&#195;&#169;\" /><b /></r>");
}

TEST_F(include, errors_of_the_parser_propagate_with_their_code) {
    write("main.xml", "<a/><x:include file='part.xml'/>");
    dir.write("part.xml", "<a></b>");
    const std::string line = test::standard_output([&] {
        EXPECT_THROWS(process_file("main.xml"), ko::errorcode::xml_parse_error,
                      "mismatched tag line=1 column=5: xml parse error");
    });
    EXPECT_EQ(line, "Caught exception in " + dir.path("part.xml") + "\n");
    dir.write("part.xml", "<a><b/></a>");
    EXPECT_EQ(process_file("main.xml"), "<r ><a /><b /></r>") << "it can be used again";
}

TEST_F(include, of_a_directory_is_a_read_error) {
    write("main.xml", "<x:include file='part.xml'/>");
    const std::string path = dir.make_dir("part.xml");
    test::standard_output([&] {
        EXPECT_THROWS(process_file("main.xml"), ko::errorcode::xml_file_read,
                      path + ": xml file read failure");
    });
}

TEST_F(include, of_a_path_below_a_file_fails) {
    write("main.xml", "<x:include file='main.xml/part.xml'/>");
    EXPECT_TRUE(file_fails("main.xml", "failed to load xml file:main.xml/part.xml"));
}

TEST_F(include, of_an_empty_file_is_a_parse_error) {
    write("main.xml", "<x:include file='part.xml'/>");
    dir.write("part.xml", "");
    test::standard_output([&] {
        EXPECT_THROWS(process_file("main.xml"), ko::errorcode::xml_parse_error,
                      test::parse_error_message(""));
    });
}

TEST_F(include, reads_a_pipe_to_its_end) {
    write("main.xml", "<x:include file='pipe.xml'/>");
    ASSERT_EQ(mkfifo(dir.path("pipe.xml").c_str(), 0600), 0);
    std::thread writer([&] { dir.write("pipe.xml", "<i><found/></i>"); });
    const std::string result = process_file("main.xml");
    writer.join();
    EXPECT_EQ(result, "<r ><found /></r>");
}

TEST_F(include, of_a_file_that_cannot_be_read_fails) {
    write("main.xml", "<x:include file='part.xml'/>");
    write("part.xml", "<a/>");
    chmod(dir.path("part.xml").c_str(), 0);
    const test::ordinary_user_t user(dir.path());
    EXPECT_TRUE(file_fails("main.xml", "failed to load xml file:part.xml"));
}

TEST_F(include, of_itself_ends_at_the_limit) {
    write("main.xml", "<a><x:include file='main.xml'/></a>");
    EXPECT_TRUE(file_fails("main.xml", "include nested more than 200 levels deep: main.xml"));
    write("fine.xml", "<a/>");
    EXPECT_EQ(process_file("fine.xml"), "<r ><a /></r>");
}

TEST_F(include, of_itself_may_end_by_a_condition) {
    write("main.xml", "<x:evaluate expression='n=150'/><x:include file='part.xml'/>");
    write("part.xml", "<x:if condition='n=n-1'><x:include file='part.xml'/></x:if>"
                      "<x:evaluate expression='n=n+1'/>");
    EXPECT_EQ(process_file("main.xml"), "<r />");
    EXPECT_EQ(run("<a e:n='n'/>"), "<a n=\"150\" />");
}

TEST_F(include, of_itself_works_to_the_limit_and_not_one_level_more) {
    write("part.xml", "<x:if condition='n=n-1'><x:include file='part.xml'/></x:if>");
    write("main.xml", "<x:evaluate expression='n=200'/><x:include file='part.xml'/>");
    EXPECT_EQ(process_file("main.xml"), "<r />");
    write("more.xml", "<x:evaluate expression='n=201'/><x:include file='part.xml'/>");
    EXPECT_TRUE(file_fails("more.xml", "include nested more than 200 levels deep: part.xml"));
}

/// Generates the children of a root of its own.
class part_plugin_t : public ko::xpp::plugin_t {
public:
    explicit part_plugin_t(const std::string& text) { document.load_from_string(text); }
    ko::lxml::element_t* generate(ko::lxml::element_t*) override { return document.root; }

private:
    ko::lxml::document_t document;
};

/// A definition that brings itself in by way of a plug-in and of an included file.
class mixed_nesting : public test::include_test_t {
protected:
    void SetUp() override {
        preprocessor.register_plugin(
            "gen",
            new part_plugin_t(test::wrapped("<x:include file='" + dir.path("part.xml") + "'/>")));
        write("part.xml", "<x:insert name='d'/>");
        EXPECT_EQ(run("<x:define name='d'><x:if condition='n=n-1'><x:plugin name='gen'/></x:if>"
                      "<x:evaluate expression='n=n+1'/></x:define>"),
                  "");
    }

    const std::string insert = "<x:insert name='d'/><a e:n='n'/>";
};

TEST_F(mixed_nesting, may_end_by_a_condition) {
    EXPECT_EQ(run("<x:evaluate expression='n=150'/>" + insert), "<a n=\"150\" />");
}

TEST_F(mixed_nesting, without_an_end_stops_at_a_limit_each_time_anew) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(fails("<x:evaluate expression='n=1000'/>" + insert,
                          "plugin nested more than 200 levels deep: gen"));
    }
    EXPECT_EQ(run("<x:evaluate expression='n=150'/>" + insert), "<a n=\"150\" />");
}

class search_path : public test::include_test_t {
protected:
    void SetUp() override {
        write("main.xml", "<x:include file='a.xml'/>");
        write("no.xml", "<x:include file='a.xml' searchpath='false'/>");
        write("yes.xml", "<x:include file='a.xml' searchpath='true'/>");
        write("conf\\a.xml", "<from_path/>");
        preprocessor.search_path_add(dir.path("conf"));
    }

    const std::string from_path = "<r ><from_path /></r>";
    const std::string beside = "<r ><beside /></r>";
    const std::string not_found = "failed to load xml file:a.xml";
};

TEST_F(search_path, entry_gets_a_backslash_at_its_end) {
    EXPECT_EQ(process_file("main.xml"), from_path);
}

TEST_F(search_path, entry_that_ends_in_a_backslash_is_taken_as_it_is) {
    preprocessor_t other(output, nullptr);
    other.search_path_add(dir.path("conf\\"));
    EXPECT_EQ(process_file(other, "main.xml"), from_path);
}

TEST_F(search_path, entry_that_ends_in_a_slash_gets_a_backslash_too) {
    preprocessor_t other(output, nullptr);
    other.search_path_add(dir.path() + "/");
    write("\\a.xml", "<odd/>");
    EXPECT_EQ(process_file(other, "main.xml"), "<r ><odd /></r>");
}

TEST_F(search_path, is_searched_in_the_order_of_insertion) {
    write("later\\a.xml", "<later/>");
    preprocessor.search_path_add(dir.path("later"));
    EXPECT_EQ(process_file("main.xml"), from_path);
    std::filesystem::remove(dir.path("conf\\a.xml"));
    EXPECT_EQ(process_file("main.xml"), "<r ><later /></r>");
}

TEST_F(search_path, comes_before_the_directory_of_the_including_document) {
    write("a.xml", "<beside/>");
    EXPECT_EQ(process_file("main.xml"), from_path);
    EXPECT_EQ(process_file("no.xml"), beside);
}

TEST_F(search_path, set_to_false_searches_only_the_directory_of_the_including_document) {
    EXPECT_TRUE(file_fails("no.xml", not_found));
}

TEST_F(search_path, is_used_by_default_only_while_that_is_on) {
    preprocessor.search_path_use_default(false);
    EXPECT_TRUE(file_fails("main.xml", not_found));
    EXPECT_EQ(process_file("yes.xml"), from_path);
    preprocessor.search_path_use_default(true);
    EXPECT_EQ(process_file("main.xml"), from_path);
}

TEST_F(search_path, is_used_for_exactly_true) {
    for (const char* value : {"TRUE", "1", "yes", ""}) {
        write("odd.xml", std::string("<x:include file='a.xml' searchpath='") + value + "'/>");
        EXPECT_TRUE(file_fails("odd.xml", not_found)) << value;
    }
}

TEST_F(search_path, refuses_an_empty_directory) {
    EXPECT_THROWS(preprocessor.search_path_add(""),
                  "preprocessor_t::search_path_add() -- empty directory");
    EXPECT_EQ(process_file("main.xml"), from_path);
}

} // namespace

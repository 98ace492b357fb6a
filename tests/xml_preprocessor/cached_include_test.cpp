#include "xml_preprocessor/include_fixture.h"

#include "errorcode/errorcode.h"

namespace {

using ko::lxml::document_t;
using ko::xpp::preprocessor_t;

/// Comes before the preprocessor among the bases of a test, and so outlives it.
struct with_cache_t {
    ko::xpp::file_cache_t cache;
};

class cached_include : protected with_cache_t, public test::include_test_t {
protected:
    cached_include() : include_test_t(&cache) {}
};

TEST_F(cached_include, reads_a_file_once) {
    write("main.xml", "<x:include file='part.xml'/><x:include file='part.xml'/>");
    write("part.xml", "<one/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><one /><one /></r>");
    write("part.xml", "<two/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><one /><one /></r>");
    std::filesystem::remove(dir.path("part.xml"));
    EXPECT_EQ(process_file("main.xml"), "<r ><one /><one /></r>");
}

TEST_F(cached_include, is_shared_by_preprocessors) {
    write("main.xml", "<x:include file='part.xml'/>");
    write("part.xml", "<one/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><one /></r>");
    write("part.xml", "<two/>");
    document_t other_output;
    preprocessor_t other(other_output, &cache);
    EXPECT_EQ(process_file(other, "main.xml"), "<r ><one /></r>");
}

TEST_F(cached_include, keeps_a_document_under_the_text_of_the_attribute) {
    write("main.xml", "<x:include file='part.xml'/><x:include file='./part.xml'/>");
    write("part.xml", "<one/>");
    process_file("main.xml");
    ASSERT_NE(cache.get("part.xml"), nullptr);
    ASSERT_NE(cache.get("./part.xml"), nullptr);
    EXPECT_NE(cache.get("part.xml"), cache.get("./part.xml"));
    EXPECT_EQ(cache.get("part.xml")->file_name, dir.path("part.xml"));
    EXPECT_EQ(cache.get("part.xml")->atoms, &cache.atom_table_get());
}

TEST_F(cached_include, finds_the_first_document_of_a_name_whatever_the_directory) {
    write("main.xml", "<x:include file='one/main.xml'/><x:include file='two/main.xml'/>");
    write("one/main.xml", "<x:include file='part.xml'/>");
    write("two/main.xml", "<x:include file='part.xml'/>");
    write("one/part.xml", "<one/>");
    write("two/part.xml", "<two/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><one /><one /></r>");
}

TEST_F(cached_include, takes_a_document_that_the_host_stored) {
    auto* doc = new document_t;
    doc->load_from_string(test::wrapped("<x:if condition='1'><stored/></x:if>"));
    cache.insert("virtual.xml", doc);
    EXPECT_EQ(run("<x:include file='virtual.xml'/>"), "<stored />");
}

TEST_F(cached_include, loads_the_file_when_the_stored_document_has_no_root) {
    const std::unique_ptr<document_t> rootless(new document_t);
    cache.insert("part.xml", rootless.get());
    write("main.xml", "<x:include file='part.xml'/>");
    write("part.xml", "<found/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><found /></r>");
    EXPECT_NE(cache.get("part.xml"), rootless.get());
}

TEST_F(cached_include, that_fails_leaves_the_cache_as_it_was) {
    write("main.xml", "<x:include file='part.xml'/>");
    EXPECT_TRUE(file_fails("main.xml", "failed to load xml file:part.xml"));
    EXPECT_EQ(cache.get("part.xml"), nullptr);
    dir.write("part.xml", "<a>");
    test::standard_output([&] { EXPECT_THROW(process_file("main.xml"), ko::errorcode_t); });
    EXPECT_EQ(cache.get("part.xml"), nullptr);
    write("part.xml", "<found/>");
    EXPECT_EQ(process_file("main.xml"), "<r ><found /></r>");
}

TEST_F(cached_include, with_the_flag_clear_reads_nothing) {
    flags = static_cast<preprocessor_t::flags_e>(0);
    write("main.xml", "<x:include file='part.xml'/>");
    write("part.xml", "<one/>");
    EXPECT_EQ(process_file("main.xml"), "<r />");
    EXPECT_EQ(cache.get("part.xml"), nullptr);
}

TEST_F(cached_include, of_itself_ends_at_the_limit) {
    write("main.xml", "<a><x:include file='main.xml'/></a>");
    EXPECT_TRUE(file_fails("main.xml", "include nested more than 200 levels deep: main.xml"));
}

} // namespace

#include "xml_preprocessor/file_cache.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using ko::lxml::document_t;
using ko::xpp::file_cache_t;

TEST(file_cache, gives_null_for_an_unknown_name) {
    file_cache_t cache;
    EXPECT_EQ(cache.get("a.xml"), nullptr);
}

TEST(file_cache, gives_the_document_stored_under_a_name) {
    file_cache_t cache;
    auto* doc = new document_t;
    cache.insert("a.xml", doc);
    EXPECT_EQ(cache.get("a.xml"), doc);
    EXPECT_EQ(cache.get("A.xml"), nullptr);
    EXPECT_EQ(cache.get("./a.xml"), nullptr);
}

TEST(file_cache, gives_a_replaced_document_back_to_the_caller) {
    file_cache_t cache;
    const std::unique_ptr<document_t> first(new document_t);
    cache.insert("a.xml", first.get());
    auto* second = new document_t;
    cache.insert("a.xml", second);
    EXPECT_EQ(cache.get("a.xml"), second);
    EXPECT_EQ(first->root, nullptr) << "the first is still there";
}

TEST(file_cache, takes_null_for_no_document) {
    file_cache_t cache;
    cache.insert("a.xml", nullptr);
    EXPECT_EQ(cache.get("a.xml"), nullptr);
}

TEST(file_cache, has_a_table_that_outlives_its_documents) {
    file_cache_t cache;
    auto* doc = new document_t(&cache.atom_table_get());
    doc->load_from_string("<only_here/>");
    cache.insert("a.xml", doc);
    EXPECT_EQ(doc->root->name, cache.atom_table_get().find("only_here"));
}

} // namespace

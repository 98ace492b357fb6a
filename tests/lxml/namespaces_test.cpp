#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"

namespace {

using ko::lxml::document_t;

TEST(namespaces, bind_a_prefix_and_a_uri_to_each_other) {
    document_t doc;
    doc.add_ns_prefix("p", "urn:x");
    EXPECT_EQ(doc.uri_prefix_get("urn:x"), "p");
    EXPECT_EQ(doc.uri_prefix_expand("p"), "urn:x");
}

TEST(namespaces, intern_the_prefix_before_the_uri) {
    document_t doc;
    doc.add_ns_prefix("p", "urn:x");
    EXPECT_EQ(doc.atoms->find("p"), 1);
    EXPECT_EQ(doc.atoms->find("urn:x"), 2);
    EXPECT_EQ(doc.uri_to_prefix, (std::map<int, int>{{2, 1}}));
    EXPECT_EQ(doc.prefix_to_uri, (std::map<int, int>{{1, 2}}));
}

TEST(namespaces, give_the_later_of_two_prefixes_of_one_uri) {
    document_t doc;
    doc.add_ns_prefix("p", "urn:x");
    doc.add_ns_prefix("q", "urn:x");
    EXPECT_EQ(doc.uri_prefix_get("urn:x"), "q");
    EXPECT_EQ(doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(doc.uri_prefix_expand("q"), "urn:x");
}

TEST(namespaces, keep_the_first_uri_of_a_rebound_prefix_mapped_to_it) {
    document_t doc;
    doc.add_ns_prefix("p", "urn:x");
    doc.add_ns_prefix("p", "urn:y");
    EXPECT_EQ(doc.uri_prefix_expand("p"), "urn:y");
    EXPECT_EQ(doc.uri_prefix_get("urn:x"), "p");
    EXPECT_EQ(doc.uri_prefix_get("urn:y"), "p");
}

TEST(namespaces, add_an_unknown_uri_that_is_asked_for) {
    document_t doc;
    EXPECT_EQ(doc.uri_prefix_get("urn:x"), "");
    EXPECT_EQ(doc.atoms->find("urn:x"), 1);
}

TEST(namespaces, add_an_unknown_prefix_that_is_asked_for) {
    document_t doc;
    EXPECT_EQ(doc.uri_prefix_expand("p"), "");
    EXPECT_EQ(doc.atoms->find("p"), 1);
}

TEST(namespaces, give_the_library_wide_empty_string_where_nothing_is_bound) {
    document_t doc;
    EXPECT_EQ(&doc.uri_prefix_get("urn:x"), &ko::lxml::str_empty);
    EXPECT_EQ(&doc.uri_prefix_expand("p"), &ko::lxml::str_empty);
}

TEST(namespaces, may_bind_the_empty_prefix) {
    document_t doc;
    doc.add_ns_prefix("", "urn:x");
    EXPECT_EQ(doc.uri_prefix_expand(""), "urn:x");
    EXPECT_EQ(doc.uri_prefix_get("urn:x"), "");
}

struct split_case_t {
    const char* qualified;
    const char* local;
    const char* prefix;
};

/// The root of a document whose root `p:b` is in a namespace.
std::string root_in(const std::string& uri) {
    document_t doc;
    doc.load_from_string("<p:b xmlns:p='" + uri + "'/>");
    return doc.root->name_get() + " in " + doc.root->ns_get();
}

// Callers rely on names being split as texts are: what stands in double quotes is not split.
TEST(namespaces, that_begin_with_a_double_quote_are_read_as_quoted) {
    EXPECT_EQ(root_in("urn:&#34;x"), "b in urn:\"x");
    EXPECT_EQ(root_in("&#34;x&#34;"), "b in x");
    EXPECT_EQ(root_in("&#34;x"), "x|b|p in ");
    EXPECT_EQ(root_in("&#34;&#34;"), "p in b");
    EXPECT_THROWS(root_in("&#34;x&#34;y"), ko::errorcode::xml_rethrow_exception,
                  "error parsing uri : got 4 tokens line=1 column=0: xml error");
}

TEST(split_ns, splits_at_the_first_colon) {
    const split_case_t cases[] = {
        {"p:a", "a", "p"}, {"p:a:b", "a:b", "p"}, {":a", "a", ""},
        {"p:", "", "p"},   {"a", "a", "old"},     {"", "", "old"},
    };
    for (const split_case_t& c : cases) {
        std::string local = "old";
        std::string prefix = "old";
        ko::lxml::split_ns(c.qualified, local, prefix);
        EXPECT_EQ(local, c.local) << c.qualified;
        EXPECT_EQ(prefix, c.prefix) << c.qualified;
    }
}

TEST(split_ns, may_write_over_its_argument) {
    std::string name = "p:a";
    std::string prefix;
    ko::lxml::split_ns(name, name, prefix);
    EXPECT_EQ(name, "a");
    EXPECT_EQ(prefix, "p");
}

} // namespace

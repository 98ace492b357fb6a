#include <gtest/gtest.h>

#include "lxml/lxml.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;

/// A host's attribute that frees an element when it goes itself.
class freeing_t : public attribute_t {
public:
    freeing_t(document_t& owner, element_t* other)
        : attribute_t(owner.atoms, owner.atoms->get("frees"), 0, ""), doc(owner), freed(other) {}
    freeing_t(const freeing_t&) = delete;
    freeing_t& operator=(const freeing_t&) = delete;
    ~freeing_t() override { doc.element_free(freed); }

private:
    document_t& doc;
    element_t* freed;
};

/// An element in a document of its own.
class attribute : public testing::Test {
protected:
    std::string value(const std::string& name, const std::string& ns) const {
        const attribute_t* const found = std::as_const(*e).attribute_get(name, ns);
        return found == nullptr ? "(none)" : found->value;
    }

    document_t doc;
    element_t* e = doc.element_create("e", "");
};

TEST_F(attribute, is_found_by_its_name) {
    e->attribute_set("a", "1");
    EXPECT_EQ(e->attribute_get("a")->value, "1");
    EXPECT_EQ(std::as_const(*e).attribute_get("a")->value, "1");
    EXPECT_EQ(e->attribute_get("a"), e->attribute_get("a", ""));
}

TEST_F(attribute, is_found_by_its_atoms) {
    e->attribute_set_ns("a", "urn:x", "1");
    const int name = doc.atoms->find("a");
    const int ns = doc.atoms->find("urn:x");
    EXPECT_EQ(e->attribute_get(name, ns)->value, "1");
    EXPECT_EQ(std::as_const(*e).attribute_get(name, ns)->value, "1");
    EXPECT_EQ(e->attribute_get(name, 0), nullptr);
    EXPECT_EQ(e->attribute_get(-1, ns), nullptr);
}

TEST_F(attribute, is_one_a_name_and_namespace) {
    e->attribute_set("a", "plain");
    e->attribute_set_ns("a", "urn:x", "x");
    e->attribute_set_ns("a", "urn:y", "y");
    EXPECT_EQ(value("a", ""), "plain");
    EXPECT_EQ(value("a", "urn:x"), "x");
    EXPECT_EQ(value("a", "urn:y"), "y");
    EXPECT_EQ(e->attributes.size(), 3u);
}

TEST_F(attribute, can_be_set_to_texts_of_its_own_document) {
    e->attribute_set("a", "1");
    e->attribute_set("a", e->attribute_get("a")->value);
    e->attribute_set(e->attribute_get("a")->name_get(), e->name_get());
    e->attribute_set_ns(e->attribute_get("a")->value, e->name_get(), e->ns_get());
    EXPECT_EQ(test::printed(e), "<e a=\"e\" :e=\"\" />");
    EXPECT_EQ(doc.atoms->get(doc.atoms->text_get(e->name)), e->name);
}

TEST_F(attribute, of_a_host_may_free_an_element_while_its_document_is_emptied) {
    for (int i = 0; i < 3; ++i) {
        element_t* const holder = doc.element_create("holder", "");
        element_t* const other = doc.element_create("other", "");
        other->attribute_set("a", "a text that does not lie in the attribute itself");
        holder->attributes.insert(new freeing_t(doc, other));
    }
    doc.clear();
    EXPECT_TRUE(doc.elements.empty());
}

TEST_F(attribute, needs_an_atom_table) {
    EXPECT_THROWS(const attribute_t made(nullptr, 0, 0, ""),
                  "node_t::node_t() -- atom table is null");
}

TEST_F(attribute, keeps_its_identity_when_set_again) {
    e->attribute_set("a", "1");
    const attribute_t* const before = e->attribute_get("a");
    e->attribute_set("a", "2");
    EXPECT_EQ(e->attribute_get("a"), before);
    EXPECT_EQ(before->value, "2");
    EXPECT_EQ(e->attributes.size(), 1u);
}

TEST_F(attribute, that_is_missing_is_null_and_its_name_is_added) {
    EXPECT_EQ(doc.atoms->find("missing"), -1);
    EXPECT_EQ(e->attribute_get("missing"), nullptr);
    EXPECT_EQ(doc.atoms->find("missing"), 2);
    EXPECT_EQ(std::as_const(*e).attribute_get("other", "urn:x"), nullptr);
    EXPECT_EQ(doc.atoms->find("other"), 3);
    EXPECT_EQ(doc.atoms->find("urn:x"), 4);
}

TEST_F(attribute, interns_its_name_before_its_namespace) {
    e->attribute_set_ns("a", "urn:x", "1");
    EXPECT_LT(doc.atoms->find("a"), doc.atoms->find("urn:x"));
}

TEST_F(attribute, value_falls_back_to_the_default) {
    e->attribute_set("a", "1");
    e->attribute_set("empty", "");
    e->attribute_set_ns("b", "urn:x", "2");
    EXPECT_EQ(e->attribute_get_value("a", "default"), "1");
    EXPECT_EQ(e->attribute_get_value("empty", "default"), "");
    EXPECT_EQ(e->attribute_get_value("b", "default"), "default");
    EXPECT_EQ(e->attribute_get_value("c", "default"), "default");
}

TEST_F(attribute, order_is_that_of_atoms_not_of_letters) {
    for (const char* name : {"z", "m", "a"}) {
        doc.atoms->get(name);
    }
    e->attribute_set("a", "3");
    e->attribute_set("m", "2");
    e->attribute_set("z", "1");
    EXPECT_EQ(test::printed(e), "<e z=\"1\" m=\"2\" a=\"3\" />");
}

TEST_F(attribute, order_is_by_namespace_before_name) {
    doc.add_ns_prefix("p", "urn:x");
    e->attribute_set_ns("a", "urn:x", "2");
    e->attribute_set("b", "1");
    EXPECT_EQ(test::printed(e), "<e b=\"1\" p:a=\"2\" />");
}

TEST_F(attribute, comparator_works_on_atoms) {
    atom_table_t table;
    const attribute_t low(&table, 2, 1, "");
    const attribute_t high(&table, 1, 2, "");
    const attr_ptr_cmp_t less;
    EXPECT_TRUE(less(&low, &high));
    EXPECT_FALSE(less(&high, &low));
    EXPECT_FALSE(less(&low, &low));
    EXPECT_TRUE(less(&low, attribute_key_t{1, 3}));
    EXPECT_TRUE(less(attribute_key_t{1, 1}, &low));
}

} // namespace

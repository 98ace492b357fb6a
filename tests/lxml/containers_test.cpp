// The containers behind the aliases of the document model: what a host may do with them as it
// would with those of the standard library.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "lxml/lxml.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;

using children_t = element_t::children_t;

static_assert(!std::is_destructible_v<element_t>, "elements are freed by their document");
static_assert(std::is_destructible_v<attribute_t>,
              "hosts delete what they take out of an element");
static_assert(std::is_convertible_v<children_t::iterator, children_t::const_iterator>, "");
static_assert(!std::is_convertible_v<children_t::const_iterator, children_t::iterator>, "");

/// Two documents with a root and loose elements "a" to "e" to put into lists.
class containers : public testing::Test {
protected:
    containers() {
        for (document_t* d : {&doc, &other}) {
            d->root = d->element_create("root", "");
        }
        for (const char* name : {"a", "b", "c", "d", "e"}) {
            loose.push_back(doc.element_create(name, ""));
        }
    }

    static std::string names(const children_t& list) {
        std::string out;
        for (const element_t* e : list) {
            out += e->name_get();
        }
        std::string back;
        std::for_each(list.rbegin(), list.rend(),
                      [&](const element_t* e) { back += e->name_get(); });
        EXPECT_EQ(out, std::string(back.rbegin(), back.rend()));
        EXPECT_EQ(out.size(), list.size());
        return out;
    }

    document_t doc;
    document_t other;
    std::vector<element_t*> loose;
};

TEST_F(containers, children_are_inserted_and_erased_anywhere) {
    children_t& list = doc.root->children;
    list.push_back(loose[1]);
    list.push_front(loose[0]);
    list.insert(list.end(), loose[3]);
    list.insert(std::prev(list.end()), loose[2]);
    EXPECT_EQ(names(list), "abcd");
    EXPECT_EQ(*list.erase(list.begin()), loose[1]);
    list.pop_back();
    EXPECT_EQ(names(list), "bc");
    list.pop_front();
    list.remove(loose[2]);
    EXPECT_TRUE(list.empty());
}

TEST_F(containers, children_keep_iterators_while_others_come_and_go) {
    children_t& list = doc.root->children;
    list.assign(loose.begin(), loose.end());
    const auto c = std::find(list.begin(), list.end(), loose[2]);
    list.pop_front();
    list.erase(std::next(c));
    list.push_front(loose[4]);
    list.reverse();
    list.sort([](const element_t* a, const element_t* b) { return a->name < b->name; });
    EXPECT_EQ(*c, loose[2]);
    EXPECT_EQ(names(list), "bcee");
    EXPECT_EQ(*std::next(c), loose[4]);
}

TEST_F(containers, children_move_between_lists_of_any_kind) {
    children_t alone(loose.begin(), loose.end());
    children_t& own = doc.root->children;
    children_t& foreign = other.root->children;
    own.splice(own.end(), alone, std::next(alone.begin()), alone.end());
    EXPECT_EQ(names(alone) + "-" + names(own), "a-bcde");
    foreign.splice(foreign.begin(), own, std::prev(own.end()));
    EXPECT_EQ(names(own) + "-" + names(foreign), "bcd-e");
    own.swap(foreign);
    EXPECT_EQ(names(own) + "-" + names(foreign), "e-bcd");
    alone = std::move(foreign);
    EXPECT_EQ(names(alone), "bcd");
    loose[0]->children.splice(loose[0]->children.end(), own);
    EXPECT_EQ(names(own) + names(loose[0]->children), "e");
}

TEST_F(containers, children_splice_within_a_document_keeps_iterators) {
    children_t& from = doc.root->children;
    from.assign(loose.begin(), loose.end());
    const auto b = std::next(from.begin());
    loose[0]->children.splice(loose[0]->children.begin(), from, b, from.end());
    EXPECT_EQ(*b, loose[1]);
    EXPECT_EQ(names(from) + "-" + names(loose[0]->children), "a-bcde");
    from.splice(from.begin(), from, from.begin());
    EXPECT_EQ(names(from), "a");
}

TEST_F(containers, children_are_copied_and_compared) {
    children_t& list = doc.root->children;
    list = {loose[0], loose[1]};
    children_t copy = list;
    EXPECT_EQ(copy, list);
    copy.push_back(loose[2]);
    EXPECT_NE(copy, list);
    list = copy;
    copy.clear();
    EXPECT_EQ(names(list), "abc");
    list.remove_if([&](const element_t* e) { return e == loose[1]; });
    EXPECT_EQ(names(list), "ac");
}

TEST_F(containers, children_stay_when_they_are_moved_to_their_own_list) {
    children_t& list = doc.root->children;
    list = {loose[0], loose[1], loose[2]};
    const children_t& same = list;
    list = same;
    list.splice(list.begin(), list);
    list.swap(list);
    EXPECT_EQ(names(list), "abc");
    list.splice(list.begin(), list, list.begin());
    list.splice(std::next(list.begin()), list, list.begin());
    EXPECT_EQ(names(list), "abc");
    list.splice(list.begin(), list, std::prev(list.end()));
    EXPECT_EQ(names(list), "cab");
    list.splice(list.end(), list, list.begin(), list.begin());
    EXPECT_EQ(names(list), "cab");
}

TEST_F(containers, children_may_be_freed_before_they_are_unlinked) {
    doc.root->children.assign(loose.begin(), loose.end());
    for (element_t* child : doc.root->children) {
        doc.element_free(child);
    }
    doc.root->children.clear();
    EXPECT_EQ(doc.elements.size(), 1u);
}

TEST_F(containers, attributes_of_a_host_are_owned_once_inserted) {
    element_t& e = *doc.root;
    auto made = std::make_unique<attribute_t>(doc.atoms, doc.atoms->get("n"), 0, "1");
    EXPECT_TRUE(e.attributes.insert(made.get()).second);
    EXPECT_FALSE(e.attributes.insert(made.get()).second);
    EXPECT_EQ(e.attribute_get("n"), made.release());
    e.attribute_set("n", "2");
    EXPECT_EQ(e.attribute_get_value("n", ""), "2");
}

TEST_F(containers, attributes_taken_out_belong_to_the_host) {
    element_t& e = *doc.root;
    for (const char* name : {"x", "y", "z"}) {
        e.attribute_set(name, std::string(50, '1'));
    }
    const std::unique_ptr<attribute_t> y(e.attribute_get("y"));
    EXPECT_EQ(e.attributes.erase(y.get()), 1u);
    attribute_t* const x = e.attribute_get("x");
    e.attributes.erase(e.attributes.find(x));
    EXPECT_EQ(e.attributes.size(), 1u);
    other.root->attributes.insert(x);
    delete e.attribute_get("z");
    e.attributes.clear();
    EXPECT_TRUE(e.attributes.empty());
    e.attributes.insert(std::make_unique<attribute_t>(doc.atoms, 5, 0, "").release());
    EXPECT_EQ(y->value, std::string(50, '1'));
}

TEST_F(containers, attributes_taken_out_can_be_put_back) {
    element_t& e = *loose[0];
    e.attribute_set("x", "1");
    e.attribute_set("y", "2");
    attribute_t* const x = e.attribute_get("x");
    EXPECT_EQ(e.attributes.erase(x), 1u);
    EXPECT_EQ(e.attributes.erase(x), 0u);
    EXPECT_EQ(test::printed(&e), "<a y=\"2\" />");
    EXPECT_TRUE(e.attributes.insert(x).second);
    EXPECT_EQ(test::printed(&e), "<a x=\"1\" y=\"2\" />");
    e.attribute_remove("x");
    EXPECT_EQ(test::printed(&e), "<a y=\"2\" />");
}

TEST_F(containers, attributes_belong_to_the_host_after_clear_however_many_there_are) {
    element_t& e = *loose[0];
    for (int i = 0; i < 1000; ++i) {
        e.attribute_set("n" + std::to_string(i), std::to_string(i));
    }
    std::vector<std::unique_ptr<attribute_t>> kept;
    for (attribute_t* a : e.attributes) {
        kept.emplace_back(a);
    }
    e.attributes.clear();
    EXPECT_TRUE(e.attributes.empty());
    EXPECT_EQ(kept.back()->value, "999");
    e.attribute_set("n1", "again");
    EXPECT_EQ(test::printed(&e), "<a n1=\"again\" />");
}

TEST_F(containers, attributes_taken_out_may_outlive_the_document) {
    std::unique_ptr<attribute_t> kept;
    std::unique_ptr<attribute_t> second;
    {
        loaded_t tree("<a b='a value that is not short at all' c='2'/>");
        kept.reset(tree.doc.root->attribute_get("b"));
        second.reset(tree.doc.root->attribute_get("c"));
        tree.doc.root->attributes.clear();
    }
    EXPECT_EQ(kept->value, "a value that is not short at all");
    EXPECT_EQ(second->value, "2");
}

TEST_F(containers, attributes_are_found_by_key_in_order) {
    element_t& e = *doc.root;
    e.attribute_set_ns("b", "urn:x", "1");
    e.attribute_set("b", "2");
    e.attribute_set("a", "3");
    const int b = doc.atoms->find("b");
    EXPECT_EQ((*e.attributes.find(attribute_key_t{0, b}))->value, "2");
    EXPECT_EQ(e.attributes.count(attribute_key_t{0, 999}), 0u);
    EXPECT_EQ(e.attributes.find(attribute_key_t{999, b}), e.attributes.end());
    EXPECT_TRUE(std::is_sorted(e.attributes.begin(), e.attributes.end(), attr_ptr_cmp_t()));
    EXPECT_EQ((*e.attributes.rbegin())->value, "1");
    const element_t::attributes_t copy = e.attributes;
    EXPECT_EQ(copy, e.attributes);
}

TEST_F(containers, attributes_are_in_sets_that_own_nothing_too) {
    const int n = doc.atoms->get("n");
    attribute_t one(doc.atoms, n, 0, "1");
    attribute_t same(doc.atoms, n, 0, "2");
    attribute_t other_ns(doc.atoms, n, 1, "3");
    element_t::attributes_t set = {&one, &other_ns};
    EXPECT_EQ(set.insert(&same), std::make_pair(set.begin(), false));
    EXPECT_EQ(set.erase(&other_ns), 1u);
    EXPECT_EQ(set.erase(&other_ns), 0u);
    EXPECT_EQ(set, element_t::attributes_t{&one});
    set.clear();
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(one.value, "1");
}

TEST_F(containers, attributes_behave_like_a_set_at_any_size) {
    std::mt19937 random(1);
    std::set<int> model;
    element_t& e = *doc.root;
    for (int i = 0; i < 1200; ++i) {
        doc.atoms->get("n" + std::to_string(i));
    }
    for (int step = 0; step < 6000; ++step) {
        const std::string name = "n" + std::to_string(random() % 1200);
        if (random() % (step < 3000 ? 4 : 2) == 0) {
            EXPECT_EQ(e.attribute_remove(name), model.erase(doc.atoms->find(name)) == 1);
        } else {
            e.attribute_set(name, name);
            model.insert(doc.atoms->find(name));
        }
    }
    EXPECT_GT(model.size(), 256u);
    EXPECT_TRUE(std::equal(model.begin(), model.end(), e.attributes.begin(), e.attributes.end(),
                           [](int id, const attribute_t* a) { return a->name == id; }));
    EXPECT_EQ(static_cast<std::size_t>(std::distance(e.attributes.rbegin(), e.attributes.rend())),
              model.size());
}

TEST_F(containers, elements_are_in_the_order_of_their_addresses) {
    std::vector<element_t*> all = loose;
    all.push_back(doc.root);
    for (int i = 0; i < 2000; ++i) {
        all.push_back(doc.element_create("x", ""));
    }
    std::sort(all.begin(), all.end());
    EXPECT_TRUE(std::equal(all.begin(), all.end(), doc.elements.begin(), doc.elements.end()));
    auto at = doc.elements.end();
    for (auto e = all.rbegin(); e != all.rend(); ++e) {
        EXPECT_EQ(*--at, *e);
    }
    EXPECT_EQ(at, doc.elements.begin());
    for (std::size_t i = 0; i < all.size(); i += 2) {
        doc.element_free(all[i]);
        EXPECT_EQ(*doc.elements.upper_bound(all[i]), all[i + 1]);
    }
    EXPECT_EQ(doc.elements.size(), all.size() / 2);
}

TEST_F(containers, elements_are_sets_of_their_own_too) {
    document_t::elements_t set = {loose[2], loose[0], loose[2]};
    EXPECT_EQ(set.size(), 2u);
    EXPECT_EQ(set.find(loose[1]), set.end());
    EXPECT_EQ(*set.find(loose[2]), loose[2]);
    EXPECT_EQ(set.count(nullptr), 0u);
    document_t::elements_t copy = set;
    EXPECT_EQ(copy.erase(loose[0]), 1u);
    EXPECT_EQ(copy.erase(loose[0]), 0u);
    EXPECT_NE(copy, set);
    copy.insert(loose[0]);
    EXPECT_EQ(copy, set);
    copy.clear();
    EXPECT_EQ(copy.begin(), copy.end());
}

TEST_F(containers, elements_come_and_go_as_in_a_set) {
    std::vector<element_t*> all;
    for (int i = 0; i < 300; ++i) {
        all.push_back(doc.element_create("x", ""));
    }
    std::mt19937 random(1);
    std::set<element_t*> model;
    document_t::elements_t set;
    for (int i = 0; i < 5000; ++i) {
        element_t* const e = all[random() % all.size()];
        const bool is_added = random() % 1000 >= (i < 2500 ? 400U : 700U);
        EXPECT_EQ(set.count(e), model.count(e));
        EXPECT_EQ(is_added ? set.insert(e).second : set.erase(e) != 0,
                  is_added ? model.insert(e).second : model.erase(e) != 0);
    }
    EXPECT_EQ(set.size(), model.size());
    EXPECT_TRUE(std::equal(set.begin(), set.end(), model.begin(), model.end()));
}

/// What an iterator says of itself, and a step forward and back each way.
template <class I, class C> void expect_iterator(I first, const C& list) {
    using traits_t = std::iterator_traits<I>;
    static_assert(
        std::is_base_of_v<std::forward_iterator_tag, typename traits_t::iterator_category>, "");
    static_assert(std::is_same_v<typename traits_t::difference_type, std::ptrdiff_t>, "");
    static_assert(std::is_same_v<typename traits_t::pointer,
                                 std::add_pointer_t<typename traits_t::reference>>,
                  "");
    static_assert(std::is_default_constructible_v<I> && std::is_trivially_copyable_v<I>, "");
    I at = first;
    EXPECT_EQ(*at, *list.begin());
    EXPECT_EQ(at++, first);
    EXPECT_NE(at, first);
    EXPECT_EQ(++first, at);
    EXPECT_EQ((*at.operator->())->name_get(), (*at)->name_get());
}

template <class I, class C> void expect_both_ways(I first, const C& list) {
    using category_t = typename std::iterator_traits<I>::iterator_category;
    static_assert(std::is_same_v<category_t, std::bidirectional_iterator_tag>, "");
    expect_iterator(first, list);
    I at = std::next(first);
    EXPECT_EQ(at--, std::next(first));
    EXPECT_EQ(at, first);
    EXPECT_EQ(--++at, first);
}

TEST_F(containers, iterators_are_those_of_the_standard_library) {
    element_t& e = *doc.root;
    e.children = {loose[0], loose[0]};
    e.attribute_set("a", "1");
    e.attribute_set("b", "2");
    expect_both_ways(e.children.begin(), e.children);
    expect_both_ways(e.children.cbegin(), e.children);
    expect_both_ways(e.attributes.begin(), e.attributes);
    expect_both_ways(doc.elements.begin(), doc.elements);
    const auto named = e.children_named("a");
    expect_iterator(named.begin(), named);
    EXPECT_TRUE(e.children.begin() == e.children.cbegin());
    *e.children.begin() = loose[1];
    EXPECT_EQ(names(e.children), "ba");
}

TEST_F(containers, elements_hold_neither_null_nor_what_is_no_element) {
    document_t::elements_t set = {loose[0]};
    EXPECT_EQ(set.insert(nullptr), std::make_pair(set.end(), false));
    EXPECT_EQ(set.size(), 1u);
    const auto inside = reinterpret_cast<std::uintptr_t>(loose[0]) + 1;
    EXPECT_EQ(set.count(reinterpret_cast<const element_t*>(inside)), 0u);
    EXPECT_EQ(--set.begin(), set.end()) << "before the first one is the end";
}

TEST_F(containers, memory_is_used_again) {
    const element_t* const first = doc.root;
    for (int i = 0; i < 1000; ++i) {
        element_t* const e = doc.root->append(doc.element_create("x", ""));
        e->attribute_set("a", "1");
        doc.root->child_erase(e);
        EXPECT_LT(
            std::abs(reinterpret_cast<const char*>(e) - reinterpret_cast<const char*>(first)),
            4096);
    }
}

} // namespace

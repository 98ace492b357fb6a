/// @file
/// The attributes of an element.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "export.h"
#include "lxml/attribute.h"
#include "lxml/iterator_facade.h"

namespace ko::lxml {

class atom_table_t;
struct attribute_text_t;

/// A set of attributes in the order of `attr_ptr_cmp_t`, with the member names of `std::set`.
///
/// The set of an element owns its attributes and deletes those that are left in its destructor;
/// erasing hands an attribute over to the caller. A copy owns nothing. Inserting and erasing end
/// the validity of iterators.
///
/// Up to 256 attributes are a sorted array, more are a tree, so that every operation takes the
/// logarithm of the size.
class attribute_set_t {
    using tree_t = std::set<attribute_t*, attr_ptr_cmp_t>;

public:
    using key_type = attribute_t*;
    using value_type = attribute_t*;
    using key_compare = attr_ptr_cmp_t;
    using value_compare = attr_ptr_cmp_t;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = attribute_t* const&;
    using const_reference = attribute_t* const&;

    /// Goes up in order.
    class const_iterator : public bidirectional_facade_t<const_iterator, attribute_t* const&> {
    public:
        const_iterator() = default;

    private:
        friend class attribute_set_t;
        friend class forward_facade_t<const_iterator, attribute_t* const&>;
        friend class bidirectional_facade_t<const_iterator, attribute_t* const&>;

        explicit const_iterator(attribute_t* const* at) : slot(at) {}
        explicit const_iterator(tree_t::const_iterator at) : node(at) {}

        attribute_t* const& get() const { return slot != nullptr ? *slot : *node; }
        void step() { slot != nullptr ? static_cast<void>(++slot) : static_cast<void>(++node); }
        void step_back() {
            slot != nullptr ? static_cast<void>(--slot) : static_cast<void>(--node);
        }
        bool equals(const const_iterator& other) const {
            return slot == other.slot && node == other.node;
        }

        attribute_t* const* slot = nullptr; ///< in the array; null in a tree
        tree_t::const_iterator node;
    };
    using iterator = const_iterator;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;
    using reverse_iterator = const_reverse_iterator;

    attribute_set_t() : attribute_set_t(false) {}
    attribute_set_t(std::initializer_list<attribute_t*> list) : attribute_set_t(false) {
        insert(list.begin(), list.end());
    }
    attribute_set_t(const attribute_set_t& other) : attribute_set_t(false) {
        insert(other.begin(), other.end());
    }
    attribute_set_t& operator=(const attribute_set_t& other) {
        if (this != &other) {
            clear();
            insert(other.begin(), other.end());
        }
        return *this;
    }
    KO_API ~attribute_set_t();

    const_iterator begin() const {
        return is_tree != 0 ? const_iterator(tree->begin()) : const_iterator(array);
    }
    const_iterator end() const {
        return is_tree != 0 ? const_iterator(tree->end()) : const_iterator(array + used);
    }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    bool empty() const { return size() == 0; }
    size_type size() const { return is_tree != 0 ? tree->size() : used; }

    KO_API const_iterator lower_bound(const attribute_key_t& key) const;
    const_iterator lower_bound(const attribute_t* a) const {
        return lower_bound(attribute_key_t{a->ns, a->name});
    }
    KO_API const_iterator find(const attribute_key_t& key) const;
    const_iterator find(const attribute_t* a) const {
        return find(attribute_key_t{a->ns, a->name});
    }
    /// @param key an attribute or its `attribute_key_t`
    template <class K> const_iterator upper_bound(const K& key) const {
        const const_iterator found = find(key);
        return found == end() ? lower_bound(key) : std::next(found);
    }
    template <class K> size_type count(const K& key) const { return find(key) == end() ? 0 : 1; }
    key_compare key_comp() const { return {}; }
    value_compare value_comp() const { return {}; }

    /// Adds an attribute unless there is one of its name. @return where that is, whether it is
    /// new
    KO_API std::pair<const_iterator, bool> insert(attribute_t* a);
    const_iterator insert(const_iterator, attribute_t* a) { return insert(a).first; }
    template <class I> void insert(I first, I last) {
        for (; first != last; ++first) {
            insert(*first);
        }
    }
    std::pair<const_iterator, bool> emplace(attribute_t* a) { return insert(a); }
    /// Takes an attribute out. @return what follows it
    KO_API const_iterator erase(const_iterator at);
    KO_API size_type erase(const attribute_t* a);
    const_iterator erase(const_iterator first, const_iterator last) {
        for (auto left = std::distance(first, last); left != 0; --left) {
            first = erase(first);
        }
        return first;
    }
    KO_API void clear() noexcept;

    friend bool operator==(const attribute_set_t& a, const attribute_set_t& b) {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
    }
    friend bool operator!=(const attribute_set_t& a, const attribute_set_t& b) {
        return !(a == b);
    }

private:
    friend class element_t;
    friend class sax_t;
    friend struct by_atoms_t;

    /// @param in_element whether the set is a member of an element
    // The tree shares its place with the array. NOLINTNEXTLINE(*-member-init)
    explicit attribute_set_t(bool in_element)
        : array(nullptr), used(0), capacity(0), is_tree(0), is_in_element(in_element ? 1 : 0),
          is_pooled(1) {}

    static constexpr std::size_t array_max = 256;

    /// The place where a key belongs in the array.
    attribute_t** place_of(const attribute_key_t& key) const;
    /// Makes place for so many attributes in all.
    void reserve(std::size_t number);
    void reserve_array(std::size_t number);
    void tree_make();
    attribute_t** array_allocate(std::size_t number) const;
    void array_free() noexcept;
    const_iterator insert_at(const_iterator at, attribute_t* a);
    /// Makes the attributes of an element without any. Of two with one name the later one counts.
    /// @param list is put into order
    void fill(atom_table_t* table, std::vector<attribute_text_t>& list);
    /// Takes an attribute out that the library goes on owning.
    const_iterator take(const_iterator at);
    /// Takes an attribute out and frees it.
    void remove(const_iterator at);
    static void free(attribute_t* a, bool is_ours) noexcept;
    /// Whether an attribute is one that a host, when it is out of the set, deletes in our pool.
    /// Most often that is known without a look at it: a host may have deleted it already.
    bool is_ours(const attribute_t* a) const;
    void destroy() noexcept;

    union {
        attribute_t** array; ///< sorted
        tree_t* tree;
    };
    std::uint32_t used; ///< in the array
    std::uint32_t capacity : 29;
    std::uint32_t is_tree : 1;
    std::uint32_t is_in_element : 1;
    std::uint32_t is_pooled : 1; ///< all attributes lie in the pool of the element
};

} // namespace ko::lxml

/// @file
/// The children of an element.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <vector>

#include "export.h"
#include "lxml/iterator_facade.h"

namespace ko::lxml {

class element_t;

/// What holds a place in a list of children, be it an element or the end.
struct child_link_t {
    child_link_t* prev;
    child_link_t* next;
};

/// The place of an element.
struct child_node_t : child_link_t {
    element_t* value;
};

/// What an iterator of a list refers to.
template <bool is_const>
using child_reference_t = std::conditional_t<is_const, element_t* const&, element_t*&>;

/// Points to a link of a list.
template <bool is_const>
class child_iterator_t
    : public bidirectional_facade_t<child_iterator_t<is_const>, child_reference_t<is_const>> {
public:
    child_iterator_t() = default;
    /// An iterator turns into a constant one.
    template <bool other, class = std::enable_if_t<is_const && !other>>
    child_iterator_t(const child_iterator_t<other>& source) : link(source.link) {}

private:
    friend class child_list_t;
    friend class child_iterator_t<true>;
    friend class forward_facade_t<child_iterator_t, child_reference_t<is_const>>;
    friend class bidirectional_facade_t<child_iterator_t, child_reference_t<is_const>>;

    explicit child_iterator_t(child_link_t* at) : link(at) {}
    explicit child_iterator_t(const child_link_t* at) : link(const_cast<child_link_t*>(at)) {}

    child_reference_t<is_const> get() const { return static_cast<child_node_t*>(link)->value; }
    void step() { link = link->next; }
    void step_back() { link = link->prev; }
    bool equals(const child_iterator_t& other) const { return link == other.link; }

    child_link_t* link = nullptr;
};

/// A doubly linked list of elements, which it does not own, with the member names and the
/// promises of `std::list`: an iterator stays valid until what it points to is erased, whatever
/// else happens to the list.
///
/// The links of an element's list lie in the memory of its document. A list that is moved,
/// swapped or spliced between documents, or between a document and a list that stands alone, gets
/// new links. Such a call costs the number of elements and ends the validity of their iterators;
/// it may throw `std::bad_alloc`, which leaves what was there.
class child_list_t {
    using link_t = child_link_t;
    using node_t = child_node_t;

public:
    using value_type = element_t*;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = element_t*&;
    using const_reference = element_t* const&;
    using iterator = child_iterator_t<false>;
    using const_iterator = child_iterator_t<true>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    child_list_t() : child_list_t(false) {}
    child_list_t(std::initializer_list<element_t*> list)
        : child_list_t(list.begin(), list.end()) {}
    child_list_t(const child_list_t& other) : child_list_t(other.begin(), other.end()) {}
    // Lists of two documents exchange no links but make new ones, which may fail.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor)
    child_list_t(child_list_t&& other) : child_list_t(false) { splice(end(), other); }
    template <class I> child_list_t(I first, I last) : child_list_t(false) {
        append_all(first, last);
    }
    child_list_t& operator=(const child_list_t& other) {
        if (this != &other) {
            assign(other.begin(), other.end());
        }
        return *this;
    }
    // NOLINTNEXTLINE(performance-noexcept-move-constructor)
    child_list_t& operator=(child_list_t&& other) {
        if (this != &other) {
            const size_type before = size();
            splice(end(), other);
            drop_front(before);
        }
        return *this;
    }
    KO_API ~child_list_t();

    iterator begin() noexcept { return iterator(ends.next); }
    iterator end() noexcept { return iterator(&ends); }
    const_iterator begin() const noexcept { return const_iterator(ends.next); }
    const_iterator end() const noexcept { return const_iterator(&ends); }
    const_iterator cbegin() const noexcept { return begin(); }
    const_iterator cend() const noexcept { return end(); }
    reverse_iterator rbegin() noexcept { return reverse_iterator(end()); }
    reverse_iterator rend() noexcept { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }

    bool empty() const noexcept { return count == 0; }
    size_type size() const noexcept { return count; }
    reference front() { return *begin(); }
    const_reference front() const { return *begin(); }
    reference back() { return *std::prev(end()); }
    const_reference back() const { return *std::prev(end()); }

    void push_back(element_t* e) { insert(end(), e); }
    void push_front(element_t* e) { insert(begin(), e); }
    void pop_back() { erase(std::prev(end())); }
    void pop_front() { erase(begin()); }
    KO_API iterator insert(const_iterator at, element_t* e);
    template <class I> iterator insert(const_iterator at, I first, I last) {
        return insert_all(at, std::vector<element_t*>(first, last));
    }
    KO_API iterator erase(const_iterator at);
    iterator erase(const_iterator first, const_iterator last) {
        while (first != last) {
            first = erase(first);
        }
        return iterator(last.link);
    }
    KO_API void clear() noexcept;
    void assign(std::initializer_list<element_t*> list) { assign(list.begin(), list.end()); }
    template <class I> void assign(I first, I last) {
        const size_type before = size();
        append_all(first, last);
        drop_front(before);
    }

    /// Erases the links to `e`.
    void remove(const element_t* e) {
        remove_if([e](const element_t* child) { return child == e; });
    }
    template <class P> void remove_if(P is_meant) {
        for (const_iterator at = begin(); at != end();) {
            at = is_meant(*at) ? const_iterator(erase(at)) : std::next(at);
        }
    }
    KO_API void reverse() noexcept;
    void sort() { sort(std::less<element_t*>()); }
    /// Keeps the order of equal ones; iterators stay with their elements.
    template <class L> void sort(L less) {
        std::vector<link_t*> links;
        links.reserve(size());
        for (link_t* link = ends.next; link != &ends; link = link->next) {
            links.push_back(link);
        }
        std::stable_sort(links.begin(), links.end(), [&less](const link_t* a, const link_t* b) {
            return less(static_cast<const node_t*>(a)->value,
                        static_cast<const node_t*>(b)->value);
        });
        relink(links);
    }
    /// Moves elements of a list to a place in this one.
    KO_API void splice(const_iterator at, child_list_t& other);
    KO_API void splice(const_iterator at, child_list_t& other, const_iterator one);
    KO_API void splice(const_iterator at, child_list_t& other, const_iterator first,
                       const_iterator last);
    void splice(const_iterator at, child_list_t&& other) { splice(at, other); }
    KO_API void swap(child_list_t& other);

    friend bool operator==(const child_list_t& a, const child_list_t& b) {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
    }
    friend bool operator!=(const child_list_t& a, const child_list_t& b) { return !(a == b); }

private:
    friend class element_t;

    /// @param in_element whether the list is a member of an element
    explicit child_list_t(bool in_element)
        : ends{&ends, &ends}, count(0), is_in_element(in_element ? 1 : 0) {}

    template <class I> void append_all(I first, I last) { insert(end(), first, last); }
    void drop_front(size_type number) noexcept {
        for (; number != 0; --number) {
            pop_front();
        }
    }
    /// Inserts all or, when it throws, none.
    KO_API iterator insert_all(const_iterator at, const std::vector<element_t*>& values);
    bool shares_memory(const child_list_t& other) const noexcept;
    void* link_allocate() const;
    KO_API void relink(const std::vector<link_t*>& links) noexcept;

    link_t ends; ///< before the first and after the last element
    std::size_t count : sizeof(std::size_t) * 8 - 1;
    std::size_t is_in_element : 1;
};

} // namespace ko::lxml

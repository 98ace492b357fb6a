/// @file
/// The children of an element that have one name.
#pragma once

#include <iterator>

#include "lxml/child_list.h"
#include "lxml/node.h"

namespace ko::lxml {

/// A range over those children of an element that have a name and a namespace name. It borrows
/// the element and owns nothing.
class named_children_t {
public:
    /// Goes forward in document order.
    class const_iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = element_t*;
        using difference_type = std::ptrdiff_t;
        using pointer = element_t* const*;
        using reference = element_t* const&;

        const_iterator() = default;
        reference operator*() const { return *at; }
        const_iterator& operator++() {
            at = range->next(std::next(at));
            return *this;
        }
        const_iterator operator++(int) {
            const const_iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const const_iterator& other) const { return at == other.at; }
        bool operator!=(const const_iterator& other) const { return at != other.at; }

    private:
        friend class named_children_t;

        const_iterator(const named_children_t* owner, child_list_t::const_iterator place)
            : range(owner), at(place) {}

        const named_children_t* range = nullptr;
        child_list_t::const_iterator at;
    };
    using iterator = const_iterator;

    /// @param name_id, ns_id atoms; -1 matches no child
    named_children_t(const child_list_t& list, int name_id, int ns_id)
        : children(list), name(name_id), ns(ns_id) {}

    const_iterator begin() const { return {this, next(children.begin())}; }
    const_iterator end() const { return {this, children.end()}; }
    bool empty() const { return begin() == end(); }

private:
    /// The first child from `at` on that has the name.
    KO_API child_list_t::const_iterator next(child_list_t::const_iterator at) const;

    const child_list_t& children;
    int name;
    int ns;
};

} // namespace ko::lxml

/// @file
/// The children of an element that have one name.
#pragma once

#include <iterator>

#include "export.h"
#include "lxml/child_list.h"
#include "lxml/iterator_facade.h"

namespace ko::lxml {

/// A range over those children of an element that have a name and a namespace name. It borrows
/// the element and owns nothing.
class named_children_t {
public:
    /// Goes forward in document order.
    class const_iterator : public forward_facade_t<const_iterator, element_t* const&> {
    public:
        const_iterator() = default;

    private:
        friend class named_children_t;
        friend class forward_facade_t<const_iterator, element_t* const&>;

        const_iterator(const named_children_t* owner, child_list_t::const_iterator place)
            : range(owner), at(place) {}

        element_t* const& get() const { return *at; }
        void step() { at = range->next(std::next(at)); }
        bool equals(const const_iterator& other) const { return at == other.at; }

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
    /// The first child from `at` on that has the name. (It looks into elements: element.cpp.)
    KO_API child_list_t::const_iterator next(child_list_t::const_iterator at) const;

    const child_list_t& children;
    int name;
    int ns;
};

} // namespace ko::lxml

/// @file
/// The one walk over a tree. Trees may be a million levels deep, so the elements that it is
/// inside of lie in a vector and not on the stack.
#pragma once

#include <vector>

#include "lxml/element.h"

namespace ko::lxml {

/// Visits an element and its descendants in document order.
///
/// @param top the element to begin with; a `const element_t` or an `element_t`
/// @param enter called with each element before its children; returns whether to visit them
/// @param leave called with each element whose children were visited, after them
template <class E, class N, class L> void walk(E& top, const N& enter, const L& leave) {
    struct open_t {
        E* e;
        element_t::children_t::const_iterator next;
    };
    if (!enter(top)) {
        return;
    }
    std::vector<open_t> open = {{&top, top.children.cbegin()}};
    while (!open.empty()) {
        open_t& level = open.back();
        if (level.next == level.e->children.cend()) {
            E& e = *level.e;
            open.pop_back();
            leave(e);
            continue;
        }
        E& child = **level.next++;
        if (!enter(child)) {
            continue;
        }
        if (child.children.empty()) {
            leave(child);
        } else {
            open.push_back({&child, child.children.cbegin()});
        }
    }
}

} // namespace ko::lxml

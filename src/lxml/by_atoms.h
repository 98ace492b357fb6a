/// @file
/// Making nodes by atoms of their document's table, for who has translated the names already.
#pragma once

#include <cstddef>
#include <string_view>

#include "lxml/document.h"
#include "lxml/pooled_attribute.h"

namespace ko::lxml {

/// Does what `element_create` and `attribute_set_ns` do, without a look-up by text.
struct by_atoms_t {
    /// Makes an element that is not attached anywhere.
    static element_t* element_create(document_t& document, int name, int ns) {
        return document.element_make(name, ns);
    }

    /// Makes room for so many attributes in all.
    static void attributes_reserve(element_t& element, std::size_t number) {
        element.attributes.reserve(number);
    }

    /// Sets the value of an attribute, which is made when missing. One that comes behind all
    /// others and has room needs no search.
    static void attribute_set(element_t& element, int name, int ns, std::string_view value) {
        attribute_set_t& set = element.attributes;
        const attribute_key_t key{ns, name};
        const bool is_last = set.used == 0 || attr_ptr_cmp_t()(set.array[set.used - 1], key);
        if (is_last && set.used < set.capacity) {
            set.array[set.used] =
                pooled_attribute_t::make(&element, element.atoms, name, ns, value);
            ++set.used;
        } else {
            element.attribute_put(key, value);
        }
    }
};

} // namespace ko::lxml

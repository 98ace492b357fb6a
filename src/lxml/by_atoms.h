/// @file
/// Making nodes by atoms of their document's table, for who has translated the names already.
#pragma once

#include <cstddef>
#include <string_view>

#include "lxml/document.h"

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

    /// Sets the value of an attribute, which is made when missing.
    static void attribute_set(element_t& element, int name, int ns, std::string_view value) {
        element.attribute_put({ns, name}, value);
    }
};

} // namespace ko::lxml

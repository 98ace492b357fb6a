/// @file
/// Making nodes by atoms of their document's table, for who has translated the names already.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "lxml/document.h"

namespace ko::lxml {

/// Does what `element_create` and `attribute_set_ns` do, without a look-up by text.
struct by_atoms_t {
    /// Makes an element that is not attached anywhere.
    static element_t* element_create(document_t& document, int name, int ns) {
        return document.element_make(name, ns);
    }

    /// Sets the value of an attribute, which is made when missing.
    static void attribute_set(element_t& element, int name, int ns, std::string&& value) {
        if (attribute_t* const known = element.attribute_get(name, ns)) {
            known->value = std::move(value);
            return;
        }
        auto attribute = std::make_unique<attribute_t>(element.atoms, name, ns, str_empty);
        attribute->value = std::move(value);
        element.attributes.insert(attribute.get());
        static_cast<void>(attribute.release());
    }
};

} // namespace ko::lxml

#include "lxml/attribute.h"

#include <utility>

#include "exception/exception.h"

namespace ko::lxml {

attribute_t::attribute_t(atom_table_t* table, int name_id, int ns_id, const std::string& text)
    : node_t(table, name_id, ns_id), value(text) {}

attribute_t::~attribute_t() = default;

// The misspelling is part of the message.
const attribute_t* node_t::as_attribute() const {
    const auto* const attribute = dynamic_cast<const attribute_t*>(this);
    if (attribute == nullptr) {
        throw exception_t(std::string("node cannot be coverted to attribute"));
    }
    return attribute;
}

attribute_t* node_t::as_attribute() {
    return const_cast<attribute_t*>(std::as_const(*this).as_attribute());
}

} // namespace ko::lxml

#include "lxml/node.h"

#include "exception/exception.h"
#include "lxml/attribute.h"
#include "lxml/element.h"

namespace ko::lxml {

namespace {

/// The misspelling is part of the messages.
template <class T, class N> T* node_cast(N* node, const char* message) {
    T* const result = dynamic_cast<T*>(node);
    if (result == nullptr) {
        throw exception_t(std::string(message));
    }
    return result;
}

constexpr const char* no_element = "node cannot be coverted to element";
constexpr const char* no_attribute = "node cannot be coverted to attribute";

} // namespace

const std::string str_empty;

node_t::node_t(atom_table_t* table, int name_id, int ns_id)
    : atoms(table), name(name_id), ns(ns_id) {
    if (table == nullptr) {
        throw exception_t(std::string("node_t::node_t() -- atom table is null"));
    }
}

node_t::~node_t() = default;

element_t* node_t::as_element() {
    return node_cast<element_t>(this, no_element);
}

const element_t* node_t::as_element() const {
    return node_cast<const element_t>(this, no_element);
}

attribute_t* node_t::as_attribute() {
    return node_cast<attribute_t>(this, no_attribute);
}

const attribute_t* node_t::as_attribute() const {
    return node_cast<const attribute_t>(this, no_attribute);
}

const std::string& node_t::name_get() const {
    return atoms->text_get(name);
}

const std::string& node_t::ns_get() const {
    return atoms->text_get(ns);
}

} // namespace ko::lxml

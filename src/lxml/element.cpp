#include "lxml/element.h"

#include <memory>

#include "exception/exception.h"
#include "lxml/document.h"

namespace ko::lxml {

element_t::element_t(document_t* owner, int name_id, int ns_id)
    : node_t(owner->atoms, name_id, ns_id), document(owner) {}

element_t::~element_t() {
    for (const attribute_t* attribute : attributes) {
        delete attribute;
    }
}

element_t* element_t::append(element_t* child) {
    if (child == nullptr) {
        throw exception_t(std::string("element_t::append() -- given element is null"));
    }
    if (child == this) {
        throw exception_t(std::string("element_t::append() -- an element cannot hold itself"));
    }
    if (child->document != document) {
        throw exception_t(std::string("elements cannot span documents"));
    }
    children.push_back(child);
    return child;
}

const attribute_t* element_t::attribute_get(int name_id, int ns_id) const {
    const auto found = attributes.find(attribute_key_t{ns_id, name_id});
    return found == attributes.end() ? nullptr : *found;
}

attribute_t* element_t::attribute_get(int name_id, int ns_id) {
    const auto found = attributes.find(attribute_key_t{ns_id, name_id});
    return found == attributes.end() ? nullptr : *found;
}

const attribute_t* element_t::attribute_get(const std::string& name_text,
                                            const std::string& ns_text) const {
    const int name_id = atoms->get(name_text);
    return attribute_get(name_id, atoms->get(ns_text));
}

attribute_t* element_t::attribute_get(const std::string& name_text, const std::string& ns_text) {
    const int name_id = atoms->get(name_text);
    return attribute_get(name_id, atoms->get(ns_text));
}

const attribute_t* element_t::attribute_get(const std::string& name_text) const {
    return attribute_get(name_text, str_empty);
}

attribute_t* element_t::attribute_get(const std::string& name_text) {
    return attribute_get(name_text, str_empty);
}

std::string element_t::attribute_get_value(const std::string& name_text,
                                           const std::string& default_value) const {
    const attribute_t* const attribute = attribute_get(name_text);
    return attribute == nullptr ? default_value : attribute->value;
}

void element_t::attribute_set_ns(const std::string& name_text, const std::string& ns_text,
                                 const std::string& value) {
    const int name_id = atoms->get(name_text);
    const int ns_id = atoms->get(ns_text);
    if (attribute_t* const known = attribute_get(name_id, ns_id)) {
        known->value = value;
        return;
    }
    auto attribute = std::make_unique<attribute_t>(atoms, name_id, ns_id, value);
    attributes.insert(attribute.get());
    attribute.release();
}

void element_t::attributes_fill(std::vector<attribute_text_t>& list) {
    for (const attribute_text_t& item : list) {
        if (attribute_t* const known = attribute_get(item.name, item.ns)) {
            known->value = item.value;
            continue;
        }
        auto attribute = std::make_unique<attribute_t>(atoms, item.name, item.ns, item.value);
        attributes.insert(attribute.get());
        attribute.release();
    }
}

void element_t::attribute_set(const std::string& name_text, const std::string& value) {
    attribute_set_ns(name_text, str_empty, value);
}

} // namespace ko::lxml

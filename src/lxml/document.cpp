#include "lxml/document.h"

#include <memory>

#include "exception/exception.h"

namespace ko::lxml {

namespace {

atom_table_t* require_table(atom_table_t* table) {
    if (table == nullptr) {
        throw exception_t(std::string("document_t::document_t() -- atom table is null"));
    }
    return table;
}

/// The text bound to an atom in one of the maps of prefixes and namespace names.
const std::string& bound_text(const std::map<int, int>& bindings, int id,
                              const atom_table_t& atoms) {
    const auto found = bindings.find(id);
    return found == bindings.end() ? str_empty : atoms.text_get(found->second);
}

} // namespace

void document_t::require_owned(const element_t* e) const {
    if (elements.count(const_cast<element_t*>(e)) == 0) {
        throw exception_t(std::string("element_free() -- given element not in document"));
    }
}

document_t::document_t() : root(nullptr), atoms(&own_atoms) {}

document_t::document_t(atom_table_t* shared) : root(nullptr), atoms(require_table(shared)) {}

document_t::document_t(const document_t& source) : document_t() {
    if (source.root != nullptr) {
        root = source.root->clone(*this, true);
    }
}

document_t::~document_t() {
    for (const element_t* e : elements) {
        delete e;
    }
}

element_t* document_t::element_create(const std::string& name, const std::string& ns) {
    const int name_id = atoms->get(name);
    return element_make(name_id, atoms->get(ns));
}

element_t* document_t::element_make(int name_id, int ns_id) {
    std::unique_ptr<element_t> e(new element_t(this, name_id, ns_id));
    elements.insert(e.get());
    return e.release();
}

void document_t::element_free(element_t* e) {
    require_owned(e);
    if (e == root) {
        root = nullptr;
    }
    elements.erase(e);
    if (positions != nullptr) {
        positions->erase(e);
    }
    delete e;
}

void document_t::tree_free(element_t* e) noexcept {
    // Each child hands its children over before it goes, so that nothing is allocated.
    while (!e->children.empty()) {
        element_t* const child = e->children.front();
        e->children.splice(e->children.end(), child->children);
        e->children.pop_front();
        element_free(child);
    }
    element_free(e);
}

const position_t* document_t::position_get(const element_t* e) const {
    if (positions == nullptr) {
        return nullptr;
    }
    const auto found = positions->find(e);
    return found == positions->end() ? nullptr : &found->second;
}

void document_t::position_set(const element_t* e, const position_t& position) {
    if (positions == nullptr) {
        positions = std::make_unique<positions_t>();
    }
    positions->insert_or_assign(e, position);
}

void document_t::element_remove(element_t* e) {
    require_owned(e);
    if (root != nullptr) {
        root->child_remove(e);
    }
    element_free(e);
}

void document_t::add_ns_prefix(const std::string& prefix, const std::string& uri) {
    const int prefix_id = atoms->get(prefix);
    const int uri_id = atoms->get(uri);
    uri_to_prefix[uri_id] = prefix_id;
    prefix_to_uri[prefix_id] = uri_id;
}

const std::string& document_t::uri_prefix_get(const std::string& uri) {
    return bound_text(uri_to_prefix, atoms->get(uri), *atoms);
}

const std::string& document_t::uri_prefix_expand(const std::string& prefix) {
    return bound_text(prefix_to_uri, atoms->get(prefix), *atoms);
}

void split_ns(const std::string& qualified, std::string& local, std::string& prefix) {
    // The arguments may be one object.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::string whole = qualified;
    const std::size_t colon = whole.find(':');
    if (colon == std::string::npos) {
        local = whole;
        return;
    }
    prefix = whole.substr(0, colon);
    local = whole.substr(colon + 1);
}

} // namespace ko::lxml

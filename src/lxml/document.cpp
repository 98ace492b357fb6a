#include "lxml/document.h"

#include <new>
#include <utility>

#include "exception/exception.h"
#include "lxml/atom_map.h"
#include "lxml/pool.h"

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
    elements_free();
}

/// What lies in the pool is left to it; only what lies elsewhere is freed element by element.
void document_t::elements_free() noexcept {
    if (pool != nullptr) {
        pool->close();
    }
    elements.for_each([](element_t* e) { e->element_t::~element_t(); });
    elements.clear();
    positions.reset();
    pool.reset();
}

void document_t::clear() noexcept {
    elements_free();
    root = nullptr;
    uri_to_prefix.clear();
    prefix_to_uri.clear();
    file_name.clear();
    stylesheet.clear();
}

void document_t::copy(const document_t& source) {
    if (this == &source) {
        return;
    }
    document_t made(atoms);
    made.root = source.root == nullptr ? nullptr : source.root->clone_whole(made);
    atom_map_t names(*source.atoms, *atoms);
    for (const auto& [uri, prefix] : source.uri_to_prefix) {
        const int uri_id = names.get(uri);
        made.uri_to_prefix[uri_id] = names.get(prefix);
    }
    for (const auto& [prefix, uri] : source.prefix_to_uri) {
        const int prefix_id = names.get(prefix);
        made.prefix_to_uri[prefix_id] = names.get(uri);
    }
    made.file_name = source.file_name;
    made.stylesheet = source.stylesheet;
    take(made);
}

/// Takes what another document with the same atom table holds, and gives it what it holds itself.
void document_t::take(document_t& other) noexcept {
    other.elements.for_each([this](element_t* e) { e->document = this; });
    elements.for_each([&other](element_t* e) { e->document = &other; });
    uri_to_prefix.swap(other.uri_to_prefix);
    prefix_to_uri.swap(other.prefix_to_uri);
    file_name.swap(other.file_name);
    stylesheet.swap(other.stylesheet);
    elements.swap(other.elements);
    std::swap(root, other.root);
    positions.swap(other.positions);
    pool.swap(other.pool);
}

element_t* document_t::element_create(const std::string& name, const std::string& ns) {
    const int name_id = atoms->get(name);
    return element_make(name_id, atoms->get(ns));
}

element_t* document_t::element_make(int name_id, int ns_id) {
    if (pool == nullptr) {
        pool = std::make_unique<pool_t>();
    }
    void* const place = pool->allocate(sizeof(element_t), pool_t::element);
    element_t* const e = new (place) element_t(this, name_id, ns_id);
    try {
        elements.insert(e);
    } catch (...) {
        element_destroy(e);
        throw;
    }
    return e;
}

void document_t::element_destroy(element_t* e) noexcept {
    e->element_t::~element_t();
    pool->release(e, sizeof(element_t));
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
    element_destroy(e);
}

// NOLINTNEXTLINE(bugprone-exception-escape): its elements are those of the document.
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

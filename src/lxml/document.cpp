#include "lxml/document.h"

#include <memory>

#include "exception/diagnosis.h"
#include "exception/exception.h"
#include "lxml/ownership.h"
#include "lxml/sax.h"

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

void require_owned(const document_t& document, const element_t* e) {
    if (document.elements.count(const_cast<element_t*>(e)) == 0) {
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
    const int ns_id = atoms->get(ns);
    std::unique_ptr<element_t> e(new element_t(this, name_id, ns_id));
    elements.insert(e.get());
    return e.release();
}

void document_t::element_free(element_t* e) {
    require_owned(*this, e);
    if (e == root) {
        root = nullptr;
    }
    elements.erase(e);
    delete e;
}

void document_t::element_remove(element_t* e) {
    require_owned(*this, e);
    if (root != nullptr) {
        root->child_remove(e);
    }
    element_free(e);
}

bool document_t::load(const std::string& file) {
    file_name = file;
    try {
        root = load_raw(file);
    } catch (...) {
        diagnose("Caught exception in ", file);
        throw;
    }
    return true;
}

element_t* document_t::load_raw(const std::string& file) {
    sax_t reader(*this);
    reader.parse(file);
    return reader.root_get();
}

bool document_t::load_from_string(const std::string& text) {
    root = load_from_string_raw(text);
    return true;
}

element_t* document_t::load_from_string_raw(const std::string& text) {
    sax_t reader(*this);
    reader.parse_buffer(text);
    return reader.root_get();
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

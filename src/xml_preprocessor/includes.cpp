#include "xml_preprocessor/includes.h"

#include <utility>

#include "exception/exception.h"
#include "xml_preprocessor/find_file.h"

namespace ko::xpp {

namespace {

/// Adds all texts of a table to an empty one, under the same atoms.
void copy_texts(const lxml::atom_table_t& from, lxml::atom_table_t& to) {
    // Only atom 0 is the empty text, and so is that of an atom past the last one.
    for (int id = 1; !from.text_get(id).empty(); ++id) {
        to.get(from.text_get(id));
    }
}

} // namespace

includes_t::includes_t(file_cache_t* used_cache) : cache(used_cache) {}

void includes_t::search_path_add(const std::string& dir) {
    if (dir.empty()) {
        throw exception_t("preprocessor_t::search_path_add() -- empty directory");
    }
    // A backslash on every system: callers rely on it.
    search_path.push_back(dir.back() == '\\' ? dir : dir + '\\');
}

lxml::element_t& includes_t::load(const include_request_t& request) {
    if (cache != nullptr) {
        const lxml::document_t* cached = cache->get(request.file);
        if (cached != nullptr && cached->root != nullptr) {
            return *cached->root;
        }
    }
    std::string path;
    if (find(request, path)) {
        auto document = std::make_unique<lxml::document_t>(&table_get());
        document->load(path);
        if (lxml::element_t* root = document->root) {
            keep(request.file, std::move(document));
            return *root;
        }
    }
    throw exception_t("failed to load xml file:" + request.file);
}

source_atoms_t includes_t::atoms_exchange(const source_atoms_t& next) {
    return std::exchange(atoms, next);
}

bool includes_t::find(const include_request_t& request, std::string& path) const {
    std::list<std::string> dirs;
    if (request.search) {
        dirs = search_path;
    }
    dirs.push_back(request.directory);
    return find_file(request.file, dirs, path);
}

lxml::atom_table_t& includes_t::table_get() {
    if (cache != nullptr) {
        return cache->atom_table_get();
    }
    if (atoms.copy == nullptr) {
        tables.emplace_back();
        copy_texts(*atoms.source, tables.back());
        atoms.copy = &tables.back();
    }
    return *atoms.copy;
}

void includes_t::keep(const std::string& file, std::unique_ptr<lxml::document_t> document) {
    if (cache == nullptr) {
        documents.push_back(std::move(document));
        return;
    }
    cache->insert(file, document.get());
    static_cast<void>(document.release());
}

} // namespace ko::xpp

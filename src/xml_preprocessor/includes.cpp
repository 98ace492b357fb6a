#include "xml_preprocessor/includes.h"

#include <utility>

#include "exception/exception.h"
#include "xml_preprocessor/find_file.h"

namespace ko::xpp {

namespace {

/// Adds the texts of a table from an atom on to another one; returns the atom after the last.
int copy_texts(const lxml::atom_table_t& from, int id, lxml::atom_table_t& to) {
    // Only atom 0 is the empty text, and so is that of an atom past the last one.
    for (; !from.text_get(id).empty(); ++id) {
        to.get(from.text_get(id));
    }
    return id;
}

void load_file(lxml::document_t& document, const std::string& path, bool positions) {
    if (positions) {
        lxml::load_options_t options;
        options.positions = true;
        options.quiet = false;
        document.load(path, options);
    } else {
        document.load(path);
    }
}

} // namespace

lxml::atom_table_t& source_atoms_t::share(std::list<lxml::atom_table_t>& tables) {
    if (copy == nullptr) {
        tables.emplace_back();
        copy = &tables.back();
        source_seen = copy_texts(source, source_seen, *copy);
        copy_seen = source_seen;
    }
    exchange();
    return *copy;
}

void source_atoms_t::share_at_end() noexcept {
    try {
        if (copy != nullptr) {
            exchange();
        }
    } catch (...) {
        // No memory: an order of attributes is not worth the result.
    }
}

void source_atoms_t::exchange() {
    source_seen = copy_texts(source, source_seen, *copy);
    copy_seen = copy_texts(*copy, copy_seen, source);
    source_seen = copy_texts(source, source_seen, *copy);
}

includes_t::includes_t(file_cache_t* used_cache) : cache(used_cache) {}

void includes_t::search_path_add(const std::string& dir) {
    if (dir.empty()) {
        throw exception_t("preprocessor_t::search_path_add() -- empty directory");
    }
    // A backslash on every system; callers rely on it (quirk "backslash").
    search_path.push_back(dir.back() == '\\' ? dir : dir + '\\');
}

lxml::element_t* includes_t::cached(const std::string& key) const {
    const lxml::document_t* const known = cache == nullptr ? nullptr : cache->get(key);
    return known == nullptr ? nullptr : known->root;
}

std::string includes_t::find(const include_request_t& request) const {
    std::list<std::string> dirs;
    if (request.search) {
        dirs = search_path;
    }
    dirs.push_back(request.directory);
    std::string path;
    find_file(request.file, dirs, path);
    return path;
}

lxml::element_t& includes_t::load(const std::string& path, const std::string& key, bool positions,
                                  source_atoms_t& atoms) {
    std::unique_ptr<lxml::document_t> document;
    if (cache != nullptr) {
        document = std::make_unique<lxml::document_t>(&cache->atom_table_get());
        load_file(*document, path, positions);
    } else {
        document = std::make_unique<lxml::document_t>(&atoms.share(tables));
        load_file(*document, path, positions);
        atoms.share(tables);
    }
    lxml::element_t* const root = document->root;
    keep(key, std::move(document));
    return *root;
}

void includes_t::keep(const std::string& key, std::unique_ptr<lxml::document_t> document) {
    if (cache == nullptr) {
        documents.push_back(std::move(document));
        return;
    }
    cache->insert(key, document.get());
    static_cast<void>(document.release());
}

} // namespace ko::xpp

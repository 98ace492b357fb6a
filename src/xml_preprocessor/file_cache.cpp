#include "xml_preprocessor/file_cache.h"

namespace ko::xpp {

file_cache_t::file_cache_t() = default;

file_cache_t::~file_cache_t() {
    for (const auto& entry : documents) {
        delete entry.second;
    }
}

lxml::document_t* file_cache_t::get(const std::string& name) {
    const auto entry = documents.find(name);
    return entry == documents.end() ? nullptr : entry->second;
}

void file_cache_t::insert(const std::string& name, lxml::document_t* doc) {
    documents[name] = doc;
}

lxml::atom_table_t& file_cache_t::atom_table_get() {
    return atoms;
}

} // namespace ko::xpp

#pragma once

#include <list>
#include <memory>
#include <string>

#include "lxml/lxml.h"
#include "xml_preprocessor/file_cache.h"

namespace ko::xpp {

/// The atom tables of one call of `process`.
struct source_atoms_t {
    const ko::lxml::atom_table_t* source = nullptr; ///< of the source; null between calls
    ko::lxml::atom_table_t* copy = nullptr;         ///< a copy of it, made when first needed
};

/// What an "include" asks for.
struct include_request_t {
    std::string file;      ///< name as written, which is also the name in the cache
    std::string directory; ///< directory of the including document, with its "/", or empty
    bool search;           ///< whether the search path comes before `directory`
};

/// Finds, loads and keeps included files.
///
/// It owns the documents that it loads, unless there is a cache, which owns them then. Documents
/// of its own name their nodes in a copy of the source's atom table, made once a call of
/// `process`: their attributes come in the order that a shared table would give them, and yet
/// nothing points into the source's document once `process` has returned. A load that fails
/// leaves everything as it was.
class includes_t {
public:
    explicit includes_t(file_cache_t* used_cache);

    /// Adds a directory and, where it is missing, the backslash that ends every entry.
    /// @throws ko::exception_t when `dir` is empty
    void search_path_add(const std::string& dir);

    /// The root element of a file.
    /// @throws ko::exception_t "failed to load xml file:" and the name; what reading reports
    ko::lxml::element_t& load(const include_request_t& request);

    /// Sets the tables and returns those before.
    source_atoms_t atoms_exchange(const source_atoms_t& next);

    bool search_path_default = true; ///< whether an "include" uses the search path unasked

private:
    bool find(const include_request_t& request, std::string& path) const;
    ko::lxml::atom_table_t& table_get();
    void keep(const std::string& file, std::unique_ptr<ko::lxml::document_t> document);

    file_cache_t* cache;
    std::list<std::string> search_path;
    source_atoms_t atoms;
    std::list<ko::lxml::atom_table_t> tables;
    std::list<std::unique_ptr<ko::lxml::document_t>> documents;
};

} // namespace ko::xpp

/// @file
/// Finding, loading and keeping included files.
///
/// Without a cache an included document names its nodes in a copy of the source's atom table,
/// made once a run. Before and after each load the two tables take over each other's new texts,
/// so that attributes come in the order that one shared table would give them, in this run and in
/// later ones, and yet nothing points into the source's document once `process` has returned.
#pragma once

#include <list>
#include <memory>
#include <string>

#include "lxml/lxml.h"
#include "xml_preprocessor/file_cache.h"

namespace ko::xpp {

/// The atom tables of one run without a cache.
class source_atoms_t {
public:
    explicit source_atoms_t(lxml::atom_table_t& source_table) : source(source_table) {}

    /// Gives each table the texts that the other one has got since the last time.
    /// @param tables where the copy is made
    /// @return the copy
    lxml::atom_table_t& share(std::list<lxml::atom_table_t>& tables);
    /// The same at the end, where there is a copy; without the memory for it the source's table
    /// stays behind.
    void share_at_end() noexcept;
    /// Whether `table` is the copy.
    bool is_copy(const lxml::atom_table_t* table) const { return table == copy; }

private:
    void exchange();

    lxml::atom_table_t& source;
    lxml::atom_table_t* copy = nullptr;
    int source_seen = 1; ///< first text of `source` that `copy` need not have
    int copy_seen = 1;   ///< the reverse
};

/// What an "include" asks for.
struct include_request_t {
    std::string file;      ///< name as written
    std::string directory; ///< directory of the including document, with its "/", or empty
    bool search;           ///< whether the search path comes before `directory`
};

/// The search path and the included documents.
///
/// It owns the documents that it loads, unless there is a cache, which owns them then. A load
/// that fails leaves everything as it was, but for texts in atom tables.
class includes_t {
public:
    explicit includes_t(file_cache_t* used_cache);

    /// Adds a directory and, where it is missing, the backslash that ends every entry.
    /// @throws ko::exception_t when `dir` is empty
    void search_path_add(const std::string& dir);

    /// The root element of a document in the cache, or null.
    lxml::element_t* cached(const std::string& key) const;
    /// The path of a file; empty where there is none.
    std::string find(const include_request_t& request) const;
    /// Loads a file and keeps it.
    /// @param key its name in the cache
    /// @return its root element; a document that can be read has one
    /// @throws what reading reports
    lxml::element_t& load(const std::string& path, const std::string& key, bool positions,
                          source_atoms_t& atoms);

    bool search_path_default = true; ///< whether an "include" uses the search path unasked

private:
    void keep(const std::string& key, std::unique_ptr<lxml::document_t> document);

    file_cache_t* cache;
    std::list<std::string> search_path;
    std::list<lxml::atom_table_t> tables;
    std::list<std::unique_ptr<lxml::document_t>> documents;
};

} // namespace ko::xpp

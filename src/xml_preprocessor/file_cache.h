/// @file
/// A cache of loaded documents.
#pragma once

#include <map>
#include <string>

#include "export.h"
#include "lxml/lxml.h"

namespace ko::xpp {

/// Documents that "include" directives loaded, by the name they were included by: the text of the
/// attribute "file", whatever directory the file was found in.
///
/// @par Owns
/// Its documents and the atom table that they share, and deletes them.
/// @par Lives
/// Longer than the preprocessors that use it.
/// @par Threads
/// Used by one thread at a time, together with those preprocessors.
/// @par After an exception
/// A load that fails leaves it as it was.
class KO_API file_cache_t {
public:
    file_cache_t();
    file_cache_t(const file_cache_t&) = delete;
    file_cache_t& operator=(const file_cache_t&) = delete;
    ~file_cache_t();

    /// The document stored under `name`, or null.
    ko::lxml::document_t* get(const std::string& name);
    /// Stores `doc` under `name` and owns it from then on. A document stored there before is not
    /// deleted; it is the caller's again.
    /// @param name what the attribute "file" of an "include" says
    /// @param doc a document, with any atom table, that is stored under no other name; null and a
    ///        document without a root stand for no document
    void insert(const std::string& name, ko::lxml::document_t* doc);
    /// The table that the documents share.
    ko::lxml::atom_table_t& atom_table_get();

private:
    friend struct ko::layout_t;

    std::map<std::string, ko::lxml::document_t*> documents;
    ko::lxml::atom_table_t atoms;
};

} // namespace ko::xpp

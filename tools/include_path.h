/// @file
/// Included files found along a list of directories.
#pragma once

#include <list>
#include <map>
#include <string>
#include <vector>

#include "lxml/lxml.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace tool {

/// Fills a cache with the files that documents include and that lie in given directories.
///
/// An entry of the library's own search path ends in a backslash. Directories of this system are
/// therefore searched here, before the document is processed; the "file" of an "include" is plain
/// text, so everything that can be included is known by then. A file that cannot be read is
/// remembered and only an error when it is really included.
class include_path_t {
public:
    /// @param dirs directories, without the separator at their end
    /// @param files receives the documents; must outlive this object
    include_path_t(const std::vector<std::string>& dirs, ko::xpp::file_cache_t& files);

    /// Loads what the tree below `root` includes, and what that includes.
    void load(ko::lxml::element_t* root);

    /// Why the file of the message "failed to load xml file:NAME" was not loaded; the message
    /// itself when that is not known.
    std::string explain(const std::string& message) const;

private:
    void include(ko::lxml::element_t* directive);
    void file_load(const std::string& name, const std::string& path);

    std::list<std::string> directories;
    ko::xpp::file_cache_t& cache;
    std::vector<ko::lxml::element_t*> pending;
    std::map<std::string, std::string> failures;
};

} // namespace tool

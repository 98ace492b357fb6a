/// @file
/// Where included files lie.
#pragma once

#include <string>
#include <vector>

#include "lxml/lxml.h"

namespace tool {

/// Finds the file of an "include" directive: in the given directories, unless the directive says
/// `searchpath="false"`, and then in the folder of the document that holds the directive.
///
/// Only regular files are found, so that no include waits for the writer of a pipe.
class include_search_t {
public:
    include_search_t() = default;
    /// @param dirs directories, without the separator at their end
    explicit include_search_t(std::vector<std::string> dirs) : directories(std::move(dirs)) {}

    /// The path of the file, or the empty string when there is none.
    /// @param file what the directive says
    std::string operator()(const std::string& file, const ko::lxml::element_t& directive) const;

private:
    std::vector<std::string> directories;
};

} // namespace tool

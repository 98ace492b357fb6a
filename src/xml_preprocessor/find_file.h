/// @file
/// Search for a file along a list of directories.
#pragma once

#include <list>
#include <string>

#include "export.h"

namespace ko {

/// Finds the first readable file among the entries of `dirs`, each followed directly by `name`.
/// @param name name of the file; never tried alone unless an entry of `dirs` is empty
/// @param dirs directories, each with the separator at its end
/// @param found receives the path; unchanged when there is none
/// @return true when a file was found
KO_API bool find_file(const std::string& name, const std::list<std::string>& dirs,
                      std::string& found);

} // namespace ko

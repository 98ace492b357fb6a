/// @file
/// Looks at documents without running them.
#pragma once

#include <string>
#include <vector>

#include "definition.h"
#include "diagnostic.h"
#include "include_search.h"
#include "survey.h"

namespace tool {

/// Reports definitions that neither a document nor another definition reads.
/// @param mentioned all names that the expressions of the documents hold
void definitions_check(const std::vector<definition_t>& definitions,
                       std::set<std::string> mentioned, diagnostics_t& diagnostics);

/// The names of definitions.
std::set<std::string> names_of(const std::vector<definition_t>& definitions);

/// Reports all that is wrong with documents, and with what they include, as far as that can be
/// said without running them. Each is looked at by itself.
/// @param files receives the paths of all documents that were read
void documents_check(const std::vector<std::string>& documents, const include_search_t& search,
                     const std::vector<definition_t>& definitions, diagnostics_t& diagnostics,
                     std::vector<std::string>& files);

} // namespace tool

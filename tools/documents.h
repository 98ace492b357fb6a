/// @file
/// Documents as the tools read them: with the places of their elements.
#pragma once

#include <string>

#include "diagnostic.h"
#include "exception/exception.h"
#include "lxml/lxml.h"

namespace tool {

/// Loads a document. @param file its path; "-" is standard input
/// @throws ko::exception_t what the loading reports
void document_load(ko::lxml::document_t& document, const std::string& file);

/// The place of an element, its line and column counting from 1.
ko::xpp::place_t place_of(const ko::lxml::element_t& element);

/// A place of the library as the tools show it.
ko::xpp::place_t place_shown(ko::xpp::place_t place);

/// What loading a document reported.
/// @param file what stands for the place when the report has none
diagnostic_t load_diagnostic(const ko::exception_t& error, const std::string& file);

/// The name by which a document is shown.
std::string file_shown(const std::string& file);

} // namespace tool

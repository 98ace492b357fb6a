/// @file
/// The command line of kobase-xpp.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "definition.h"
#include "diagnostic.h"

namespace tool {

/// What is written instead of the document, if anything.
enum class xpp_mode_t { document, check, depend, dry_run, variables };

/// The command line as it was understood.
struct xpp_options_t {
    std::vector<std::string> files;
    std::vector<definition_t> definitions;
    std::vector<std::string> directories;
    xpp_mode_t mode = xpp_mode_t::document;

    std::string output; ///< "-" or empty for standard output
    bool standard = false;
    int indent = -1;
    bool trim = false;
    bool pretty = false;
    bool includes = true;

    bool lenient = false;
    bool quiet = false;
    diagnostic_form_t form = diagnostic_form_t::text;

    bool depend_too = false; ///< writes a rule beside the document
    std::string depend_file;
    std::string depend_target;
    bool depend_phony = false;
    std::string map_file;

    bool watch = false;
    std::size_t elements_max = 0;
    std::size_t passes_max = 0;
    double seconds_max = 0;
};

/// Reads the command line.
/// @return nothing when help or the version was shown instead
/// @throws usage_error_t
std::optional<xpp_options_t> xpp_options_read(int argc, char** argv);

} // namespace tool

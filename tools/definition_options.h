/// @file
/// The options of both tools that prepare a run of the preprocessor.
#pragma once

#include <string>
#include <vector>

#include "arguments.h"
#include "definition.h"
#include "diagnostic.h"

namespace tool {

/// `-D`, `-S`, `-E` and `-I`.
class definition_options_t {
public:
    /// @param app gets the options; both live as long as the command line is read
    explicit definition_options_t(CLI::App& app);

    /// The definitions in the order in which they were given.
    /// @throws usage_error_t a definition that cannot be used
    std::vector<definition_t> definitions_get() const;
    /// The directories of `-I`.
    /// @throws usage_error_t an empty one
    const std::vector<std::string>& directories_get() const;

private:
    CLI::App& line;
    std::vector<std::string> guessed;
    std::vector<std::string> texts;
    std::vector<std::string> expressions;
    std::vector<std::string> directories;
    CLI::Option* guessed_option;
    CLI::Option* text_option;
    CLI::Option* expression_option;
};

/// Warns of values such as "007", which look like numbers and are taken as texts.
void definitions_warn(const std::vector<definition_t>& definitions, diagnostics_t& diagnostics);

} // namespace tool

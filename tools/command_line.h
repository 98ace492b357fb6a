/// @file
/// The command line of a host tool, checked as a whole.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace tool {

/// A command line that cannot be carried out; `what()` says why.
class usage_error_t : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Exit statuses of the host tools.
enum status_e { status_ok = 0, status_failed = 1, status_usage = 2 };

/// The words of a command line, told apart into flags, options with a value, and operands.
///
/// A word that begins with "-" is an option, up to a word "--"; "-" alone is an operand.
class command_line_t {
public:
    /// @param flags options without a value
    /// @param valued options with a value: the next word, which does not begin with "-"
    /// @throws usage_error_t an unknown option, or one that lacks its value
    command_line_t(int argc, char** argv, const std::vector<std::string>& flags,
                   const std::vector<std::string>& valued);

    /// Whether a flag was given.
    bool flag_get(const std::string& option) const;
    /// The value of an option given at most once; empty without it.
    /// @throws usage_error_t when it was given twice
    std::string value_get(const std::string& option) const;
    /// The values of an option in the order given.
    std::vector<std::string> values_get(const std::string& option) const;
    /// The words that are neither options nor their values.
    const std::vector<std::string>& operands_get() const;

private:
    struct value_t {
        std::string option;
        std::string text;
    };

    std::vector<std::string> given_flags;
    std::vector<value_t> values;
    std::vector<std::string> operands;
};

/// A text of the form "NAME=VALUE".
struct definition_t {
    std::string name;
    std::string value;
};

/// Splits a definition at its first "=".
/// @throws usage_error_t when there is none, or no name before it
definition_t definition_read(const std::string& option, const std::string& text);

} // namespace tool

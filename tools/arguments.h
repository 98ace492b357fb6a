/// @file
/// What the host tools do with their command lines alike.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

/// A command line that cannot be carried out; `what()` says why.
class usage_error_t : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Exit statuses of the host tools.
enum status_e { status_ok = 0, status_failed = 1, status_usage = 2 };

/// Gives a program `-h`, `--help` and `--version`.
/// @param program its name, which also stands before its messages
void arguments_prepare(CLI::App& app, const std::string& program);

/// An option that may be given several times, with one value each time.
CLI::Option* list_option_add(CLI::App& app, const std::string& names,
                             std::vector<std::string>& values, const std::string& help);

/// Reads the words of a command line into what the options of `app` are bound to.
/// @return false when help or the version was shown instead
/// @throws usage_error_t an unknown option, or one that lacks its value
bool arguments_read(CLI::App& app, std::vector<std::string> words);

/// Runs a program, and tells a failure and standard output that cannot be written.
/// @param body gives the exit status
/// @return the exit status
int program_run(const std::string& program, const std::function<int()>& body);

} // namespace tool

/// @file
/// Lines that a person types at a terminal, with editing, completion and history where the system
/// has them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Gives one line after another, each after a prompt. There is one object at a time.
class terminal_lines_t {
public:
    /// Gives the names that begin with a text.
    using complete_t = std::function<std::vector<std::string>(const std::string& start)>;

    /// @param complete proposes names
    /// @param history file that keeps the lines from one session to the next; empty for none
    terminal_lines_t(complete_t complete, std::string history);
    terminal_lines_t(const terminal_lines_t&) = delete;
    terminal_lines_t& operator=(const terminal_lines_t&) = delete;
    ~terminal_lines_t();

    /// Reads the next line, without its line break. @return false at the end
    bool next(const char* prompt, std::string& line);

private:
    std::string history_file;
};

} // namespace tool

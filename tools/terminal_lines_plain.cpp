// The terminal as the system gives it.

#include <iostream>
#include <utility>

#include "terminal_lines.h"

namespace tool {

terminal_lines_t::terminal_lines_t(complete_t, std::string history)
    : history_file(std::move(history)) {}

terminal_lines_t::~terminal_lines_t() = default;

bool terminal_lines_t::next(const char* prompt, std::string& line) {
    std::cout << prompt << std::flush;
    return static_cast<bool>(std::getline(std::cin, line));
}

} // namespace tool

// The terminal as the system gives it.

#include <iostream>

#include "line_source.h"

namespace tool {

terminal_lines_t::terminal_lines_t() = default;
terminal_lines_t::~terminal_lines_t() = default;

bool terminal_lines_t::next(std::string& line) {
    std::cout << "> " << std::flush;
    return static_cast<bool>(std::getline(std::cin, line));
}

} // namespace tool

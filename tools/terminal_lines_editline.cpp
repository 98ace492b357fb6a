// The terminal with line editing and history.

#include <cstdlib>
#include <editline/readline.h>
#include <memory>

#include "line_source.h"

namespace tool {

terminal_lines_t::terminal_lines_t() {
    using_history();
}

terminal_lines_t::~terminal_lines_t() = default;

bool terminal_lines_t::next(std::string& line) {
    const std::unique_ptr<char, void (*)(void*)> text(readline("> "), std::free);
    if (!text) {
        return false;
    }
    line = text.get();
    if (!line.empty()) {
        add_history(text.get());
    }
    return true;
}

} // namespace tool

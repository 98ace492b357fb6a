// The terminal with line editing, completion and history.

#include <cstdlib>
#include <cstring>
#include <editline/readline.h>
#include <memory>
#include <utility>

#include "terminal_lines.h"

namespace tool {

namespace {

/// Lines that the history keeps.
constexpr int history_max = 1000;

/// What proposes names; the library of the terminal calls plain functions only.
terminal_lines_t::complete_t& completer() {
    static terminal_lines_t::complete_t function;
    return function;
}

/// Gives the next name that begins with `text`, from the first when `state` is 0; the caller
/// frees it.
char* next_name(const char* text, int state) {
    static std::vector<std::string> names;
    static std::size_t next = 0;
    if (state == 0) {
        names = completer()(text);
        next = 0;
    }
    return next < names.size() ? strdup(names[next++].c_str()) : nullptr;
}

char** complete(const char* text, int, int) {
    rl_attempted_completion_over = 1;
    rl_completion_append_character = '\0';
    return rl_completion_matches(text, next_name);
}

} // namespace

terminal_lines_t::terminal_lines_t(complete_t complete_names, std::string history)
    : history_file(std::move(history)) {
    completer() = std::move(complete_names);
    rl_attempted_completion_function = complete;
    using_history();
    stifle_history(history_max);
    if (!history_file.empty()) {
        read_history(history_file.c_str());
    }
}

terminal_lines_t::~terminal_lines_t() {
    if (!history_file.empty()) {
        write_history(history_file.c_str());
    }
    completer() = nullptr;
}

bool terminal_lines_t::next(const char* prompt, std::string& line) {
    const std::unique_ptr<char, void (*)(void*)> text(readline(prompt), std::free);
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

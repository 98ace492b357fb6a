// kobase-calc: the expression evaluator as a program.

#include <fstream>
#include <iostream>
#include <string>
#include <unistd.h>

#include "command_line.h"
#include "kobase.h"
#include "line_source.h"

namespace {

const char* const help =
    "Usage: kobase-calc [OPTION]... [EXPRESSION]...\n"
    "Evaluates expressions and shows the type and the value of each: (i) an integer, (f) a\n"
    "float, (s) a string. Variables keep their values from one expression to the next.\n"
    "Without an expression or a file the lines of standard input are evaluated; at a terminal\n"
    "there is a prompt, and control-D ends.\n"
    "An expression that begins with - stands after the word --.\n"
    "\n"
    "  -f FILE         evaluate the lines of FILE first\n"
    "  -m NAME=TEXT    define a macro, or a function when NAME is \"name(a, b)\"\n"
    "  --help          show this text\n"
    "  --version       show the version\n"
    "\n"
    "Exit status: 0 success, 1 an expression or a file is at fault, 2 the command line is.\n";

/// True for a line that holds no expression.
bool is_blank(std::string line) {
    ko::str::strip_leading_whitespace(line);
    return line.empty() || ko::str::starts_with(line, "//");
}

/// Evaluates one line and shows its value.
void evaluate(ko::alg::algebra_t& algebra, const std::string& line) {
    if (!is_blank(line)) {
        // A comment at the end of an expression needs its line break.
        std::cout << algebra.evaluate(line + "\n") << std::endl;
    }
}

void report(const std::string& place, const ko::exception_t& e) {
    std::cerr << "kobase-calc: " << place << e.what() << std::endl;
}

int arguments_evaluate(ko::alg::algebra_t& algebra, const std::vector<std::string>& expressions) {
    for (const std::string& expression : expressions) {
        try {
            evaluate(algebra, expression);
        } catch (const ko::exception_t& e) {
            report(expression + ": ", e);
            return tool::status_failed;
        }
    }
    return tool::status_ok;
}

/// Evaluates line by line up to the first that fails.
int lines_evaluate(ko::alg::algebra_t& algebra, tool::line_source_t& lines,
                   const std::string& name) {
    unsigned number = 0;
    for (std::string line; lines.next(line);) {
        ++number;
        try {
            evaluate(algebra, line);
        } catch (const ko::exception_t& e) {
            report(name + ":" + std::to_string(number) + ": ", e);
            return tool::status_failed;
        }
    }
    return tool::status_ok;
}

int file_evaluate(ko::alg::algebra_t& algebra, const std::string& name) {
    std::ifstream file(name);
    tool::stream_lines_t lines(file);
    file.peek();
    if (!file.is_open() || file.bad()) {
        std::cerr << "kobase-calc: " << name << ": cannot be read\n";
        return tool::status_failed;
    }
    return lines_evaluate(algebra, lines, name);
}

/// Evaluates what a person types; an expression that fails does not end the session.
int terminal_evaluate(ko::alg::algebra_t& algebra) {
    tool::terminal_lines_t lines;
    for (std::string line; lines.next(line);) {
        try {
            evaluate(algebra, line);
        } catch (const ko::exception_t& e) {
            report("", e);
        }
    }
    std::cout << '\n';
    return tool::status_ok;
}

int input_evaluate(ko::alg::algebra_t& algebra) {
    if (isatty(STDIN_FILENO) != 0) {
        return terminal_evaluate(algebra);
    }
    tool::stream_lines_t lines(std::cin);
    return lines_evaluate(algebra, lines, "standard input");
}

int run(const tool::command_line_t& line) {
    ko::alg::algebra_t algebra;
    for (const std::string& macro : line.values_get("-m")) {
        const tool::definition_t definition = tool::definition_read("-m", macro);
        algebra.macro_define(definition.name, definition.value);
    }
    for (const std::string& file : line.values_get("-f")) {
        if (const int status = file_evaluate(algebra, file)) {
            return status;
        }
    }
    if (!line.operands_get().empty()) {
        return arguments_evaluate(algebra, line.operands_get());
    }
    return line.values_get("-f").empty() ? input_evaluate(algebra) : tool::status_ok;
}

int main_checked(int argc, char** argv) {
    const tool::command_line_t line(argc, argv, {"--help", "--version"}, {"-f", "-m"});
    if (line.flag_get("--help")) {
        std::cout << help;
        return tool::status_ok;
    }
    if (line.flag_get("--version")) {
        std::cout << "kobase-calc " << ko::version() << '\n';
        return tool::status_ok;
    }
    return run(line);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return main_checked(argc, argv);
    } catch (const tool::usage_error_t& e) {
        std::cerr << "kobase-calc: " << e.what() << "\nTry kobase-calc --help.\n";
        return tool::status_usage;
    } catch (const std::exception& e) {
        std::cerr << "kobase-calc: " << e.what() << '\n';
        return tool::status_failed;
    }
}

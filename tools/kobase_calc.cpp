// kobase-calc: the expression evaluator as a program.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <unistd.h>

#include "arguments.h"
#include "calculator.h"
#include "definition_options.h"
#include "exception/exception.h"
#include "report_scope.h"
#include "session.h"
#include "terminal_lines.h"

namespace {

using line_end_t = tool::statement_reader_t::line_end_t;

/// The command line.
struct options_t {
    std::vector<std::string> files;
    std::vector<std::string> macros;
    std::vector<std::string> expressions;
    std::string configuration;
    std::vector<tool::definition_t> definitions;
    std::vector<std::string> directories;
};

/// A word such as "-2" or "-(a)" is an expression; a blank before it says so to the reader of
/// options.
std::vector<std::string> words_of(int argc, char** argv) {
    const std::string first = "0123456789.(";
    std::vector<std::string> words(argv + 1, argv + argc);
    for (std::string& word : words) {
        if (word.size() > 1 && word[0] == '-' && first.find(word[1]) != std::string::npos) {
            word.insert(word.begin(), ' ');
        }
    }
    return words;
}

/// @return false when help or the version was shown instead
bool options_read(int argc, char** argv, options_t& options) {
    CLI::App app(
        "Evaluates expressions and shows the type and the value of each: (i) an integer,\n"
        "(f) a float, (s) a string. Variables keep their values from one to the next.\n"
        "Without an expression or a file the lines of standard input are evaluated; at a\n"
        "terminal there is a prompt, \"help\" helps and control-D ends.");
    tool::arguments_prepare(app, "kobase-calc");
    app.footer(
        "Exit status: 0 success, 1 an expression or a file is at fault, 2 the command line "
        "is.");
    app.add_option("EXPRESSION", options.expressions, "what to evaluate; a ; stands between two");
    tool::list_option_add(app, "-f,--file", options.files,
                          "evaluate the lines of FILE first; - is standard input")
        ->type_name("FILE");
    tool::list_option_add(app, "-m,--macro", options.macros,
                          "define a macro, or a function when NAME is \"name(a, b)\"")
        ->type_name("NAME=TEXT");
    app.add_option("--with", options.configuration,
                   "process the configuration FILE.xml and take over its variables")
        ->type_name("FILE.xml");
    const tool::definition_options_t definitions(app);
    if (!tool::arguments_read(app, words_of(argc, argv))) {
        return false;
    }
    options.definitions = definitions.definitions_get();
    options.directories = definitions.directories_get();
    return true;
}

void macros_define(ko::alg::algebra_t& algebra, const std::vector<std::string>& macros) {
    for (const std::string& macro : macros) {
        const std::size_t equals = macro.find('=');
        if (equals == 0 || equals == std::string::npos) {
            throw tool::usage_error_t("option -m takes NAME=TEXT, not " + macro);
        }
        algebra.macro_define(macro.substr(0, equals), macro.substr(equals + 1));
    }
}

/// Processes a configuration and takes over its variables.
bool configuration_read(tool::calculator_t& calculator, const options_t& options) {
    tool::diagnostics_t diagnostics(false, false);
    tool::session_options_t settings;
    settings.file = options.configuration;
    settings.directories = options.directories;
    settings.definitions = options.definitions;
    tool::session_t session(settings, diagnostics);
    {
        tool::report_filter_t filter(std::cerr);
        const tool::report_scope_t reports(filter);
        session.run();
    }
    tool::diagnostics_print(std::cerr, diagnostics.sorted(session.files_get()), "kobase-calc",
                            false);
    calculator.algebra_get().memory_copy(session.algebra_get());
    return !diagnostics.failed();
}

/// Sets the variables of the command line and of the configuration.
bool variables_set(tool::calculator_t& calculator, const options_t& options) {
    if (!options.configuration.empty()) {
        return configuration_read(calculator, options);
    }
    ko::alg::algebra_t variables;
    for (const tool::definition_t& definition : options.definitions) {
        variables.assign(definition.name, tool::definition_value(variables, definition));
    }
    calculator.algebra_get().memory_copy(variables);
    return true;
}

bool stream_evaluate(tool::calculator_t& calculator, std::istream& stream,
                     const std::string& name) {
    tool::statement_reader_t reader(line_end_t::ends);
    for (std::string line; std::getline(stream, line);) {
        if (!calculator.evaluate(reader.add(line + "\n"), name + ":")) {
            return false;
        }
    }
    return calculator.evaluate(reader.finish(), name + ":");
}

bool file_evaluate(tool::calculator_t& calculator, const std::string& name) {
    if (name == "-") {
        return stream_evaluate(calculator, std::cin, "standard input");
    }
    std::ifstream file(name);
    file.peek();
    if (!file.is_open() || file.bad()) {
        std::cerr << "kobase-calc: " << name << ": cannot be read\n";
        return false;
    }
    return stream_evaluate(calculator, file, name);
}

bool argument_evaluate(tool::calculator_t& calculator, const std::string& text) {
    tool::statement_reader_t reader(line_end_t::joins);
    return calculator.evaluate(reader.add(text), "") && calculator.evaluate(reader.finish(), "");
}

std::string history_file() {
    if (const char* const file = std::getenv("KOBASE_CALC_HISTORY")) {
        return file;
    }
    const char* const home = std::getenv("HOME");
    return home == nullptr ? "" : std::string(home) + "/.kobase_calc_history";
}

std::string without_blanks(const std::string& line) {
    const std::size_t start = line.find_first_not_of(" \t");
    return start == std::string::npos
               ? std::string()
               : line.substr(start, line.find_last_not_of(" \t") - start + 1);
}

/// Evaluates what a person types; an expression that fails does not end the session.
void terminal_evaluate(tool::calculator_t& calculator) {
    tool::terminal_lines_t lines(
        [&](const std::string& start) { return calculator.names_starting(start); },
        history_file());
    tool::statement_reader_t reader(line_end_t::ends);
    std::string line;
    while (lines.next(reader.is_in_comment() ? "  " : "> ", line)) {
        if (reader.is_in_comment() || !calculator.command(without_blanks(line))) {
            calculator.evaluate(reader.add(line + "\n"), "");
        }
    }
    std::cout << '\n';
}

bool evaluate(tool::calculator_t& calculator, const options_t& options) {
    for (const std::string& file : options.files) {
        if (!file_evaluate(calculator, file)) {
            return false;
        }
    }
    for (const std::string& expression : options.expressions) {
        if (!argument_evaluate(calculator, expression)) {
            return false;
        }
    }
    if (!options.expressions.empty() || !options.files.empty()) {
        return true;
    }
    if (isatty(STDIN_FILENO) == 0) {
        return stream_evaluate(calculator, std::cin, "standard input");
    }
    terminal_evaluate(calculator);
    return true;
}

int run(int argc, char** argv) {
    options_t options;
    if (!options_read(argc, argv, options)) {
        return tool::status_ok;
    }
    tool::calculator_t calculator;
    macros_define(calculator.algebra_get(), options.macros);
    const bool good = variables_set(calculator, options) && evaluate(calculator, options);
    return good ? tool::status_ok : tool::status_failed;
}

} // namespace

int main(int argc, char** argv) {
    return tool::program_run("kobase-calc", [&] { return run(argc, argv); });
}

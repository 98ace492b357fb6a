// kobase-xpp: the XML preprocessor as a program.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>

#include "arguments.h"
#include "checker.h"
#include "definition_options.h"
#include "dependencies.h"
#include "exception/exception.h"
#include "output.h"
#include "report_scope.h"
#include "session.h"
#include "source_map.h"
#include "stop.h"
#include "summary.h"
#include "watch.h"
#include "xpp_options.h"

namespace {

using tool::xpp_mode_t;
using tool::xpp_options_t;

bool terminal_has_colours() {
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr &&
           terminal != nullptr && std::string(terminal) != "dumb";
}

void diagnostics_show(tool::diagnostics_t& diagnostics, const xpp_options_t& options,
                      const std::vector<std::string>& files) {
    const std::vector<tool::diagnostic_t>& list = diagnostics.sorted(files);
    if (options.form == tool::diagnostic_form_t::json) {
        tool::diagnostics_print_json(std::cerr, list);
    } else if (options.form == tool::diagnostic_form_t::sarif) {
        tool::diagnostics_print_sarif(std::cerr, list);
    } else {
        tool::diagnostics_print(std::cerr, list, "kobase-xpp", terminal_has_colours());
    }
}

/// Takes the white space off that stood around directives which gave nothing: what became of an
/// element with children has none now, and the library trims elements with children only.
void trim_emptied(tool::session_t& session) {
    for (ko::lxml::element_t* element : session.output_get().elements) {
        if (element->children.empty() && session.parents_get().count(element) != 0) {
            const std::size_t start = element->text.find_first_not_of(" \t\r\n");
            const std::size_t end = element->text.find_last_not_of(" \t\r\n");
            element->text = start == std::string::npos
                                ? std::string()
                                : element->text.substr(start, end - start + 1);
        }
    }
}

std::string document_text(tool::session_t& session, const xpp_options_t& options) {
    const ko::lxml::document_t& output = session.output_get();
    if (output.root == nullptr) {
        return {};
    }
    std::ostringstream text;
    if (options.standard) {
        ko::lxml::write_options_t write_options;
        write_options.indent = options.indent;
        output.write(text, write_options);
    } else {
        if (options.trim) {
            trim_emptied(session);
        }
        output.root->print(text, 0, 0, options.trim, options.pretty);
    }
    std::string bytes = text.str();
    return !bytes.empty() && bytes.back() == '\n' ? bytes : bytes + '\n';
}

std::string rule_text(const tool::session_t& session, const xpp_options_t& options) {
    return tool::make_rule(options.depend_target, session.files_get(), options.depend_phony);
}

void results_write(tool::session_t& session, const tool::source_map_t& map,
                   const xpp_options_t& options) {
    switch (options.mode) {
    case xpp_mode_t::depend:
        tool::text_write(options.depend_file, rule_text(session, options));
        return;
    case xpp_mode_t::dry_run:
        tool::text_write("", tool::dry_run_text(session));
        return;
    case xpp_mode_t::variables:
        tool::text_write("", tool::variables_text(session));
        return;
    default:
        break;
    }
    const std::string text = document_text(session, options);
    if (!options.map_file.empty()) {
        tool::text_write(options.map_file, session.output_get().root == nullptr
                                               ? "[]\n"
                                               : map.text(*session.output_get().root));
    }
    if (options.depend_too) {
        tool::file_write(options.depend_file, rule_text(session, options));
    }
    tool::text_write(options.output, text);
}

tool::session_options_t session_options(const xpp_options_t& options) {
    tool::session_options_t settings;
    settings.file = options.files[0];
    settings.directories = options.directories;
    settings.definitions = options.definitions;
    settings.includes = options.includes;
    settings.elements_max = options.elements_max;
    settings.passes_max = options.passes_max;
    settings.stop = &tool::stop_flag();
    return settings;
}

/// Runs once. @param files receives what was read
int document_run(const xpp_options_t& options, std::vector<std::string>& files) {
    tool::diagnostics_t diagnostics(options.lenient, options.quiet);
    tool::definitions_warn(options.definitions, diagnostics);
    tool::source_map_t map;
    tool::session_t session(session_options(options), diagnostics);
    if (!options.map_file.empty()) {
        session.made_set([&](const auto& source, const auto& output, const auto& trace) {
            map.add(source, output, trace);
        });
    }
    {
        const tool::time_limit_t limit(options.seconds_max);
        tool::report_filter_t filter(std::cerr);
        const tool::report_scope_t reports(filter);
        session.run();
    }
    files = session.files_get();
    diagnostics_show(diagnostics, options, files);
    if (diagnostics.failed()) {
        return tool::status_failed;
    }
    results_write(session, map, options);
    return tool::status_ok;
}

int documents_check(const xpp_options_t& options, std::vector<std::string>& files) {
    tool::diagnostics_t diagnostics(options.lenient, options.quiet);
    tool::definitions_warn(options.definitions, diagnostics);
    const tool::time_limit_t limit(options.seconds_max);
    tool::documents_check(options.files, tool::include_search_t(options.directories),
                          options.definitions, diagnostics, files);
    diagnostics_show(diagnostics, options, files);
    return diagnostics.failed() ? tool::status_failed : tool::status_ok;
}

int once(const xpp_options_t& options, std::vector<std::string>& files) {
    files.clear();
    return options.mode == xpp_mode_t::check ? documents_check(options, files)
                                             : document_run(options, files);
}

/// Whether one of the files was written since `start`.
bool changed_since(const std::vector<std::string>& files, std::filesystem::file_time_type start) {
    return std::any_of(files.begin(), files.end(), [&](const std::string& file) {
        std::error_code error;
        const auto time = std::filesystem::last_write_time(file, error);
        return !error && time > start;
    });
}

int watch(const xpp_options_t& options) {
    tool::stop_on_interrupt();
    tool::watch_t files_watched;
    do {
        std::vector<std::string> files;
        std::filesystem::file_time_type start;
        do {
            start = std::filesystem::file_time_type::clock::now();
            try {
                once(options, files);
            } catch (const ko::exception_t& e) {
                std::cerr << "kobase-xpp: " << e.what() << '\n';
            }
            files_watched.files_set(files);
        } while (!tool::stop_flag() && changed_since(files, start));
    } while (!tool::stop_flag() && files_watched.wait());
    return tool::status_ok;
}

int run(int argc, char** argv) {
    const std::optional<xpp_options_t> options = tool::xpp_options_read(argc, argv);
    if (!options) {
        return tool::status_ok;
    }
    if (options->watch) {
        return watch(*options);
    }
    std::vector<std::string> files;
    return once(*options, files);
}

} // namespace

int main(int argc, char** argv) {
    return tool::program_run("kobase-xpp", [&] { return run(argc, argv); });
}

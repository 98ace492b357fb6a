#include "xpp_options.h"

#include <algorithm>
#include <array>
#include <utility>

#include "definition_options.h"

namespace tool {

namespace {

/// What the options are bound to beside `xpp_options_t`.
struct flags_t {
    bool check = false;
    bool depend = false;
    bool dry_run = false;
    bool variables = false;
    bool no_include = false;
    std::string output_format = "library";
    std::string diagnostics = "text";
};

/// Options of several letters behind one "-", as compilers have them, under their long names.
std::string spelled_out(const std::string& word) {
    static const std::array<std::pair<const char*, const char*>, 4> plain{
        {{"-MD", "--depend-too"},
         {"-MP", "--depend-phony"},
         {"-MF", "--depend-file"},
         {"-MT", "--depend-target"}}};
    for (const auto& [compiler, name] : plain) {
        if (word == compiler) {
            return name;
        }
        const bool valued = compiler[2] == 'F' || compiler[2] == 'T';
        if (valued && word.rfind(compiler, 0) == 0) {
            return std::string(name) + "=" + word.substr(3);
        }
    }
    return word;
}

std::vector<std::string> words_of(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    const auto end = std::find(words.begin(), words.end(), "--");
    std::transform(words.begin(), end, words.begin(), spelled_out);
    return words;
}

void output_options(CLI::App& app, xpp_options_t& options, flags_t& flags) {
    app.add_option("-o,--output", options.output, "write to FILE instead of standard output")
        ->type_name("FILE");
    app.add_option("--output-format", flags.output_format,
                   "library: as the library prints; standard: as other programs read it")
        ->check(CLI::IsMember({"library", "standard"}))
        ->type_name("FORM");
    app.add_option("--indent", options.indent,
                   "indent by N blanks; with --output-format=standard")
        ->check(CLI::Range(0, 100))
        ->type_name("N");
    app.add_flag("--trim", options.trim,
                 "strip white space around the text of elements with children");
    app.add_flag("--pretty", options.pretty, "break lines around the top element");
    app.add_flag("--no-include", flags.no_include, "drop \"include\" directives");
    app.add_option("--map", options.map_file,
                   "write to FILE, as JSON, what each element of the output was made from")
        ->type_name("FILE");
}

void diagnostic_options(CLI::App& app, xpp_options_t& options, flags_t& flags) {
    app.add_flag("--check", flags.check, "look at the documents without running them");
    app.add_flag("--lenient", options.lenient, "make warnings of errors that do not end the run");
    app.add_flag("--no-warnings", options.quiet, "show errors only");
    app.add_option("--diagnostics", flags.diagnostics, "text, json or sarif")
        ->check(CLI::IsMember({"text", "json", "sarif"}))
        ->type_name("FORM");
    app.add_flag("--dry-run", flags.dry_run,
                 "list files, definitions and variables instead of writing the document");
    app.add_flag("--vars", flags.variables,
                 "list the variables that the run leaves instead of writing the document");
}

void build_options(CLI::App& app, xpp_options_t& options, flags_t& flags) {
    app.add_flag("-M,--depend", flags.depend,
                 "write a rule for make with the files read instead of the document");
    app.add_flag("--depend-too", options.depend_too,
                 "-MD: write such a rule to a file beside the document");
    app.add_option("--depend-file", options.depend_file,
                   "-MF FILE: write the rule there (default: the output's name and .d)")
        ->type_name("FILE");
    app.add_option("--depend-target", options.depend_target,
                   "-MT TARGET: the target of the rule (default: the output)")
        ->type_name("TARGET");
    app.add_flag("--depend-phony", options.depend_phony,
                 "-MP: add an empty rule for each included file");
    app.add_flag("--watch", options.watch,
                 "run again whenever a file changes that was read, until interrupted");
}

void limit_options(CLI::App& app, xpp_options_t& options) {
    app.add_option("--max-elements", options.elements_max, "end with an error after N elements")
        ->type_name("N");
    app.add_option("--max-passes", options.passes_max,
                   "end with an error after N passes of loops")
        ->type_name("N");
    app.add_option("--time-limit", options.seconds_max, "end with an error after SECONDS")
        ->check(CLI::Range(0.0, 1e6))
        ->type_name("SECONDS");
}

xpp_mode_t mode_of(const flags_t& flags) {
    const int given = (flags.check ? 1 : 0) + (flags.depend ? 1 : 0) + (flags.dry_run ? 1 : 0) +
                      (flags.variables ? 1 : 0);
    if (given > 1) {
        throw usage_error_t("give one of --check, --depend, --dry-run and --vars");
    }
    return flags.check       ? xpp_mode_t::check
           : flags.depend    ? xpp_mode_t::depend
           : flags.dry_run   ? xpp_mode_t::dry_run
           : flags.variables ? xpp_mode_t::variables
                             : xpp_mode_t::document;
}

bool is_stream(const std::string& file) {
    return file.empty() || file == "-";
}

/// Fills in where the rule for make goes and what it is about.
void depend_complete(xpp_options_t& options) {
    const bool wanted = options.depend_too || options.mode == xpp_mode_t::depend;
    const bool other =
        !options.depend_file.empty() || !options.depend_target.empty() || options.depend_phony;
    if (other && !wanted) {
        throw usage_error_t("-MF, -MT and -MP go with -M or -MD");
    }
    if (wanted && options.depend_target.empty()) {
        if (is_stream(options.output)) {
            throw usage_error_t("a rule for make takes its target from -o FILE or -MT TARGET");
        }
        options.depend_target = options.output;
    }
    if (options.depend_too && options.depend_file.empty()) {
        if (is_stream(options.output)) {
            throw usage_error_t("-MD without -o FILE wants -MF FILE");
        }
        options.depend_file = options.output + ".d";
    }
}

void complete(xpp_options_t& options, const flags_t& flags) {
    options.mode = mode_of(flags);
    options.standard = flags.output_format == "standard";
    options.includes = !flags.no_include;
    options.form = flags.diagnostics == "json"    ? diagnostic_form_t::json
                   : flags.diagnostics == "sarif" ? diagnostic_form_t::sarif
                                                  : diagnostic_form_t::text;
    if (options.files.empty() ||
        (options.files.size() > 1 && options.mode != xpp_mode_t::check)) {
        throw usage_error_t(options.mode == xpp_mode_t::check ? "give a document"
                                                              : "give one document");
    }
    if (options.indent >= 0 && !options.standard) {
        throw usage_error_t("--indent goes with --output-format=standard");
    }
    if (options.standard && (options.trim || options.pretty)) {
        throw usage_error_t("--trim and --pretty go with --output-format=library");
    }
    if (options.watch && options.files[0] == "-") {
        throw usage_error_t("standard input cannot be watched");
    }
    depend_complete(options);
}

} // namespace

std::optional<xpp_options_t> xpp_options_read(int argc, char** argv) {
    xpp_options_t options;
    flags_t flags;
    CLI::App app("Carries out the preprocessor directives of a document and writes the result.\n"
                 "Directives are elements of the namespace kobase.org/xmlns/xmlpreprocessor,\n"
                 "attributes of its namespace .../expressionevaluator are evaluated.");
    arguments_prepare(app, "kobase-xpp");
    app.footer("Exit status: 0 success, 1 the input is at fault, 2 the command line is.");
    app.add_option("FILE", options.files, "the document; - is standard input");
    const definition_options_t definitions(app);
    output_options(app, options, flags);
    diagnostic_options(app, options, flags);
    build_options(app, options, flags);
    limit_options(app, options);
    if (!arguments_read(app, words_of(argc, argv))) {
        return std::nullopt;
    }
    options.definitions = definitions.definitions_get();
    options.directories = definitions.directories_get();
    complete(options, flags);
    return options;
}

} // namespace tool

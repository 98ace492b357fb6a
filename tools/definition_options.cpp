#include "definition_options.h"

#include <algorithm>
#include <array>

namespace tool {

definition_options_t::definition_options_t(CLI::App& app)
    : line(app),
      guessed_option(list_option_add(app, "-D,--define", guessed,
                                     "set a variable: a number where it reads the same when "
                                     "printed, else a text")
                         ->type_name("NAME=VALUE")),
      text_option(list_option_add(app, "-S,--string", texts, "set a variable to a text")
                      ->type_name("NAME=TEXT")),
      expression_option(list_option_add(app, "-E,--evaluate", expressions,
                                        "set a variable to the value of an expression")
                            ->type_name("NAME=EXPRESSION")) {
    list_option_add(app, "-I,--include-dir", directories, "look for included files in DIR first")
        ->type_name("DIR");
}

std::vector<definition_t> definition_options_t::definitions_get() const {
    struct source_t {
        const CLI::Option* option;
        const std::vector<std::string>* values;
        value_form_t form;
        std::size_t next;
    };
    std::array<source_t, 3> sources{
        {{guessed_option, &guessed, value_form_t::guessed, 0},
         {text_option, &texts, value_form_t::text, 0},
         {expression_option, &expressions, value_form_t::expression, 0}}};
    std::vector<definition_t> definitions;
    for (const CLI::Option* option : line.parse_order()) {
        for (source_t& source : sources) {
            if (source.option == option) {
                try {
                    definitions.push_back(
                        definition_read(source.values->at(source.next++), source.form));
                } catch (const definition_error_t& e) {
                    throw usage_error_t(e.what());
                }
            }
        }
    }
    return definitions;
}

const std::vector<std::string>& definition_options_t::directories_get() const {
    if (std::find(directories.begin(), directories.end(), "") != directories.end()) {
        throw usage_error_t("option -I takes a directory, not the empty text");
    }
    return directories;
}

void definitions_warn(const std::vector<definition_t>& definitions, diagnostics_t& diagnostics) {
    for (const definition_t& definition : definitions) {
        if (definition.form == value_form_t::guessed && looks_like_number(definition.value) &&
            !is_number(definition.value)) {
            diagnostic_t diagnostic;
            diagnostic.severity = severity_t::warning;
            diagnostic.code = "number";
            diagnostic.message = "-D " + definition.name + "=" + definition.value +
                                 " is taken as a text, since as a number it reads otherwise; -S "
                                 "sets a text, -E a number";
            diagnostics.add(std::move(diagnostic));
        }
    }
}

} // namespace tool

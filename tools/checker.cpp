#include "checker.h"

#include <list>

#include "documents.h"
#include "exception/exception.h"
#include "expression_words.h"

namespace tool {

namespace {

/// The documents of one check, each loaded once.
class loader_t {
public:
    loader_t(survey_t& all, const include_search_t& dirs, diagnostics_t& out,
             std::vector<std::string>& paths)
        : survey(all), search(dirs), diagnostics(out), files(paths) {}

    /// Loads and looks at a document. @param directive what includes it, or null
    void load(const std::string& file, const ko::lxml::element_t* directive) {
        files.push_back(file);
        documents.emplace_back();
        try {
            document_load(documents.back(), file);
        } catch (const ko::exception_t& e) {
            diagnostic_t diagnostic = load_diagnostic(e, file);
            if (directive != nullptr) {
                diagnostic.trace.push_back(place_of(*directive));
                const ko::lxml::attribute_t* name = attribute_of(*directive, "file");
                diagnostic.trace.back().detail = "file=\"" + name->value + "\"";
            }
            diagnostics.fatal_add(std::move(diagnostic));
            complete = false;
            return;
        }
        survey.document_add(*documents.back().root, directive != nullptr);
    }

    void include(const ko::lxml::element_t& directive) {
        const ko::lxml::attribute_t* file = attribute_of(directive, "file");
        if (file == nullptr) {
            return;
        }
        const std::string path = search(file->value, directive);
        if (path.empty()) {
            diagnostic_t diagnostic;
            diagnostic.code = "file";
            diagnostic.place = place_of(directive);
            diagnostic.message = "failed to load xml file:" + file->value;
            diagnostics.add(std::move(diagnostic));
            complete = false;
        } else if (seen.insert(path).second) {
            load(path, &directive);
        }
    }

    /// Whether every document was found and read.
    bool all_loaded() const { return complete; }

private:
    survey_t& survey;
    const include_search_t& search;
    diagnostics_t& diagnostics;
    std::vector<std::string>& files;
    std::list<ko::lxml::document_t> documents;
    std::set<std::string> seen;
    bool complete = true;
};

} // namespace

std::set<std::string> names_of(const std::vector<definition_t>& definitions) {
    std::set<std::string> names;
    for (const definition_t& definition : definitions) {
        names.insert(definition.name);
    }
    return names;
}

void definitions_check(const std::vector<definition_t>& definitions,
                       std::set<std::string> mentioned, diagnostics_t& diagnostics) {
    for (const definition_t& definition : definitions) {
        if (definition.form == value_form_t::expression) {
            for (const word_t& word : expression_words(definition.value)) {
                mentioned.insert(word.name);
            }
        }
    }
    for (const definition_t& definition : definitions) {
        if (mentioned.count(definition.name) == 0) {
            diagnostic_t diagnostic;
            diagnostic.code = "unused";
            diagnostic.message =
                "nothing reads the variable of the definition " + definition.name + "=" +
                definition.value +
                suggestion(definition.name, {mentioned.begin(), mentioned.end()});
            diagnostics.add(std::move(diagnostic));
        }
    }
}

void documents_check(const std::vector<std::string>& documents, const include_search_t& search,
                     const std::vector<definition_t>& definitions, diagnostics_t& diagnostics,
                     std::vector<std::string>& files) {
    const std::set<std::string> given = names_of(definitions);
    std::set<std::string> mentioned;
    bool complete = true;
    for (const std::string& document : documents) {
        survey_t survey(diagnostics);
        loader_t loader(survey, search, diagnostics, files);
        loader.load(document, nullptr);
        // The list grows while it is gone through.
        for (std::size_t i = 0; i < survey.includes().size(); ++i) {
            loader.include(*survey.includes()[i]);
        }
        complete = complete && loader.all_loaded();
        if (loader.all_loaded()) {
            survey.unset_names_report(given);
            survey.unused_definitions_report(file_shown(document));
        }
        mentioned.insert(survey.names_mentioned().begin(), survey.names_mentioned().end());
        diagnostics.hints_add(
            [&](const std::string& expression) { return survey.hint(expression, given); });
    }
    if (complete) {
        definitions_check(definitions, mentioned, diagnostics);
    }
}

} // namespace tool

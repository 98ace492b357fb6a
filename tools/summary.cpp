#include "summary.h"

#include <sstream>

#include "documents.h"

namespace tool {

namespace {

void places_list(std::ostream& out, const char* title, const survey_t::places_t& places) {
    out << title << ":\n";
    for (const auto& [name, place] : places) {
        out << "  " << name << "  " << place.file << ':' << place.line << ':' << place.column
            << '\n';
    }
}

} // namespace

std::string dry_run_text(const session_t& session) {
    std::ostringstream out;
    out << "files:\n";
    for (const std::string& file : session.files_get()) {
        out << "  " << file_shown(file) << '\n';
    }
    const survey_t& survey = session.survey_get();
    places_list(out, "definitions", survey.definitions());
    places_list(out, "variables read", survey.names_read());
    places_list(out, "variables set", survey.names_set());
    return out.str();
}

std::string variables_text(session_t& session) {
    std::ostringstream out;
    const ko::alg::algebra_t& algebra = session.algebra_get();
    for (const std::string& name : algebra.variable_names()) {
        out << name << " = " << algebra.get(name) << '\n';
    }
    return out.str();
}

} // namespace tool

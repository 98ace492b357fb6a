// Diagnostics for programs: a plain array, and SARIF for what shows findings in editors and
// reviews.

#include <ostream>
#include <set>

#include <nlohmann/json.hpp>

#include "diagnostic.h"
#include "kobase.h"

namespace tool {

namespace {

using json_t = nlohmann::ordered_json;

const char* severity_word(const diagnostic_t& diagnostic) {
    return diagnostic.severity == severity_t::error ? "error" : "warning";
}

/// What is not UTF-8 is shown by the replacement character.
void print(std::ostream& out, const json_t& json) {
    out << json.dump(2, ' ', false, json_t::error_handler_t::replace) << '\n';
}

void place_write(json_t& json, const ko::xpp::place_t& place) {
    json["file"] = place.file;
    json["line"] = place.line;
    json["column"] = place.column;
}

json_t trace_json(const std::vector<ko::xpp::place_t>& trace) {
    json_t list = json_t::array();
    for (const ko::xpp::place_t& place : trace) {
        json_t entry;
        place_write(entry, place);
        entry["directive"] = place.directive;
        entry["detail"] = place.detail;
        list.push_back(std::move(entry));
    }
    return list;
}

json_t location_json(const ko::xpp::place_t& place) {
    json_t physical;
    physical["artifactLocation"]["uri"] = place.file;
    if (place.line != 0) {
        physical["region"]["startLine"] = place.line;
    }
    if (place.column != 0) {
        physical["region"]["startColumn"] = place.column;
    }
    return {{"physicalLocation", std::move(physical)}};
}

json_t related_json(const std::vector<ko::xpp::place_t>& trace) {
    json_t list = json_t::array();
    for (const ko::xpp::place_t& place : trace) {
        json_t location = location_json(place);
        location["message"]["text"] = place_text(place);
        list.push_back(std::move(location));
    }
    return list;
}

json_t result_json(const diagnostic_t& diagnostic) {
    json_t result;
    result["ruleId"] = diagnostic.code;
    result["level"] = severity_word(diagnostic);
    result["message"]["text"] =
        diagnostic.expression.empty()
            ? diagnostic.message + diagnostic.hint
            : diagnostic.message + diagnostic.hint + ": " + diagnostic.expression;
    result["locations"] = json_t::array();
    if (!diagnostic.place.file.empty()) {
        result["locations"].push_back(location_json(diagnostic.place));
    }
    if (!diagnostic.trace.empty()) {
        result["relatedLocations"] = related_json(diagnostic.trace);
    }
    return result;
}

} // namespace

void diagnostics_print_json(std::ostream& out, const std::vector<diagnostic_t>& list) {
    json_t array = json_t::array();
    for (const diagnostic_t& diagnostic : list) {
        json_t entry;
        entry["severity"] = severity_word(diagnostic);
        entry["code"] = diagnostic.code;
        place_write(entry, diagnostic.place);
        entry["message"] = diagnostic.message + diagnostic.hint;
        if (!diagnostic.expression.empty()) {
            entry["expression"] = diagnostic.expression;
        }
        if (diagnostic.mark != diagnostic_t::no_mark) {
            entry["offset"] = diagnostic.mark;
        }
        entry["trace"] = trace_json(diagnostic.trace);
        if (diagnostic.trace_left_out != 0) {
            entry["trace_left_out"] = diagnostic.trace_left_out;
        }
        array.push_back(std::move(entry));
    }
    print(out, array);
}

void diagnostics_print_sarif(std::ostream& out, const std::vector<diagnostic_t>& list) {
    std::set<std::string> codes;
    json_t results = json_t::array();
    for (const diagnostic_t& diagnostic : list) {
        codes.insert(diagnostic.code);
        results.push_back(result_json(diagnostic));
    }
    json_t driver{{"name", "kobase-xpp"}, {"version", ko::version()}};
    driver["rules"] = json_t::array();
    for (const std::string& code : codes) {
        driver["rules"].push_back({{"id", code}});
    }
    json_t run;
    run["tool"]["driver"] = std::move(driver);
    run["results"] = std::move(results);
    json_t log{{"version", "2.1.0"}};
    log["runs"] = json_t::array();
    log["runs"].push_back(std::move(run));
    print(out, log);
}

} // namespace tool

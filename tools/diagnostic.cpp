#include "diagnostic.h"

#include <algorithm>
#include <ostream>
#include <tuple>

namespace tool {

namespace {

bool same_finding(const diagnostic_t& a, const diagnostic_t& b) {
    return a.place.line == b.place.line && a.place.column == b.place.column &&
           a.message == b.message && a.expression == b.expression && a.place.file == b.place.file;
}

void insert_once(std::vector<diagnostic_t>& all, diagnostic_t diagnostic) {
    const auto same = [&](const diagnostic_t& other) {
        return same_finding(diagnostic, other);
    };
    const auto found = std::find_if(all.begin(), all.end(), same);
    if (found == all.end()) {
        all.push_back(std::move(diagnostic));
    } else if (diagnostic.severity > found->severity) {
        found->severity = diagnostic.severity;
    }
}

/// Bytes that continue a character in UTF-8 take no column.
bool starts_character(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

/// "file:line:column" as far as it is known.
std::string head(const ko::xpp::place_t& place, const std::string& program) {
    std::string text = place.file;
    if (place.line != 0) {
        text += ":" + std::to_string(place.line);
        if (place.column != 0) {
            text += ":" + std::to_string(place.column);
        }
    }
    return text.empty() ? program : text;
}

} // namespace

void diagnostics_t::fatal_add(diagnostic_t diagnostic) {
    diagnostic.severity = severity_t::error;
    insert_once(all, std::move(diagnostic));
}

void diagnostics_t::add(diagnostic_t diagnostic) {
    if (demote) {
        diagnostic.severity = severity_t::warning;
    }
    if (diagnostic.severity == severity_t::error || !drop) {
        insert_once(all, std::move(diagnostic));
    }
}

void diagnostics_t::hints_add(
    const std::function<std::string(const std::string& expression)>& hint) {
    for (diagnostic_t& diagnostic : all) {
        if (!diagnostic.expression.empty() && diagnostic.hint.empty()) {
            diagnostic.hint = hint(diagnostic.expression);
        }
    }
}

bool diagnostics_t::failed() const {
    return std::any_of(all.begin(), all.end(), [](const diagnostic_t& diagnostic) {
        return diagnostic.severity == severity_t::error;
    });
}

const std::vector<diagnostic_t>& diagnostics_t::sorted(const std::vector<std::string>& files) {
    const auto key = [&](const diagnostic_t& diagnostic) {
        const auto file = std::find(files.begin(), files.end(), diagnostic.place.file);
        return std::make_tuple(file - files.begin(), diagnostic.place.line,
                               diagnostic.place.column);
    };
    std::stable_sort(all.begin(), all.end(), [&](const diagnostic_t& a, const diagnostic_t& b) {
        return key(a) < key(b);
    });
    return all;
}

std::string marked_text(const std::string& expression, std::size_t mark) {
    std::string line = expression;
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < 0x20; }, ' ');
    std::string text = "    " + line + "\n";
    if (mark <= line.size()) {
        const auto end = line.begin() + static_cast<std::ptrdiff_t>(mark);
        const auto columns = std::count_if(line.begin(), end, starts_character);
        text += "    " + std::string(static_cast<std::size_t>(columns), ' ') + "^\n";
    }
    return text;
}

std::string place_text(const ko::xpp::place_t& place) {
    std::string text = "<" + place.directive + ">";
    return place.detail.empty() ? text : text + " " + place.detail;
}

void diagnostics_print(std::ostream& out, const std::vector<diagnostic_t>& list,
                       const std::string& program, bool colours) {
    const auto paint = [&](const char* code) {
        return colours ? code : "";
    };
    for (const diagnostic_t& diagnostic : list) {
        const bool error = diagnostic.severity == severity_t::error;
        out << paint("\033[1m") << head(diagnostic.place, program) << ": "
            << paint(error ? "\033[31m" : "\033[35m") << (error ? "error: " : "warning: ")
            << paint("\033[0m") << diagnostic.message << diagnostic.hint << '\n';
        if (diagnostic.expression.find_first_not_of(" \t\r\n") != std::string::npos) {
            out << marked_text(diagnostic.expression, diagnostic.mark);
        }
        const char* word = "in";
        for (const ko::xpp::place_t& place : diagnostic.trace) {
            out << "  " << word << ' ' << head(place, program) << ": " << place_text(place)
                << '\n';
            word = "from";
        }
    }
}

} // namespace tool

#include "diagnostic.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <tuple>

namespace tool {

namespace {

/// What tells one diagnostic from others.
std::string key_of(const diagnostic_t& diagnostic) {
    const ko::xpp::place_t& place = diagnostic.place;
    const char separator = '\0';
    return place.file + separator + std::to_string(place.line) + separator +
           std::to_string(place.column) + separator + diagnostic.message + separator +
           diagnostic.expression;
}

/// Expressions for which a name that was meant is looked for.
constexpr std::size_t hints_max = 100;

/// Lines of a trace that are shown.
constexpr std::size_t trace_shown_max = 20;

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

void trace_print(std::ostream& out, const diagnostic_t& diagnostic, const std::string& program) {
    const std::size_t count = std::min(diagnostic.trace.size(), trace_shown_max);
    for (std::size_t i = 0; i < count; ++i) {
        const ko::xpp::place_t& place = diagnostic.trace[i];
        out << (i == 0 ? "  in " : "  from ") << head(place, program) << ": " << place_text(place)
            << '\n';
    }
    const std::size_t more = diagnostic.trace.size() - count + diagnostic.trace_left_out;
    if (more != 0) {
        out << "  and from " << more << " more\n";
    }
}

} // namespace

void diagnostics_t::keep(diagnostic_t diagnostic) {
    error_found = error_found || diagnostic.severity == severity_t::error;
    if (is_full()) {
        left_out = true;
    } else if (keys.insert(key_of(diagnostic)).second) {
        all.push_back(std::move(diagnostic));
    }
}

void diagnostics_t::fatal_add(diagnostic_t diagnostic) {
    diagnostic.severity = severity_t::error;
    keep(std::move(diagnostic));
}

void diagnostics_t::add(diagnostic_t diagnostic) {
    if (demote) {
        diagnostic.severity = severity_t::warning;
    }
    if (diagnostic.severity == severity_t::error || !drop) {
        keep(std::move(diagnostic));
    }
}

void diagnostics_t::hints_add(
    const std::function<std::string(const std::string& expression)>& hint) {
    std::size_t count = 0;
    for (diagnostic_t& diagnostic : all) {
        if (!diagnostic.expression.empty() && diagnostic.hint.empty() && count < hints_max) {
            diagnostic.hint = hint(diagnostic.expression);
            ++count;
        }
    }
}

const std::vector<diagnostic_t>& diagnostics_t::sorted(const std::vector<std::string>& files) {
    std::map<std::string, std::size_t> ranks;
    for (const std::string& file : files) {
        ranks.emplace(file, ranks.size());
    }
    const auto key = [&](const diagnostic_t& diagnostic) {
        const auto rank = ranks.find(diagnostic.place.file);
        return std::make_tuple(rank == ranks.end() ? ranks.size() : rank->second,
                               diagnostic.place.line, diagnostic.place.column);
    };
    std::stable_sort(all.begin(), all.end(), [&](const diagnostic_t& a, const diagnostic_t& b) {
        return key(a) < key(b);
    });
    if (left_out) {
        diagnostic_t last;
        last.severity = severity_t::warning;
        last.code = "limit";
        last.message = "there is more; no more than " + std::to_string(kept_max) + " are shown";
        all.push_back(std::move(last));
        left_out = false;
    }
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
        trace_print(out, diagnostic, program);
    }
}

} // namespace tool

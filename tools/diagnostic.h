/// @file
/// What the preprocessor tool has to say about documents, and the forms in which it says it.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "xml_preprocessor/xml_preprocessor.h"

namespace tool {

enum class severity_t { warning, error };

/// One thing that is wrong with a document.
///
/// `code` is a stable word for its kind, one of those of docs/tools.md. Line and column count
/// from 1; 0 stands for unknown. The expression is the one that is at fault, if any, and `mark`
/// the byte in it where the token stands that was not understood. `trace` are the directives
/// around the place, innermost first.
struct diagnostic_t {
    static constexpr std::size_t no_mark = static_cast<std::size_t>(-1);

    severity_t severity = severity_t::error;
    std::string code;
    ko::xpp::place_t place;
    std::string message;
    std::string expression;
    std::size_t mark = no_mark;
    std::string hint; ///< what may be meant, to be shown behind the message
    std::vector<ko::xpp::place_t> trace;
    std::size_t trace_left_out = 0; ///< places that stand outside of those of the trace
};

/// How diagnostics are written.
enum class diagnostic_form_t { text, json, sarif };

/// Gathers the diagnostics of a run and writes them, in the order of files, lines and columns.
///
/// A thing that is found again at the same place is kept once: what a run and the survey of its
/// documents both see. After a thousand the others are left out, and a last one says so.
class diagnostics_t {
public:
    /// @param lenient makes warnings of errors that do not end the run
    /// @param quiet drops warnings
    diagnostics_t(bool lenient, bool quiet) : demote(lenient), drop(quiet) {}

    /// Adds something that ends the run.
    void fatal_add(diagnostic_t diagnostic);
    /// Adds something that does not.
    void add(diagnostic_t diagnostic);

    /// Adds to the message of each failed expression that has none yet what `hint` says of it.
    void hints_add(const std::function<std::string(const std::string& expression)>& hint);

    /// Whether there is an error among them.
    bool failed() const { return error_found; }
    /// Whether there are so many that further ones are left out.
    bool is_full() const { return all.size() >= kept_max; }
    /// All of them, by file, line and column.
    /// @param files the order of the files; others come behind them
    const std::vector<diagnostic_t>& sorted(const std::vector<std::string>& files);

private:
    static constexpr std::size_t kept_max = 1000;

    void keep(diagnostic_t diagnostic);

    bool demote;
    bool drop;
    bool error_found = false;
    bool left_out = false;
    std::set<std::string> keys;
    std::vector<diagnostic_t> all;
};

/// Writes diagnostics as lines `file:line:column: error: message`, the expression with a mark
/// below the token, and the trace.
/// @param program stands for the place of what has none
/// @param colours whether the terminal shows escape sequences as colours
void diagnostics_print(std::ostream& out, const std::vector<diagnostic_t>& list,
                       const std::string& program, bool colours);
/// Writes them as a JSON array.
void diagnostics_print_json(std::ostream& out, const std::vector<diagnostic_t>& list);
/// Writes them as a SARIF 2.1.0 log.
void diagnostics_print_sarif(std::ostream& out, const std::vector<diagnostic_t>& list);

/// The expression on a line of its own, indented, and a mark below the byte at `mark`; characters
/// that would break the line are shown as blanks.
std::string marked_text(const std::string& expression, std::size_t mark);

/// What a trace says of a place: its directive with the detail.
std::string place_text(const ko::xpp::place_t& place);

} // namespace tool

#include "session.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "checker.h"
#include "documents.h"
#include "exception/exception.h"
#include "expression_failure.h"
#include "stop.h"

namespace tool {

namespace {

/// Where a resolver sends includes that are to be dropped: a document without children.
const char* const dropped_include = "(dropped)";

/// How many places of a trace are kept.
constexpr std::size_t trace_max = 100;

/// Takes `name="value"` apart.
bool detail_split(const std::string& detail, std::string& name, std::string& value) {
    const std::size_t equals = detail.find("=\"");
    if (equals == std::string::npos || detail.size() < equals + 3 || detail.back() != '"') {
        return false;
    }
    name = detail.substr(0, equals);
    value = detail.substr(equals + 2, detail.size() - equals - 3);
    return true;
}

/// The expression that failed at the innermost place of a trace, if one did.
bool failed_expression(const ko::xpp::place_t& place, std::string& attribute,
                       std::string& expression) {
    const directive_rule_t* rule = directive_find(place.directive);
    if (rule == nullptr) {
        return false;
    }
    if (rule->name == "specify") {
        attribute = "values";
        expression = place.detail;
        return expression.find(" = ") != std::string::npos;
    }
    if (!detail_split(place.detail, attribute, expression)) {
        return false;
    }
    const attribute_rule_t* known = attribute_find(*rule, attribute);
    return known != nullptr && known->kind == attribute_kind_t::expression;
}

/// The kind of a failure that is not one of an expression, by its message.
const char* failure_code(const std::string& message) {
    if (message.rfind("failed to load xml file:", 0) == 0) {
        return "file";
    }
    return message.find(" missing in element ") == std::string::npos ? "run" : "attribute";
}

bool same_place(const ko::xpp::place_t& a, const ko::xpp::place_t& b) {
    return a.file == b.file && a.line == b.line && a.column == b.column &&
           a.directive == b.directive;
}

} // namespace

session_t::session_t(session_options_t settings, diagnostics_t& out)
    : options(std::move(settings)), diagnostics(out), survey(out), preprocessor(output, &cache) {}

session_t::~session_t() = default;

void session_t::prepare() {
    ko::xpp::limits_t limits = preprocessor.limits_get();
    limits.elements = options.elements_max;
    limits.passes = options.passes_max;
    preprocessor.limits_set(limits);
    preprocessor.observer_set(this);
    if (options.includes) {
        preprocessor.resolver_set(include_search_t(options.directories));
    } else {
        includes_drop();
    }
    ko::alg::algebra_t& algebra = preprocessor.algebra_get();
    algebra.interrupt_set(options.stop);
    for (const definition_t& definition : options.definitions) {
        try {
            algebra.assign(definition.name, definition_value(algebra, definition));
        } catch (const ko::exception_t& e) {
            const failure_t failure = failure_locate(algebra, definition.value, e.what());
            diagnostic_t diagnostic;
            diagnostic.code = "expression";
            diagnostic.message = "definition of " + definition.name + ": " + failure.message;
            diagnostic.expression = failure.statement;
            diagnostic.mark = failure.mark;
            diagnostics.fatal_add(diagnostic);
        }
    }
}

void session_t::includes_drop() {
    auto nothing = std::make_unique<ko::lxml::document_t>(&cache.atom_table_get());
    nothing->root = nothing->element_create("nothing", ko::lxml::str_empty);
    cache.insert(dropped_include, nothing.get());
    nothing.release();
    preprocessor.resolver_set([](const std::string&, const ko::lxml::element_t&) {
        return std::string(dropped_include);
    });
}

void session_t::run() {
    prepare();
    if (diagnostics.failed() || !source_load()) {
        return;
    }
    const bool finished = process();
    documents_survey();
    const std::set<std::string> given = names_of(options.definitions);
    diagnostics.hints_add(
        [&](const std::string& expression) { return survey.hint(expression, given); });
    if (finished) {
        top_check();
        definitions_check(options.definitions, survey.names_mentioned(), diagnostics);
    }
}

bool session_t::source_load() {
    try {
        document_load(source, options.file);
        return true;
    } catch (const ko::exception_t& e) {
        diagnostics.fatal_add(load_diagnostic(e, options.file));
        return false;
    }
}

bool session_t::process() {
    const auto flags = options.includes ? ko::xpp::preprocessor_t::process_include
                                        : ko::xpp::preprocessor_t::flags_e{};
    try {
        output.root = preprocessor.process(source.root, flags);
        return true;
    } catch (const ko::exception_t& e) {
        failed(e);
        return false;
    }
}

void session_t::failed(const ko::exception_t& e) {
    const std::vector<ko::xpp::place_t> trace = preprocessor.trace_get();
    if (dynamic_cast<const ko::lxml::load_error_t*>(&e) != nullptr) {
        diagnostic_t diagnostic = load_diagnostic(e, options.file);
        std::transform(trace.begin(), trace.end(), std::back_inserter(diagnostic.trace),
                       place_shown);
        diagnostics.fatal_add(std::move(diagnostic));
        return;
    }
    const ko::xpp::place_t place =
        trace.empty() ? ko::xpp::place_t{options.file, 0, 0, "", ""} : trace.front();
    diagnostic_t diagnostic = diagnostic_at(place, failure_code(e.what()));
    diagnostic.message = time_is_up() ? "the time limit was exceeded" : e.what();
    std::string attribute;
    std::string expression;
    if (!time_is_up() && failed_expression(place, attribute, expression)) {
        expression_failed_add(std::move(diagnostic), attribute, expression, e.what(), true);
    } else {
        diagnostics.fatal_add(std::move(diagnostic));
    }
}

diagnostic_t session_t::diagnostic_at(const ko::xpp::place_t& place, const char* code) const {
    diagnostic_t diagnostic;
    diagnostic.code = code;
    diagnostic.place = place_shown(place);
    if (diagnostics.is_full()) {
        return diagnostic;
    }
    for (const ko::xpp::place_t& around : preprocessor.trace_get()) {
        const bool is_place_itself = diagnostic.trace.empty() && same_place(around, place);
        if (!is_place_itself && diagnostic.trace.size() < trace_max) {
            diagnostic.trace.push_back(place_shown(around));
        } else if (!is_place_itself) {
            ++diagnostic.trace_left_out;
        }
    }
    return diagnostic;
}

/// A place in a loop is told of once, and the places around it looked up once.
bool session_t::is_new(const ko::xpp::place_t& place, const std::string& text) {
    return told
        .insert(place.file + ':' + std::to_string(place.line) + ':' +
                std::to_string(place.column) + ':' + text)
        .second;
}

void session_t::expression_failed_add(diagnostic_t diagnostic, const std::string& attribute,
                                      const std::string& expression, const std::string& message,
                                      bool fatal) {
    failure_t failure{message, expression, diagnostic_t::no_mark};
    if (!diagnostics.is_full()) {
        failure = failure_locate(algebra_get(), expression, message);
    }
    diagnostic.code = "expression";
    diagnostic.message =
        expression_message(attribute, diagnostic.place.directive, failure.message);
    diagnostic.expression = failure.statement;
    diagnostic.mark = failure.mark;
    if (fatal) {
        diagnostics.fatal_add(std::move(diagnostic));
    } else {
        diagnostics.add(std::move(diagnostic));
    }
}

/// Ends a run that is to stop.
void session_t::stop_check() const {
    if (options.stop != nullptr && options.stop->load()) {
        throw ko::exception_t("interrupted");
    }
}

void session_t::expression_failed(const ko::xpp::place_t& place, const std::string& expression,
                                  const std::string& message) {
    stop_check(); // that may be why it failed
    if (!is_new(place, place.detail)) {
        return;
    }
    std::string attribute;
    std::string value;
    detail_split(place.detail, attribute, value);
    expression_failed_add(diagnostic_at(place, "expression"), attribute, expression, message,
                          false);
}

void session_t::directive_unknown(const ko::xpp::place_t& place, const std::string& name) {
    if (is_new(place, "directive")) {
        diagnostic_t diagnostic = diagnostic_at(place, "directive");
        diagnostic.message = directive_unknown_message(name);
        diagnostics.add(std::move(diagnostic));
    }
}

void session_t::text_dropped(const ko::xpp::place_t& place) {
    if (is_new(place, "text")) {
        diagnostic_t diagnostic = diagnostic_at(place, "text");
        diagnostic.message = text_dropped_message(place.directive);
        diagnostics.add(std::move(diagnostic));
    }
}

void session_t::pass_begun(const ko::lxml::element_t& /*loop*/) {
    stop_check();
}

void session_t::element_made(const ko::lxml::element_t& from,
                             const ko::lxml::element_t& made_element) {
    stop_check();
    if (!from.children.empty()) {
        parents.insert(&made_element);
    }
    if (made) {
        made(from, made_element, preprocessor.trace_get());
    }
}

std::vector<std::string> session_t::files_get() const {
    std::vector<std::string> files{options.file};
    for (const std::string& path : preprocessor.files_get()) {
        files.push_back(path);
    }
    return files;
}

void session_t::documents_survey() {
    survey.document_add(*source.root, false);
    for (const std::string& path : preprocessor.files_get()) {
        const ko::lxml::document_t* document = cache.get(path);
        if (document != nullptr && document->root != nullptr) {
            survey.document_add(*document->root, true);
        }
    }
}

void session_t::top_check() {
    std::string message;
    if (output.root == nullptr) {
        message = "nothing came out: the document has no top element";
    } else {
        for (const ko::lxml::element_t* element : output.elements) {
            if (element->children.size() > 1 && element->children.front() == output.root) {
                message = std::to_string(element->children.size()) +
                          " top elements came out: only the first is written";
            }
        }
    }
    if (!message.empty()) {
        diagnostic_t diagnostic;
        diagnostic.code = "top";
        diagnostic.place = place_of(*source.root);
        diagnostic.message = message;
        diagnostics.add(std::move(diagnostic));
    }
}

} // namespace tool

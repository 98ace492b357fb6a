#include "algebra/algebra_imp.h"

#include <utility>

#include "algebra/node.h"
#include "exception/exception.h"

namespace ko::alg {

void algebra_t::imp_t::fail_unusable(bool was_moved) {
    throw exception_t(std::string(was_moved ? "algebra_t -- the evaluator was moved from"
                                            : "algebra_t -- used by its own resolver or output"));
}

/// Copies what can fail first. The last that can is the assignment of the functions, which
/// happens as a whole or not at all; what has been copied is moved then.
void algebra_t::imp_t::copy(const imp_t& other) {
    if (this == &other) {
        return;
    }
    unit_ptr_t program_copy = unit_share(other.program.get());
    variables_t variables_copy = other.variables;
    resolver_t resolver_copy = other.resolver;
    output_t output_copy = other.output;
    const nesting_t::origin_ptr_t origin = other.nesting.origin_for_copy();
    functions = other.functions;
    nesting.origin_take(origin);
    program = std::move(program_copy);
    variables = std::move(variables_copy);
    macros = other.macros;
    resolver = std::move(resolver_copy);
    output = std::move(output_copy);
    budget.bounds_take(other.budget);
    family = other.family;
}

/// A program to compile into.
unit_t& algebra_t::imp_t::program_renew() {
    program_clear();
    program = spare == nullptr ? unit_make() : std::move(spare);
    return *program;
}

/// Keeps the memory of a program that nobody else has.
void algebra_t::imp_t::program_clear() {
    if (program != nullptr && program->pins == 0 && !program->is_shared) {
        program->clear();
        spare = std::move(program);
    }
    program.reset();
}

bool algebra_t::imp_t::parse(const std::string& text) {
    translator_t& translator = machine_get().translator_get();
    if (!translator.statement_get(text, &macros)) {
        return false;
    }
    unit_t& unit = program_renew();
    lexer_settings_t settings;
    settings.functions = &functions;
    settings.numeric_only = numeric_only;
    settings.budget = drawn == nullptr ? &budget : drawn;
    try {
        return translator.translate(settings, *unit.program, parse_error);
    } catch (...) {
        if (!unit.program->is_complete()) {
            program.reset();
        }
        throw;
    }
}

bool algebra_t::imp_t::parse(const std::string& text, list_t& tokens) {
    translator_t& translator = machine_get().translator_get();
    if (!translator.statement_get(text, &macros)) {
        return false;
    }
    const auto* const root =
        tokens.empty() ? nullptr : dynamic_cast<const node_t*>(tokens.front());
    if (root != nullptr && root->is_running()) {
        throw exception_t("algebra_t::parse() -- the list is being evaluated");
    }
    tokens.destroy();
    const auto syntax = std::make_shared<syntax_t>();
    lexer_settings_t settings;
    settings.functions = &functions;
    settings.numeric_only = numeric_only;
    settings.keeps_scripts = true;
    settings.budget = drawn == nullptr ? &budget : drawn;
    bool is_good = false;
    try {
        is_good = translator.parse(settings, *syntax, parse_error);
    } catch (...) {
        nodes_append(syntax, tokens);
        throw;
    }
    nodes_append(syntax, tokens);
    return is_good;
}

void algebra_t::imp_t::eval_and_assign(const std::string& name, const std::string& expression) {
    machine_get().assign(name, expression);
}

void algebra_t::imp_t::memory_copy(const imp_t& other) {
    variables.copy_values(other.variables);
    nesting.origin_take_unless_called(other.nesting);
}

} // namespace ko::alg

#include "algebra/algebra.h"

#include <memory>
#include <utility>

#include "algebra/algebra_imp.h"
#include "algebra/node.h"
#include "algebra/texts.h"
#include "exception/exception.h"

namespace ko::alg {

algebra_t::algebra_t() : imp(new imp_t(*this)) {}

algebra_t::algebra_t(const algebra_t& other) : imp(nullptr) {
    imp = new imp_t(*this, other.state());
}

algebra_t& algebra_t::operator=(const algebra_t& other) {
    const imp_t& source = other.state();
    if (imp == nullptr) {
        imp = new imp_t(*this, source);
    } else {
        state().copy(source);
    }
    return *this;
}

/// What is being evaluated with stays where it is: the evaluation would be without it.
algebra_t::algebra_t(algebra_t&& other) noexcept : imp(nullptr) {
    if (other.imp == nullptr || !other.imp->is_in_use()) {
        imp = std::exchange(other.imp, nullptr);
        if (imp != nullptr) {
            imp->owner = this;
            imp->numeric_only = false;
            imp->parse_error.clear();
        }
        return;
    }
    try {
        imp = new imp_t(*this, *other.imp);
    } catch (...) {
        // As if it had been moved from: each use says so.
    }
}

algebra_t::~algebra_t() {
    delete imp;
}

/// What the evaluator owns.
/// @throws ko::exception_t it must not be used
algebra_t::imp_t& algebra_t::state() const {
    return imp_t::of(*this);
}

bool algebra_t::parse(const std::string& text) {
    return state().parse(text);
}

bool algebra_t::parse(const char* text) {
    return parse(checked(text));
}

bool algebra_t::parse(const std::string& text, list_t& tokens) {
    return state().parse(text, tokens);
}

bool algebra_t::parse(const char* text, list_t& tokens) {
    return parse(checked(text), tokens);
}

result_t algebra_t::evaluate(const list_t& tokens) {
    return state().evaluate(tokens);
}

result_t algebra_t::evaluate(const std::string& text) {
    imp_t& own = state();
    own.program_clear();
    if (!own.parse(text)) {
        throw exception_t(own.parse_error);
    }
    return own.evaluate();
}

result_t algebra_t::evaluate(const char* text) {
    return evaluate(checked(text));
}

bool algebra_t::evaluate(const std::string& text, result_t& value, error_t& error) {
    imp_t& own = state();
    error_t failure;
    own.program_clear();
    try {
        const bool is_good = own.parse(text);
        failure.statement = own.machine_get().translator_get().statement_text_get();
        failure.offset = failure.statement.size();
        if (is_good) {
            value = own.evaluate();
            error = error_t();
            return true;
        }
        failure.message = own.parse_error;
        failure.offset = own.machine_get().translator_get().failure_offset_get();
    } catch (const exception_t& e) {
        failure.message = e.what();
    }
    error = std::move(failure);
    return false;
}

bool algebra_t::evaluate(const char* text, result_t& value, error_t& error) {
    return evaluate(checked(text), value, error);
}

result_t algebra_t::evaluate_safe(const std::string& text) {
    // The text may be the parse error, which the parse replaces.
    std::string own_text = text;
    imp_t& own = state();
    own.program_clear();
    try {
        return own.parse(own_text) ? own.evaluate() : result_t(own_text);
    } catch (const exception_t&) {
        own.line_write("Caught exception in expression : " + own_text);
        return own_text;
    }
}

result_t algebra_t::evaluate_safe(const char* text) {
    return evaluate_safe(checked(text));
}

void algebra_t::numeric_only_set(bool on) {
    state().numeric_only = on;
}

const std::string& algebra_t::parse_error_get() const {
    return state().parse_error;
}

names_t algebra_t::names_get(const list_t& tokens) const {
    static_cast<void>(state());
    names_t names;
    for (const token_t* const token : tokens) {
        if (const auto* const node = dynamic_cast<const node_t*>(token)) {
            node->names_get(names);
        }
    }
    return names;
}

void algebra_t::output_set(output_t output) {
    state().output = std::move(output);
}

void algebra_t::resolver_set(resolver_t resolver) {
    state().resolver = std::move(resolver);
}

void algebra_t::limits_set(const limits_t& limits) {
    state().budget.limits = limits;
}

limits_t algebra_t::limits_get() const {
    return state().budget.limits;
}

void algebra_t::interrupt_set(const std::atomic<bool>* flag) {
    state().budget.interrupt = flag;
}

bool algebra(const std::string& text, result_t& value, bool throw_errors) {
    algebra_t evaluator;
    if (!evaluator.parse(text)) {
        if (throw_errors) {
            throw exception_t(evaluator.parse_error_get());
        }
        return false;
    }
    try {
        value = evaluator.evaluate();
    } catch (const exception_t&) {
        if (throw_errors) {
            throw;
        }
        return false;
    }
    return true;
}

bool algebra(const std::string& text, float& value) {
    result_t result;
    if (!algebra(text, result, false)) {
        return false;
    }
    value = result.float_get();
    return true;
}

bool algebra(const char* text, result_t& value, bool throw_errors) {
    return algebra(checked(text), value, throw_errors);
}

bool algebra(const char* text, float& value) {
    return algebra(checked(text), value);
}

context_t& context_of(algebra_t& algebra) {
    return algebra_t::imp_t::of(algebra);
}

std::shared_ptr<algebra_t> evaluator_like(const context_t& source) {
    auto made = std::make_shared<algebra_t>();
    context_t& state = context_of(*made);
    state.variables = variables_t(*source.family);
    state.macros = source.macros;
    state.functions = source.functions;
    state.family = source.family;
    state.resolver = source.resolver;
    state.output = source.output;
    state.budget.bounds_take(source.budget);
    return made;
}

} // namespace ko::alg

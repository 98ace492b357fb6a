#include "algebra/algebra.h"

#include <memory>
#include <utility>

#include "algebra/algebra_imp.h"
#include "exception/exception.h"

namespace ko::alg {

algebra_t::algebra_t() : imp(new imp_t(*this)) {}

algebra_t::algebra_t(const algebra_t& other) : imp(nullptr) {
    auto made = std::make_unique<imp_t>(*this);
    made->copy(*other.imp);
    imp = made.release();
}

algebra_t& algebra_t::operator=(const algebra_t& other) {
    imp->copy(*other.imp);
    return *this;
}

algebra_t::~algebra_t() {
    delete imp;
}

bool algebra_t::parse(const std::string& text) {
    return imp->parse(text);
}

bool algebra_t::parse(const std::string& text, list_t& tokens) {
    return imp->parse(text, tokens);
}

result_t algebra_t::evaluate() {
    return imp->evaluate();
}

result_t algebra_t::evaluate(const list_t& tokens) {
    return imp->evaluate(tokens);
}

result_t algebra_t::evaluate(const std::string& text) {
    imp->program_clear();
    if (!imp->parse(text)) {
        throw exception_t(imp->parse_error);
    }
    return imp->evaluate();
}

result_t algebra_t::evaluate_safe(const std::string& text) {
    // The text may be the parse error, which the parse replaces.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::string own_text = text;
    imp->program_clear();
    try {
        return imp->parse(own_text) ? imp->evaluate() : result_t(own_text);
    } catch (const exception_t&) {
        imp->line_write("Caught exception in expression : " + own_text);
        return own_text;
    }
}

void algebra_t::numeric_only_set(bool on) {
    imp->numeric_only = on;
}

const std::string& algebra_t::parse_error_get() const {
    return imp->parse_error;
}

namespace {

/// The record of a host function of a fixed number of arguments.
host_record_t record_of(const std::string& name, int count) {
    host_record_t record;
    record.prototype.name = name;
    record.prototype.argument_count = count;
    record.count_min = count;
    record.count_max = count;
    return record;
}

} // namespace

void algebra_t::define(const std::string& name, function0_t function) {
    host_record_t record = record_of(name, 0);
    record.prototype.function0 = function;
    imp->functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function1_t function) {
    host_record_t record = record_of(name, 1);
    record.prototype.function1 = function;
    imp->functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function2_t function) {
    host_record_t record = record_of(name, 2);
    record.prototype.function2 = function;
    imp->functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function3_t function) {
    host_record_t record = record_of(name, 3);
    record.prototype.function3 = function;
    imp->functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function_list_t function, int count) {
    host_record_t record = record_of(name, count);
    record.prototype.function_list = function;
    imp->functions.host_define(std::move(record));
}

void algebra_t::limits_set(const limits_t& limits) {
    imp->budget.limits = limits;
}

limits_t algebra_t::limits_get() const {
    return imp->budget.limits;
}

void algebra_t::interrupt_set(const std::atomic<bool>* flag) {
    imp->budget.interrupt = flag;
}

void algebra_t::macro_define(const std::string& key, const std::string& value) {
    if (!imp->functions.script_define(key, value)) {
        imp->macros.define(key, value);
    }
}

void algebra_t::macro_undefine(const std::string& key) {
    imp->macros.undefine(key);
}

void algebra_t::macro_decode(const std::string& in, std::string& out) {
    std::string text = in;
    imp->macros.substitute(text);
    out.swap(text);
}

void algebra_t::macros_get(std::list<std::pair<std::string, std::string>>& out) const {
    std::list<std::pair<std::string, std::string>> definitions;
    imp->macros.definitions_get(definitions);
    imp->functions.script_definitions_get(definitions);
    out.splice(out.end(), definitions);
}

void algebra_t::memory_push() {
    imp->variables.push();
}

void algebra_t::memory_pop() {
    imp->variables.pop();
}

void algebra_t::memory_pop_diff() {
    imp->variables.pop_diff();
}

void algebra_t::memory_copy(const algebra_t& other) {
    imp->memory_copy(*other.imp);
}

void algebra_t::assign(const std::string& name, int value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, long value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, float value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, double value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const std::string& value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const char* value) {
    imp->variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const result_t& value) {
    imp->variables.assign(name, value);
}

void algebra_t::eval_and_assign(const std::string& name, const std::string& expression) {
    imp->eval_and_assign(name, expression);
}

result_t algebra_t::get(const std::string& name) const {
    const result_t* const value = imp->variables.find(name);
    if (value == nullptr) {
        throw exception_t("get--cound not find variable '%s'\n", name.c_str());
    }
    return *value;
}

bool algebra_t::find(const std::string& name) const {
    return imp->variables.find(name) != nullptr;
}

result_t& algebra_t::operator[](const std::string& name) {
    return imp->variables[name];
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

context_t& context_of(algebra_t& algebra) {
    return algebra_t::imp_t::of(algebra);
}

std::shared_ptr<algebra_t> evaluator_like(const context_t& source) {
    auto made = std::make_shared<algebra_t>();
    context_t& state = context_of(*made);
    state.macros = source.macros;
    state.functions = source.functions;
    state.resolver = source.resolver;
    state.output = source.output;
    state.budget.bounds_take(source.budget);
    return made;
}

} // namespace ko::alg

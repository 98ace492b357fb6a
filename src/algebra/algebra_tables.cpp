// The evaluator's functions, macros and variables.
#include <algorithm>
#include <utility>

#include "algebra/algebra_imp.h"
#include "algebra/arm_arithmetic.h"
#include "algebra/texts.h"
#include "exception/exception.h"

namespace ko::alg {

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
    state().functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function1_t function) {
    host_record_t record = record_of(name, 1);
    record.prototype.function1 = function;
    state().functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function2_t function) {
    host_record_t record = record_of(name, 2);
    record.prototype.function2 = function;
    state().functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function3_t function) {
    host_record_t record = record_of(name, 3);
    record.prototype.function3 = function;
    state().functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, function_list_t function, int count) {
    host_record_t record = record_of(name, count);
    record.prototype.function_list = function;
    state().functions.host_define(std::move(record));
}

void algebra_t::define(const std::string& name, host_function_t function, unsigned count_min,
                       unsigned count_max) {
    if (count_min > count_max || count_max > static_cast<unsigned>(arm::int_max)) {
        throw exception_t("algebra_t::define() -- %u to %u arguments for function '%s'",
                          count_min, count_max, name.c_str());
    }
    host_record_t record = record_of(name, static_cast<int>(count_max));
    record.count_min = static_cast<int>(count_min);
    record.closure = std::move(function);
    state().functions.host_define(std::move(record));
}

bool algebra_t::undefine(const std::string& name) {
    return state().functions.host_undefine(name);
}

std::vector<std::string> algebra_t::function_names() const {
    std::vector<std::string> names;
    const function_table_t& functions = state().functions;
    functions.host_names_get(names);
    functions.script_names_get(names);
    builtin_names_get(names);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

void algebra_t::macro_define(const std::string& key, const std::string& value) {
    imp_t& own = state();
    if (!own.functions.script_define(key, value)) {
        own.macros.define(key, value);
    }
}

void algebra_t::macro_define(const std::string& key, const char* value) {
    macro_define(key, checked(value));
}

void algebra_t::macro_define(const char* key, const char* value) {
    macro_define(checked(key), checked(value));
}

void algebra_t::macro_undefine(const std::string& key) {
    state().macros.undefine(key);
}

void algebra_t::macro_decode(const std::string& in, std::string& out) {
    std::string text = in;
    state().macros.substitute(text);
    out.swap(text);
}

void algebra_t::macros_get(std::list<std::pair<std::string, std::string>>& out) const {
    std::list<std::pair<std::string, std::string>> definitions;
    state().macros.definitions_get(definitions);
    state().functions.script_definitions_get(definitions);
    out.splice(out.end(), definitions);
}

void algebra_t::macros_clear() {
    imp_t& own = state();
    own.macros.clear();
    own.functions.scripts_clear();
}

void algebra_t::memory_push() {
    state().variables.push();
}

void algebra_t::memory_pop() {
    state().variables.pop();
}

void algebra_t::memory_pop_diff() {
    state().variables.pop_diff();
}

void algebra_t::memory_copy(const algebra_t& other) {
    state().memory_copy(other.state());
}

void algebra_t::assign(const std::string& name, int value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, long value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, float value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, double value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, unsigned value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, unsigned long value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, long long value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, unsigned long long value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const std::string& value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const char* value) {
    state().variables.assign(name, value);
}

void algebra_t::assign(const std::string& name, const result_t& value) {
    state().variables.assign(name, value);
}

void algebra_t::eval_and_assign(const std::string& name, const std::string& expression) {
    state().eval_and_assign(name, expression);
}

void algebra_t::eval_and_assign(const std::string& name, const char* expression) {
    eval_and_assign(name, checked(expression));
}

result_t algebra_t::get(const std::string& name) const {
    const result_t* const value = state().variables.find(name);
    if (value == nullptr) {
        throw exception_t("get--cound not find variable '%s'\n", name.c_str());
    }
    return *value;
}

bool algebra_t::find(const std::string& name) const {
    return state().variables.find(name) != nullptr;
}

bool algebra_t::erase(const std::string& name) {
    return state().variables.erase(name);
}

std::vector<std::string> algebra_t::variable_names() const {
    std::vector<std::string> names;
    state().variables.names_get(names);
    return names;
}

result_t& algebra_t::operator[](const std::string& name) {
    return state().variables[name];
}

} // namespace ko::alg

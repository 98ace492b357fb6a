#include "algebra/function_table.h"

#include "algebra/builtin_functions.h"

namespace ko::alg {

namespace {

/// The head of a script function as a macro key.
std::string head_of(const function_t& function) {
    std::string head = function.name + "( ";
    const char* separator = "";
    for (const std::string& parameter : function.parameters) {
        head += separator + parameter;
        separator = ", ";
    }
    return head + " )";
}

} // namespace

void script_table_t::define(const function_t& function) {
    function_t copy = function;
    std::swap(functions.write()[copy.name], copy);
}

const function_t* script_table_t::find(const std::string& name) const {
    const auto* const table = functions.get();
    if (table == nullptr) {
        return nullptr;
    }
    const auto found = table->find(name);
    return found == table->end() ? nullptr : &found->second;
}

function_table_t::function_table_t() : scripts(std::make_shared<script_table_t>()) {}

function_table_t::function_table_t(const function_table_t& other)
    : hosts(other.hosts), script_list(other.script_list),
      scripts(std::make_shared<script_table_t>(*other.scripts)) {}

/// The calls parsed with this table keep it and find what the assignment brings.
function_table_t& function_table_t::operator=(const function_table_t& other) {
    hosts = other.hosts;
    script_list = other.script_list;
    *scripts = *other.scripts;
    return *this;
}

function_table_t::~function_table_t() = default;

void function_table_t::host_define(const function_prototype_t& function) {
    hosts.write().insert_or_assign(function.name, function);
}

bool function_table_t::external_find(const std::string& name,
                                     function_prototype_t& function) const {
    if (hosts.get() != nullptr) {
        const auto found = hosts.get()->find(name);
        if (found != hosts.get()->end()) {
            function = found->second;
            return true;
        }
    }
    return builtin_find(name, function);
}

bool function_table_t::script_define(const std::string& key, const std::string& body) {
    function_t function;
    std::string error;
    if (!function.parse(key, body, error)) {
        return false;
    }
    std::list<std::pair<std::string, function_t>> addition{{function.name, function}};
    auto& list = script_list.write();
    scripts->define(function);
    list.splice(list.end(), addition);
    return true;
}

void function_table_t::script_definitions_get(macros_t& out) const {
    if (script_list.get() == nullptr) {
        return;
    }
    macros_t definitions;
    for (const auto& [name, function] : *script_list.get()) {
        definitions.emplace_back(head_of(function), function.body);
    }
    out.splice(out.end(), definitions);
}

} // namespace ko::alg

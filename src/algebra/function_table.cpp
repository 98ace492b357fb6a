#include "algebra/function_table.h"

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
    changed();
}

/// What a call has found here is good no longer.
void script_table_t::changed() noexcept {
    identity = family->number_make();
    ++revision;
}

// A revision is the object's own and goes on.
// cppcheck-suppress operatorEqVarError
script_table_t& script_table_t::operator=(const script_table_t& other) {
    functions = other.functions;
    family = other.family;
    identity = other.identity;
    ++revision;
    return *this;
}

const function_t* script_table_t::find(std::string_view name) const {
    const auto* const table = functions.get();
    if (table == nullptr) {
        return nullptr;
    }
    const auto found = table->find(name);
    return found == table->end() ? nullptr : &found->second;
}

void script_table_t::clear() {
    functions = {};
    changed();
}

void script_table_t::names_get(std::vector<std::string>& out) const {
    if (functions.get() != nullptr) {
        for (const auto& [name, function] : *functions.get()) {
            out.push_back(name);
        }
    }
}

function_table_t::function_table_t(const function_table_t& other)
    : hosts(other.hosts), script_list(other.script_list),
      scripts(other.scripts == nullptr ? nullptr
                                       : std::make_shared<script_table_t>(*other.scripts)),
      family(other.family), identity(other.identity) {}

/// The calls parsed with this table keep it and find what the assignment brings. A failure
/// leaves this object as it was.
function_table_t& function_table_t::operator=(const function_table_t& other) {
    if (other.scripts != nullptr) {
        *scripts_get() = *other.scripts;
    } else if (scripts != nullptr) {
        *scripts = script_table_t(*other.family);
    }
    hosts = other.hosts;
    script_list = other.script_list;
    family = other.family;
    identity = other.identity;
    return *this;
}

function_table_t::~function_table_t() = default;

const std::shared_ptr<script_table_t>& function_table_t::scripts_make() const {
    return scripts = std::make_shared<script_table_t>(*family);
}

void function_table_t::host_define(host_record_t function) {
    const auto record = std::make_shared<const host_record_t>(std::move(function));
    hosts.write().insert_or_assign(record->prototype.name, record);
    identity = family->number_make();
}

bool function_table_t::host_undefine(const std::string& name) {
    if (host_find(name) == nullptr) {
        return false;
    }
    hosts.write().erase(name);
    identity = family->number_make();
    return true;
}

std::shared_ptr<const host_record_t> function_table_t::host_find(std::string_view name) const {
    if (hosts.get() == nullptr) {
        return nullptr;
    }
    const auto found = hosts.get()->find(name);
    return found == hosts.get()->end() ? nullptr : found->second;
}

void function_table_t::script_names_get(std::vector<std::string>& out) const {
    if (scripts != nullptr) {
        scripts->names_get(out);
    }
}

void function_table_t::host_names_get(std::vector<std::string>& out) const {
    if (hosts.get() != nullptr) {
        for (const auto& [name, function] : *hosts.get()) {
            out.push_back(name);
        }
    }
}

bool function_table_t::script_define(const std::string& key, const std::string& body) {
    function_t function;
    std::string error;
    if (!function.parse(key, body, error)) {
        return false;
    }
    std::list<std::pair<std::string, function_t>> addition{{function.name, function}};
    auto& list = script_list.write();
    scripts_get()->define(function);
    list.splice(list.end(), addition);
    return true;
}

void function_table_t::scripts_clear() {
    script_list = {};
    if (scripts != nullptr) {
        scripts->clear();
    }
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

#include "xml_preprocessor/preprocessor_imp.h"

#include <utility>

#include "exception/exception.h"
#include "xml_preprocessor/block/block_stack.h"

namespace ko::xpp {

/// What belongs to one call of `process`. A call that a plug-in makes on the preprocessor that
/// called it thus leaves the outer one's untouched.
class source_scope_t {
public:
    source_scope_t(preprocessor_t::imp_t& state, int flags, keywords_ptr_t known,
                   const lxml::atom_table_t* atoms)
        : imp(state), outer_flags(std::exchange(imp.flags, flags)),
          outer_known(std::exchange(imp.known, std::move(known))),
          outer_atoms(imp.includes.atoms_exchange({atoms, nullptr})) {}
    source_scope_t(const source_scope_t&) = delete;
    source_scope_t& operator=(const source_scope_t&) = delete;
    ~source_scope_t() {
        imp.includes.atoms_exchange(outer_atoms);
        imp.known = std::move(outer_known);
        imp.flags = outer_flags;
    }

private:
    preprocessor_t::imp_t& imp;
    int outer_flags;
    keywords_ptr_t outer_known;
    source_atoms_t outer_atoms;
};

preprocessor_t::imp_t::imp_t(lxml::document_t& output, file_cache_t* cache)
    : includes(cache), document(output), namespaces{default_xpp_uri, default_xpr_uri},
      has_cache(cache != nullptr) {
    if (cache != nullptr) {
        known = std::make_shared<keywords_t>(&cache->atom_table_get(), namespaces);
    }
}

preprocessor_t::imp_t::~imp_t() {
    for (auto& entry : plugins) {
        const bool registered_before = owned_plugins.erase(entry.second) == 0;
        if (registered_before) {
            entry.second = nullptr;
        }
    }
}

lxml::element_t* preprocessor_t::imp_t::process(lxml::element_t& source, flags_e requested) {
    const source_scope_t scope(
        *this, requested,
        has_cache ? known : std::make_shared<keywords_t>(source.atoms, namespaces), source.atoms);
    lxml::element_t* top = document.element_create("temporary", lxml::str_empty);
    block_stack_t(*this).run(source, *top, keywords_for(source, known));
    return top->children.empty() ? nullptr : top->children.front();
}

void preprocessor_t::imp_t::namespaces_set(const std::string& xpp, const std::string& xpr) {
    namespaces_t next{xpp, xpr, namespaces.changes + 1};
    std::swap(namespaces, next);
    if (known != nullptr) {
        known->get();
    }
}

void preprocessor_t::imp_t::plugin_add(const std::string& name, plugin_t* plugin) {
    owned_plugins.insert(plugin);
    plugins[name] = plugin;
}

void preprocessor_t::imp_t::evaluate_void(const std::string& expression) {
    algebra.evaluate(expression);
}

bool preprocessor_t::imp_t::evaluate_bool(const std::string& expression) {
    return evaluate_int(expression) != 0;
}

int preprocessor_t::imp_t::evaluate_int(const std::string& expression) {
    return algebra.evaluate(expression).int_get();
}

std::string preprocessor_t::imp_t::evaluate_string(const std::string& expression) {
    return algebra.evaluate(expression).string_get(false, 0);
}

std::string preprocessor_t::imp_t::evaluate_bstr(const std::string& expression) {
    return algebra.evaluate_safe(expression).string_get(false, 0);
}

std::string preprocessor_t::imp_t::value_of(const lxml::attribute_t& attribute,
                                            const string_table_t& names) {
    return attribute.ns == names.xpr_ns ? evaluate_bstr(attribute.value) : attribute.value;
}

keywords_ptr_t preprocessor_t::imp_t::keywords_for(const lxml::element_t& element,
                                                   const keywords_ptr_t& nearest) const {
    if (nearest->is_of(element)) {
        return nearest;
    }
    if (known->is_of(element)) {
        return known;
    }
    return std::make_shared<keywords_t>(element.atoms, namespaces);
}

} // namespace ko::xpp

#include "xml_preprocessor/state.h"

#include <utility>

namespace ko::xpp {

state_t::state_t(lxml::document_t& output, file_cache_t* cache, const namespaces_t& names)
    : includes(cache), document(output), namespaces(names) {
    if (cache != nullptr) {
        cache_keywords = std::make_shared<keywords_t>(&cache->atom_table_get(), namespaces);
    }
}

state_t::~state_t() {
    for (auto& entry : plugins) {
        const bool registered_before = owned_plugins.erase(entry.second) == 0;
        if (registered_before) {
            entry.second = nullptr;
        }
    }
}

void state_t::namespaces_set(const std::string& xpp, const std::string& xpr) {
    namespaces_t next{xpp, xpr, namespaces.changes + 1};
    std::swap(namespaces, next);
    if (cache_keywords != nullptr) {
        cache_keywords->get();
    }
}

void state_t::plugin_add(const std::string& name, plugin_t* plugin) {
    owned_plugins.insert(plugin);
    plugins[name] = plugin;
}

} // namespace ko::xpp

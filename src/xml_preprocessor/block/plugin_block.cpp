#include "xml_preprocessor/block/plugin_block.h"

#include "exception/exception.h"
#include "xml_preprocessor/limits.h"

namespace ko::xpp {

plugin_block_t::plugin_block_t(preprocessor_t::imp_t& state, lxml::element_t& source,
                               lxml::element_t& parent, const keywords_ptr_t& source_keywords)
    : block_t(state, source, parent, source_keywords), level(state.plugin_depth) {}

bool plugin_block_t::start() {
    const std::string& name = attribute_text(names().name);
    const auto plugin = imp.plugins.find(name);
    if (plugin == imp.plugins.end()) {
        throw exception_t("plugin name not defined: " + name);
    }
    level.check(plugin_depth_max, "plugin", name);
    lxml::element_t* generated = plugin->second->generate(&element);
    if (generated == nullptr) {
        return false;
    }
    body_set(*generated);
    return true;
}

} // namespace ko::xpp

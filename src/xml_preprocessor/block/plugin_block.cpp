#include "xml_preprocessor/block/plugin_block.h"

#include "exception/exception.h"
#include "xml_preprocessor/limits.h"

namespace ko::xpp {

namespace {

/// Whether `out`, an element that is being filled, is `element` or hangs below it. An element
/// that is being filled is the last child of its parent, so that the way to it is no longer than
/// what would be processed.
bool is_filled(const lxml::element_t& element, const lxml::element_t& out) {
    const lxml::element_t* last = &element;
    while (last != &out && !last->children.empty()) {
        last = last->children.back();
    }
    return last == &out;
}

} // namespace

plugin_block_t::plugin_block_t(preprocessor_t::imp_t& state, lxml::element_t& source,
                               lxml::element_t& parent, const keywords_ptr_t& source_keywords)
    : block_t(state, source, parent, source_keywords), level(state.plugin_depth) {}

bool plugin_block_t::start() {
    // A copy, since the plug-in may free the directive.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::string name = attribute_text(names().name);
    const auto plugin = imp.plugins.find(name);
    if (plugin == imp.plugins.end()) {
        throw exception_t("plugin name not defined: " + name);
    }
    level.check(plugin_depth_max, "plugin", name);
    lxml::element_t* generated = plugin->second->generate(&element);
    if (generated == nullptr) {
        return false;
    }
    if (generated->document == out->document && is_filled(*generated, *out)) {
        throw exception_t("plugin generated what is being filled: " + name);
    }
    body_set(*generated);
    return true;
}

} // namespace ko::xpp

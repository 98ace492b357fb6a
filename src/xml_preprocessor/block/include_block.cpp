#include "xml_preprocessor/block/include_block.h"

#include "xml_preprocessor/attributes.h"
#include "xml_preprocessor/limits.h"

namespace ko::xpp {

namespace {

/// The path up to and including its last "/"; empty without one.
std::string directory_of(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

} // namespace

include_block_t::include_block_t(preprocessor_t::imp_t& state, lxml::element_t& source,
                                 lxml::element_t& parent, const keywords_ptr_t& source_keywords)
    : block_t(state, source, parent, source_keywords), level(state.include_depth) {}

bool include_block_t::start() {
    const std::string& file = attribute_text(names().file);
    level.check(include_depth_max, "include", file);
    body_set(imp.includes.load(
        {file, directory_of(element.document->file_name), search_path_wanted()}));
    return true;
}

bool include_block_t::search_path_wanted() const {
    const lxml::attribute_t* wanted = attribute_find(element, names().searchpath);
    return wanted != nullptr ? wanted->value == "true" : imp.includes.search_path_default;
}

} // namespace ko::xpp

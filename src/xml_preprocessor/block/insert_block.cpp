#include "xml_preprocessor/block/insert_block.h"

#include "exception/exception.h"
#include "xml_preprocessor/limits.h"

namespace ko::xpp {

insert_block_t::insert_block_t(preprocessor_t::imp_t& state, lxml::element_t& source,
                               lxml::element_t& parent, const keywords_ptr_t& source_keywords)
    : block_t(state, source, parent, source_keywords), level(state.insert_depth) {}

bool insert_block_t::start() {
    const std::string name = attribute_value(names().name);
    const auto definition = imp.defines.find(name);
    if (definition == imp.defines.end()) {
        throw exception_t("insert name not defined: " + name);
    }
    level.check(insert_depth_max, "insert", name);
    body_set(*definition->second);
    return true;
}

} // namespace ko::xpp

#include "xml_preprocessor/block/for_block.h"

namespace ko::xpp {

bool for_block_t::start() {
    const std::string& initialize = attribute_text(names().initialize);
    condition = attribute_text(names().condition);
    update = attribute_text(names().update);
    imp.evaluate_void(initialize);
    return imp.evaluate_bool(condition);
}

bool for_block_t::again() {
    imp.evaluate_void(update);
    return imp.evaluate_bool(condition);
}

} // namespace ko::xpp

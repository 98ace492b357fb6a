#include "xml_preprocessor/block/if_block.h"

namespace ko::xpp {

bool if_block_t::start() {
    return imp.evaluate_bool(attribute_text(names().condition));
}

} // namespace ko::xpp

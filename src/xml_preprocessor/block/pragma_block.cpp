#include "xml_preprocessor/block/pragma_block.h"

#include "xml_preprocessor/attributes.h"

namespace ko::xpp {

pragma_block_t::pragma_block_t(preprocessor_t::imp_t& state, lxml::element_t& source,
                               lxml::element_t& parent, const keywords_ptr_t& source_keywords)
    : block_t(state, source, parent, source_keywords), saved_flags(state.flags) {}

pragma_block_t::~pragma_block_t() {
    imp.flags = saved_flags;
}

bool pragma_block_t::start() {
    flag_read("include_comments", preprocessor_t::include_comments);
    flag_read("process_include", preprocessor_t::process_include);
    return true;
}

void pragma_block_t::flag_read(const char* name, int bit) {
    const bool on = attribute_true(element, element.atoms->find(name));
    imp.flags = on ? imp.flags | bit : imp.flags & ~bit;
}

} // namespace ko::xpp

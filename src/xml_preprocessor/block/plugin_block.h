#pragma once

#include "xml_preprocessor/block/block.h"
#include "xml_preprocessor/nesting.h"

namespace ko::xpp {

/// "plugin": one pass over the children of what a plug-in generates.
class plugin_block_t : public block_t {
public:
    plugin_block_t(preprocessor_t::imp_t& state, ko::lxml::element_t& source,
                   ko::lxml::element_t& parent, const keywords_ptr_t& source_keywords);
    bool start() override;

private:
    nesting_t level;
};

} // namespace ko::xpp

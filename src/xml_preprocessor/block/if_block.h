#pragma once

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "if": one pass when the condition holds.
class if_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;
};

} // namespace ko::xpp

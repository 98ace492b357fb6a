#pragma once

#include <string>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "repeat": a pass for each integer of a range.
class repeat_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;
    bool again() override;

private:
    std::string index;
    int value = 0; // of the pass; counted apart from the variable, which the children may change
    int last = 0;
};

} // namespace ko::xpp

#pragma once

#include <string>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "for": a pass while the condition holds.
class for_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;
    bool again() override;

private:
    std::string condition;
    std::string update;
};

} // namespace ko::xpp

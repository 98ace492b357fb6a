#pragma once

#include <string>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "switch": one pass over the children of the branch that is chosen.
class switch_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;

private:
    bool chosen(const ko::lxml::element_t& branch, const std::string& value) const;
};

} // namespace ko::xpp

#pragma once

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// An element that is no directive: it is copied and its children are processed into the copy.
class element_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;

private:
    void attributes_copy(ko::lxml::element_t& copy) const;
};

} // namespace ko::xpp

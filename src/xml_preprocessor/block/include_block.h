#pragma once

#include "xml_preprocessor/block/block.h"
#include "xml_preprocessor/nesting.h"

namespace ko::xpp {

/// "include": one pass over the children of the root of a file.
class include_block_t : public block_t {
public:
    include_block_t(preprocessor_t::imp_t& state, ko::lxml::element_t& source,
                    ko::lxml::element_t& parent, const keywords_ptr_t& source_keywords);
    bool start() override;

private:
    bool search_path_wanted() const;

    nesting_t level;
};

} // namespace ko::xpp

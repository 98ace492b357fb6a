#pragma once

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "pragma": one pass under other flags. The destructor restores the flags.
class pragma_block_t : public block_t {
public:
    pragma_block_t(preprocessor_t::imp_t& state, ko::lxml::element_t& source,
                   ko::lxml::element_t& parent, const keywords_ptr_t& source_keywords);
    ~pragma_block_t() override;
    bool start() override;

private:
    void flag_read(const char* name, int bit);

    int saved_flags;
};

} // namespace ko::xpp

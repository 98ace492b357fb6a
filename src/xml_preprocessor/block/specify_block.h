#pragma once

#include <cstddef>
#include <string>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// "specify": a pass for each piece of a list, which is assigned to a variable as an expression.
class specify_block_t : public block_t {
public:
    using block_t::block_t;
    bool start() override;
    bool again() override;
    /// Writes one line to standard output.
    void failed() noexcept override;

private:
    std::string index;
    std::string values;       // each piece followed by a comma
    std::size_t position = 0; // of the next piece
};

} // namespace ko::xpp

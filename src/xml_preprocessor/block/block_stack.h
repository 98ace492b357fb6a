#pragma once

#include <memory>
#include <vector>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// Runs blocks until nothing is left of a source tree.
///
/// It owns the blocks. An exception is reported to all of them, innermost first, while they are
/// taken down, and then goes on unchanged.
class block_stack_t {
public:
    explicit block_stack_t(preprocessor_t::imp_t& state);
    block_stack_t(const block_stack_t&) = delete;
    block_stack_t& operator=(const block_stack_t&) = delete;
    ~block_stack_t() = default;

    /// Processes an element into an output parent.
    /// @param keywords in the table of `source`
    void run(ko::lxml::element_t& source, ko::lxml::element_t& out,
             const keywords_ptr_t& keywords);

private:
    void enter(ko::lxml::element_t& source, ko::lxml::element_t& out,
               const keywords_ptr_t& keywords);
    void step();
    void fail() noexcept;

    preprocessor_t::imp_t& imp;
    std::vector<std::unique_ptr<block_t>> blocks; // empty again after every run
};

} // namespace ko::xpp

#include "xml_preprocessor/block/block_stack.h"

#include <utility>

#include "xml_preprocessor/block/directive.h"

namespace ko::xpp {

block_stack_t::block_stack_t(preprocessor_t::imp_t& state) : imp(state) {}

void block_stack_t::run(lxml::element_t& source, lxml::element_t& out,
                        const keywords_ptr_t& keywords) {
    try {
        enter(source, out, keywords);
        while (!blocks.empty()) {
            step();
        }
    } catch (...) {
        fail();
        throw;
    }
}

void block_stack_t::enter(lxml::element_t& source, lxml::element_t& out,
                          const keywords_ptr_t& keywords) {
    std::unique_ptr<block_t> block = element_begin(imp, source, out, keywords);
    if (block == nullptr) {
        return;
    }
    blocks.push_back(std::move(block));
    if (blocks.back()->start()) {
        blocks.back()->rewind();
    } else {
        blocks.pop_back();
    }
}

void block_stack_t::step() {
    block_t& top = *blocks.back();
    if (lxml::element_t* child = top.next()) {
        enter(*child, top.out_get(), imp.keywords_for(*child, top.children_keywords()));
    } else if (top.again()) {
        top.rewind();
    } else {
        blocks.pop_back();
    }
}

void block_stack_t::fail() noexcept {
    while (!blocks.empty()) {
        blocks.back()->failed();
        blocks.pop_back();
    }
}

} // namespace ko::xpp

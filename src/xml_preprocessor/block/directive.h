#pragma once

#include <memory>

#include "xml_preprocessor/block/block.h"

namespace ko::xpp {

/// The block of an element, not started yet. Null when nothing of the element is to be run any
/// more: a directive without children was executed, is switched off, or is not known.
/// @param keywords in the table of `element`
std::unique_ptr<block_t> element_begin(preprocessor_t::imp_t& imp, ko::lxml::element_t& element,
                                       ko::lxml::element_t& out, const keywords_ptr_t& keywords);

} // namespace ko::xpp

/// @file
/// The directives, each a small class, in the order of the manual.
#pragma once

#include "xml_preprocessor/blocks.h"

namespace ko::xpp {

/// The block of a directive, not started yet. Null when nothing of the element is to be run any
/// more: a directive without children was executed, is switched off, or is not known.
block_ptr_t directive_begin(const site_t& site);

} // namespace ko::xpp

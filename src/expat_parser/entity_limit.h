/// @file
/// How many entities may stand for text with other entities in it.
///
/// Before 2.7.0, unless a distribution has mended it, expat calls itself for an entity inside
/// another one: a long chain of them would take the whole stack. No chain is longer than the
/// number of entities that refer to one, whatever their order.
#pragma once

#include <string_view>

namespace ko::xml {

/// Entities of one document type that may refer to entities.
constexpr unsigned entity_references_max = 1000;

/// @param value the text of an entity in which expat has replaced the character references
/// @return whether the text refers to an entity other than the five that XML defines
bool refers_to_entity(std::string_view value);

} // namespace ko::xml

/// @file
/// Reading the attributes of a directive: by local name, whatever their namespace; of several the
/// first in the element's order counts.
#pragma once

#include <string>

#include "lxml/lxml.h"

namespace ko::xpp {

/// The attribute with the local name of that atom, or null.
const ko::lxml::attribute_t* attribute_find(const ko::lxml::element_t& element, int name);

/// The attribute with the local name of that atom.
/// @throws ko::exception_t "attribute %s missing in element %s"
const ko::lxml::attribute_t& attribute_required(const ko::lxml::element_t& element, int name);

/// Whether the attribute is there and exactly "true".
bool attribute_true(const ko::lxml::element_t& element, int name);

/// An attribute as it is shown in a place: `name="value"`, with nothing escaped.
std::string attribute_shown(const std::string& name, const std::string& value);

} // namespace ko::xpp

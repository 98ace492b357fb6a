/// @file
/// A tree as one text that shows all of it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "lxml/lxml.h"

namespace test {

inline std::string full_name(const ko::lxml::node_t& node) {
    return "{" + node.ns_get() + "}" + node.name_get();
}

/// Names, attributes, texts, CDATA and children of a tree; attributes by their names, since their
/// order is that of atoms.
inline std::string described(const ko::lxml::element_t& e) {
    std::vector<std::string> attributes;
    for (const ko::lxml::attribute_t* a : e.attributes) {
        attributes.push_back(" " + full_name(*a) + "=\"" + a->value + "\"");
    }
    std::sort(attributes.begin(), attributes.end());
    std::string out = "<" + full_name(e);
    for (const std::string& attribute : attributes) {
        out += attribute;
    }
    out += "|" + e.text + "|" + e.cdata + "|";
    for (const ko::lxml::element_t* child : e.children) {
        out += described(*child);
    }
    return out + ">";
}

} // namespace test

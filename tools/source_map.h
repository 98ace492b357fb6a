/// @file
/// Which line of which file each element of an output was made from.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "lxml/lxml.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace tool {

/// Remembers the places of elements while they are made.
class source_map_t {
public:
    void add(const ko::lxml::element_t& source, const ko::lxml::element_t& output,
             const std::vector<ko::xpp::place_t>& trace);

    /// The map of a tree as JSON: an array with an object for each element, in document order.
    std::string text(const ko::lxml::element_t& root) const;

private:
    struct origin_t {
        ko::xpp::place_t place;
        std::vector<ko::xpp::place_t> trace;
    };

    std::unordered_map<const ko::lxml::element_t*, origin_t> origins;
};

} // namespace tool

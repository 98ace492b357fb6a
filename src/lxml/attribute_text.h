/// @file
/// Attributes that are about to be made.
#pragma once

#include <string_view>

namespace ko::lxml {

/// An attribute with its names resolved; the value is borrowed.
struct attribute_text_t {
    int ns;                 ///< atom of the namespace name
    int name;               ///< atom of the local name
    std::string_view value; ///< the value
};

} // namespace ko::lxml

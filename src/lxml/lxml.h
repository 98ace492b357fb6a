/// @file
/// The XML document model: interned names, element trees owned by their document, loading, path
/// queries and saving.
///
/// @code
/// lxml::document_t document;
/// document.load_from_string("<rack><amp name='P&amp;A'/></rack>");
/// const lxml::element_t* amp = document.root->child_find("amp");
/// const std::string name = amp->attribute_get_value("name", "");
/// std::cout << name << " is " << lxml::xml_encode(name) << '\n'; // P&A is P&amp;A
/// @endcode
#pragma once

#include <iosfwd>
#include <string>

#include "export.h"
#include "lxml/atom_table.h"
#include "lxml/attribute.h"
#include "lxml/document.h"
#include "lxml/element.h"
#include "lxml/node.h"

namespace ko::lxml {

/// Escapes text for XML.
///
/// Printable ASCII is copied, with the double quote, "&", "<" and ">" as entities. Every other
/// byte becomes a decimal character reference of its own, so that a multi-byte character is
/// written as one reference a byte; callers rely on it (quirk "bytes as references"). The text
/// ends at an embedded zero byte.
KO_API std::string xml_encode(const std::string& text);

/// A line break that is written or not.
struct conditional_endl_t {
    /// @param is_on whether it is written
    explicit constexpr conditional_endl_t(bool is_on = false) : on(is_on) {}

    bool on; ///< true writes a newline and flushes, false nothing
};

/// Writes the line break when it is on.
KO_API std::ostream& operator<<(std::ostream& out, const conditional_endl_t& endl);

} // namespace ko::lxml

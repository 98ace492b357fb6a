/// @file
/// What XML can hold, as the reader of this library takes it.
#pragma once

#include <string>
#include <string_view>

namespace ko::lxml {

/// Whether `text` is UTF-8 all through and holds characters of XML only: no control characters
/// but tab, line feed and carriage return, no halves of surrogate pairs, neither U+FFFE nor
/// U+FFFF.
bool is_xml_text(std::string_view text);

/// Whether `text` can be a name without a colon. The reader itself is asked about characters
/// outside ASCII, since it knows fewer of them than the newest edition of XML.
bool is_xml_name(const std::string& text);

/// Whether `text` can be the name of a namespace that a document declares. The loader takes names
/// apart at "|", and what begins with a double quote as a quoted text; it limits their length.
bool is_namespace_name(const std::string& text);

} // namespace ko::lxml

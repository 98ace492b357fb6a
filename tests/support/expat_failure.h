/// @file
/// What expat itself says of a document, so that no test pins down its texts and positions.
#pragma once

#include <expat.h>

#include <string>

namespace test {

/// Expat's words for an error, and the position, of a document that is not well-formed; the empty
/// string for one that is.
inline std::string expat_failure(const std::string& text, bool namespaces = true) {
    XML_Parser parser = namespaces ? XML_ParserCreateNS(nullptr, '|') : XML_ParserCreate(nullptr);
    std::string message;
    if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_ERROR) {
        message = std::string(XML_ErrorString(XML_GetErrorCode(parser))) +
                  " line=" + std::to_string(XML_GetCurrentLineNumber(parser)) +
                  " column=" + std::to_string(XML_GetCurrentColumnNumber(parser));
    }
    XML_ParserFree(parser);
    return message;
}

/// The whole message of the library for such a document.
inline std::string parse_error_message(const std::string& text) {
    return expat_failure(text) + ": xml parse error";
}

} // namespace test

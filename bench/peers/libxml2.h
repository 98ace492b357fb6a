/// @file
/// What the sides of libxml2 and libxslt share.
#pragma once

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "tally.h"

namespace bench {

struct free_document_t {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using xml_document_t = std::unique_ptr<xmlDoc, free_document_t>;

/// @param name where the text comes from, which what it names is looked up beside
inline xml_document_t parsed(const std::string& text, const char* name = nullptr) {
    xml_document_t document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), name, nullptr, 0));
    if (document == nullptr) {
        throw std::runtime_error("a document could not be parsed");
    }
    return document;
}

inline const char* chars(const xmlChar* text) {
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

inline const xmlChar* xml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

/// The node that follows in document order, or null.
inline const xmlNode* next(const xmlNode* node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node != nullptr && node->next == nullptr) {
        node = node->parent->type == XML_DOCUMENT_NODE ? nullptr : node->parent;
    }
    return node == nullptr ? nullptr : node->next;
}

inline double tally_of(const xml_document_t& document) {
    tally_t tally;
    for (const xmlNode* node = xmlDocGetRootElement(document.get()); node != nullptr;
         node = next(node)) {
        if (node->type != XML_ELEMENT_NODE) {
            tally.text(chars(node->content));
            continue;
        }
        tally.element(chars(node->name));
        for (const xmlAttr* attribute = node->properties; attribute != nullptr;
             attribute = attribute->next) {
            tally.attribute(chars(attribute->name), chars(attribute->children->content));
        }
    }
    return tally.number();
}

inline double elements_of(const xml_document_t& document) {
    std::size_t count = 0;
    for (const xmlNode* node = xmlDocGetRootElement(document.get()); node != nullptr;
         node = next(node)) {
        count += node->type == XML_ELEMENT_NODE ? 1 : 0;
    }
    return double(count);
}

} // namespace bench

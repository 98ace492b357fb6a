// The ways in which a document is asked with a path.

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "lxpath/evaluation.h"

namespace ko::lxml {

void element_t::select_nodes(const std::string& path, std::list<node_t*>& out) const {
    xpath_t parsed;
    parsed.parse(path.c_str());
    parsed.matches(const_cast<element_t*>(this), out);
}

node_t* element_t::select_single_node(const std::string& path) const {
    xpath_t parsed;
    parsed.parse(path.c_str());
    return evaluation_t(parsed).first(const_cast<element_t*>(this));
}

const element_t* element_find(const element_t* from, const std::string& path, bool required) {
    const element_t* found = nullptr;
    if (from != nullptr) {
        found = dynamic_cast<const element_t*>(from->select_single_node(path));
    }
    if (found == nullptr && required) {
        throw exception_t("element '%s' not found in document", path.c_str());
    }
    return found;
}

element_t* element_find(element_t* from, const std::string& path, bool required) {
    const element_t* const place = from;
    return const_cast<element_t*>(element_find(place, path, required));
}

element_t* element_find(document_t& doc, const std::string& path, bool required) {
    return element_find(doc.root, path, required);
}

} // namespace ko::lxml

// The ways in which a document is asked with a path.

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "lxpath/evaluation.h"
#include "lxpath/path_parser.h"

namespace ko::lxml {

namespace {

void read(const std::string& text, flat_path_t& steps) {
    path_parser_t parser(text.c_str(), steps);
    parser.path();
    parser.end();
}

const element_t* require(const element_t* found, const std::string& path, bool required) {
    if (found == nullptr && required) {
        throw exception_t("element '%s' not found in document", path.c_str());
    }
    return found;
}

} // namespace

void element_t::select_nodes(const xpath_t& path, std::list<node_t*>& out) const {
    path.matches(const_cast<element_t*>(this), out);
}

void element_t::select_nodes(const std::string& path, std::list<node_t*>& out) const {
    evaluation_t evaluation;
    read(path, evaluation.steps_get());
    evaluation.all(const_cast<element_t*>(this), out);
}

node_t* element_t::select_single_node(const xpath_t& path) const {
    if (evaluation_t::can_evaluate(path)) {
        return evaluation_t(path).first(const_cast<element_t*>(this));
    }
    std::list<node_t*> nodes;
    select_nodes(path, nodes);
    return nodes.empty() ? nullptr : nodes.front();
}

node_t* element_t::select_single_node(const std::string& path) const {
    evaluation_t evaluation;
    read(path, evaluation.steps_get());
    return evaluation.first(const_cast<element_t*>(this));
}

const element_t* element_find(const element_t* from, const xpath_t& path, bool required) {
    const auto* const found =
        from == nullptr ? nullptr : dynamic_cast<element_t*>(from->select_single_node(path));
    return found == nullptr && required ? require(found, path_text(path), required) : found;
}

element_t* element_find(element_t* from, const xpath_t& path, bool required) {
    const element_t* const place = from;
    return const_cast<element_t*>(element_find(place, path, required));
}

element_t* element_find(document_t& doc, const xpath_t& path, bool required) {
    return element_find(doc.root, path, required);
}

const element_t* element_find(const element_t* from, const std::string& path, bool required) {
    const element_t* found = nullptr;
    if (from != nullptr) {
        found = dynamic_cast<const element_t*>(from->select_single_node(path));
    }
    return require(found, path, required);
}

element_t* element_find(element_t* from, const std::string& path, bool required) {
    const element_t* const place = from;
    return const_cast<element_t*>(element_find(place, path, required));
}

element_t* element_find(document_t& doc, const std::string& path, bool required) {
    return element_find(doc.root, path, required);
}

} // namespace ko::lxml

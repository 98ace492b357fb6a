#include "xml_preprocessor/block/block.h"

#include "xml_preprocessor/attributes.h"

namespace ko::xpp {

block_t::block_t(preprocessor_t::imp_t& state, lxml::element_t& source, lxml::element_t& parent,
                 const keywords_ptr_t& source_keywords)
    : imp(state), element(source), out(&parent), keywords(source_keywords),
      body_keywords(source_keywords), body(&source), position(source.children.cbegin()) {}

block_t::~block_t() = default;

bool block_t::again() {
    return false;
}

void block_t::failed() noexcept {}

void block_t::rewind() {
    position = body->children.cbegin();
}

lxml::element_t* block_t::next() {
    return position == body->children.cend() ? nullptr : *position++;
}

lxml::element_t& block_t::out_get() const {
    return *out;
}

const keywords_ptr_t& block_t::children_keywords() const {
    return body_keywords;
}

const string_table_t& block_t::names() const {
    return keywords->get();
}

const std::string& block_t::attribute_text(int name) const {
    return attribute_required(element, name).value;
}

std::string block_t::attribute_value(int name) const {
    return imp.value_of(attribute_required(element, name), names());
}

void block_t::body_set(lxml::element_t& other) {
    body_keywords = imp.keywords_for(other, keywords);
    body = &other;
}

} // namespace ko::xpp

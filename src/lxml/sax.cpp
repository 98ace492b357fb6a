#include "lxml/sax.h"

#include "exception/exception.h"

namespace ko::lxml {

sax_t::sax_t(document_t& target)
    : expat_parser_t(true), document(target), root(nullptr), in_cdata(false) {}

sax_t::~sax_t() = default;

void sax_t::split_name(const std::string& name) {
    const unsigned count = tokens.tokenize(name, "|");
    if (count < 1 || count > 3) {
        throw exception_t("error parsing uri : got %i tokens", static_cast<int>(count));
    }
    if (count == 1) {
        ns.clear();
        local.swap(tokens[0]);
        return;
    }
    if (count == 3) {
        document.add_ns_prefix(tokens[2], tokens[0]);
    }
    ns.swap(tokens[0]);
    local.swap(tokens[1]);
}

void sax_t::start_element(const std::string& name, const attribute_map_t& attributes) {
    split_name(name);
    element_t* const e = document.element_create(local, ns);
    for (const auto& [attribute_name, value] : attributes) {
        split_name(attribute_name);
        e->attribute_set_ns(local, ns, value);
    }
    stack.push_back(e);
}

void sax_t::end_element(const std::string&) {
    element_t* const e = stack.back();
    stack.pop_back();
    if (stack.empty()) {
        root = e;
    } else {
        stack.back()->append(e);
    }
}

void sax_t::character_data(const std::string& text) {
    if (!stack.empty()) {
        (in_cdata ? stack.back()->cdata : stack.back()->text) += text;
    }
}

void sax_t::start_cdata() {
    in_cdata = true;
}

void sax_t::end_cdata() {
    in_cdata = false;
}

} // namespace ko::lxml

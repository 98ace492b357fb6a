#include "lxpath/lxpath.h"

#include "exception/exception.h"
#include "lxpath/path_parser.h"

namespace ko::lxml {

namespace {

/// The namespace name that an element test asks for.
const std::string& expected_ns(const xname_t& test, document_t& document) {
    return test.quoted ? test.ns : document.uri_prefix_expand(test.ns);
}

bool is_attribute_with(const node_t* node, const std::string& value) {
    const auto* const attribute = dynamic_cast<const attribute_t*>(node);
    return attribute != nullptr && attribute->value == value;
}

bool any_attribute_with(const std::list<node_t*>& nodes, const std::string& value) {
    for (const node_t* node : nodes) {
        if (is_attribute_with(node, value)) {
            return true;
        }
    }
    return false;
}

} // namespace

xbase_t::xbase_t() = default;
xbase_t::~xbase_t() = default;

void xbase_t::multi_matches(const std::list<node_t*>& in, std::list<node_t*>& out) const {
    // Counted, since `in` and `out` may be one list that grows meanwhile.
    auto node = in.begin();
    for (std::size_t left = in.size(); left != 0; --left) {
        matches(*node++, out);
    }
}

xname_t::xname_t() : kind(false), quoted(false) {}
xname_t::~xname_t() = default;

void xname_t::matches(node_t* context, std::list<node_t*>& out) const {
    auto* const element = dynamic_cast<element_t*>(context);
    if (element == nullptr) {
        return;
    }
    if (kind) {
        if (attribute_t* const attribute = element->attribute_get(name, ns)) {
            out.push_back(attribute);
        }
        return;
    }
    const std::string& uri = expected_ns(*this, *element->document);
    for (element_t* child : element->children) {
        if (child->name_get() == name && child->ns_get() == uri) {
            out.push_back(child);
        }
    }
}

const char* xname_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.name_test(*this);
    return parser.position_get();
}

xfilter_t::xfilter_t() = default;
xfilter_t::~xfilter_t() = default;

void xfilter_t::matches(node_t* context, std::list<node_t*>& out) const {
    if (predicate == nullptr) {
        out.push_back(context);
        return;
    }
    std::list<node_t*> results;
    predicate->matches(context, results);
    if (value.empty() ? !results.empty() : any_attribute_with(results, value)) {
        out.push_back(context);
    }
}

const char* xfilter_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.filter(*this);
    return parser.position_get();
}

xnode_t::xnode_t() = default;
xnode_t::~xnode_t() = default;

void xnode_t::matches(node_t* context, std::list<node_t*>& out) const {
    std::list<node_t*> named;
    name.matches(context, named);
    filter.multi_matches(named, out);
}

const char* xnode_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.step(*this);
    return parser.position_get();
}

xpath_t::xpath_t() = default;
xpath_t::~xpath_t() = default;

void xpath_t::matches(node_t* context, std::list<node_t*>& out) const {
    std::list<node_t*> selected = {context};
    for (const auto& step : steps) {
        std::list<node_t*> next;
        step->multi_matches(selected, next);
        selected.swap(next);
    }
    out.splice(out.end(), selected);
}

const char* xpath_t::_parse(const char* s) {
    path_parser_t parser(s);
    parser.path(*this);
    return parser.position_get();
}

void xpath_t::parse(const char* s) {
    const char* end = _parse(s);
    assert_char(end, '\0');
}

} // namespace ko::lxml

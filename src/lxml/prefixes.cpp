#include "lxml/prefixes.h"

#include "lxml/document.h"
#include "lxml/well_formed.h"

namespace ko::lxml {

namespace {

/// Of several namespaces with one prefix, the one that was bound last has it.
bool owns_prefix(const document_t& document, int uri, int prefix) {
    const auto back = document.prefix_to_uri.find(prefix);
    return back != document.prefix_to_uri.end() && back->second == uri;
}

bool can_declare(const std::string& prefix, const std::string& uri) {
    return prefix != "xml" && prefix != "xmlns" && is_xml_name(prefix) && is_namespace_name(uri);
}

} // namespace

prefixes_t::prefixes_t(const document_t& source)
    : document(source), xml_ns(source.atoms->find(xml_namespace)) {
    for (const auto& [uri, prefix] : source.uri_to_prefix) {
        const std::string& text = source.atoms->text_get(prefix);
        if (uri != xml_ns && owns_prefix(source, uri, prefix) &&
            can_declare(text, source.atoms->text_get(uri))) {
            by_ns.emplace(uri, text);
            taken.insert(text);
        }
    }
}

void prefixes_t::use(int ns, bool for_attribute) {
    if (ns == xml_ns || ns == 0 || by_ns.count(ns) != 0) {
        return;
    }
    const auto known = document.uri_to_prefix.find(ns);
    if (for_attribute || (known != document.uri_to_prefix.end() && known->second != 0)) {
        by_ns.emplace(ns, made_up());
    }
}

std::string_view prefixes_t::get(int ns) const {
    if (ns == xml_ns) {
        return "xml";
    }
    const auto found = by_ns.find(ns);
    return found == by_ns.end() ? std::string_view() : std::string_view(found->second);
}

std::string prefixes_t::made_up() {
    std::string prefix;
    do {
        prefix = "ns" + std::to_string(++count);
    } while (!taken.insert(prefix).second);
    return prefix;
}

} // namespace ko::lxml

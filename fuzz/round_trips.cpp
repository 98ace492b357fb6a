/// @file
/// Loads the input and writes it: loading that must give the same tree. Prints it in the fixed
/// format as well and loads that: the tree must be the same where the format can carry it.

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "lxml/lxml.h"
#include "support/target.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;

bool has_any(const std::string& text, const char* set) {
    return text.find_first_of(set) != std::string::npos;
}

bool is_ascii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 128; });
}

/// Printed as they are: namespace names, and the text of an element with children.
bool is_carried_raw(const std::string& text) {
    return !has_any(text, "<&\"\r") && text.find("]]>") == std::string::npos;
}

/// Names of namespaces are normalised as attribute values when they are read.
bool is_carried_name(const std::string& text) {
    return is_carried_raw(text) && !has_any(text, "\t\n");
}

/// Prefixes are those of the whole document: each namespace must have one of its own.
bool are_namespaces_carried(const document_t& document) {
    for (const auto& [uri, prefix] : document.uri_to_prefix) {
        const auto back = document.prefix_to_uri.find(prefix);
        if (prefix == 0 || back == document.prefix_to_uri.end() || back->second != uri ||
            !is_carried_name(document.atoms->text_get(uri))) {
            return false;
        }
    }
    return true;
}

bool is_bound(const ko::lxml::node_t& node, const document_t& document) {
    return node.ns == 0 || document.uri_to_prefix.count(node.ns) != 0;
}

/// A namespace name that begins with a double quote hides where the name after it begins.
bool is_name_carried(const ko::lxml::node_t& node, const document_t& document) {
    return is_bound(node, document) && !has_any(node.name_get(), "|");
}

/// Texts that are escaped are read back a byte a reference.
bool is_carried(const element_t& e) {
    const auto attribute_carried = [&](const ko::lxml::attribute_t* a) {
        return is_name_carried(*a, *e.document) && is_ascii(a->value);
    };
    return is_name_carried(e, *e.document) &&
           std::all_of(e.attributes.begin(), e.attributes.end(), attribute_carried) &&
           (e.children.empty() ? is_ascii(e.text) : is_carried_raw(e.text)) &&
           e.cdata.find("]]>") == std::string::npos && !has_any(e.cdata, "\r");
}

bool is_tree_carried(const document_t& document) {
    std::vector<const element_t*> open{document.root};
    while (!open.empty()) {
        const element_t& e = *open.back();
        open.pop_back();
        if (!is_carried(e)) {
            return false;
        }
        open.insert(open.end(), e.children.begin(), e.children.end());
    }
    return true;
}

using values_t = std::vector<std::pair<std::string, std::string>>;

values_t values_of(const element_t& e) {
    values_t values;
    for (const ko::lxml::attribute_t* a : e.attributes) {
        values.emplace_back(a->ns_get() + "|" + a->name_get(), a->value);
    }
    std::sort(values.begin(), values.end());
    return values;
}

bool is_same(const element_t& a, const element_t& b) {
    return a.name_get() == b.name_get() && a.ns_get() == b.ns_get() && a.text == b.text &&
           a.cdata == b.cdata && a.children.size() == b.children.size() &&
           values_of(a) == values_of(b);
}

bool is_same_tree(const document_t& a, const document_t& b) {
    std::vector<std::pair<const element_t*, const element_t*>> open{{a.root, b.root}};
    while (!open.empty()) {
        const auto [x, y] = open.back();
        open.pop_back();
        if (!is_same(*x, *y)) {
            return false;
        }
        std::transform(x->children.begin(), x->children.end(), y->children.begin(),
                       std::back_inserter(open),
                       [](const element_t* p, const element_t* q) { return std::pair(p, q); });
    }
    return true;
}

std::string printed(const document_t& document) {
    std::ostringstream out;
    document.root->print(out, 0, 0, false, false);
    return out.str();
}

bool is_name(const ko::lxml::node_t& node) {
    document_t probe;
    return node.ns_get().find('|') == std::string::npos &&
           fuzz::attempt([&] { probe.load_from_string("<" + node.name_get() + "/>"); }) &&
           probe.root->name_get() == node.name_get();
}

/// A namespace name that begins with a double quote leaves names in the tree that XML has not.
bool is_tree_named(const document_t& document) {
    std::vector<const element_t*> open{document.root};
    while (!open.empty()) {
        const element_t& e = *open.back();
        open.pop_back();
        if (!is_name(e) || !std::all_of(e.attributes.begin(), e.attributes.end(),
                                        [](const auto* a) { return is_name(*a); })) {
            return false;
        }
        open.insert(open.end(), e.children.begin(), e.children.end());
    }
    return true;
}

void check_written(const document_t& document) {
    std::ostringstream out;
    if (!fuzz::attempt([&] { document.write(out); })) {
        fuzz::require(!is_tree_named(document), "what was loaded cannot be written");
        return;
    }
    document_t again;
    fuzz::require(fuzz::attempt([&] { again.load_from_string(out.str()); }),
                  "what was written cannot be loaded");
    fuzz::require(again.root != nullptr && is_same_tree(document, again),
                  "what was written loads as another tree");
}

void check_printed(const document_t& document) {
    if (!are_namespaces_carried(document) || !is_tree_carried(document)) {
        return;
    }
    const std::string text = printed(document);
    document_t again;
    fuzz::require(fuzz::attempt([&] { again.load_from_string(text); }),
                  "what was printed cannot be loaded");
    fuzz::require(again.root != nullptr && is_same_tree(document, again),
                  "what was printed loads as another tree");
    fuzz::require(again.root == nullptr || printed(again).size() == text.size(),
                  "what was loaded prints as another text");
}

void run(const std::string& input) {
    document_t document;
    if (fuzz::attempt([&] { document.load_from_string(input); })) {
        check_written(document);
        check_printed(document);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run_limited(run, data, size);
    return 0;
}

/// @file
/// Making and showing small documents.
#pragma once

#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "lxml/lxml.h"

namespace test {

/// The local names of a tree: "a(b,c(d))".
inline std::string shape(const ko::lxml::element_t* e) {
    std::string out = e == nullptr ? "null" : e->name_get();
    if (e != nullptr && !e->children.empty()) {
        std::string inner;
        for (const ko::lxml::element_t* child : e->children) {
            inner += (inner.empty() ? "" : ",") + shape(child);
        }
        out += "(" + inner + ")";
    }
    return out;
}

/// What `print` writes for an element on its own.
inline std::string printed(const ko::lxml::element_t* e, bool trim = false, bool pretty = false,
                           int indent = 0, int parent_ns = 0) {
    std::ostringstream out;
    e->print(out, indent, parent_ns, trim, pretty);
    return out.str();
}

/// A document made of text.
class loaded_t {
public:
    explicit loaded_t(const std::string& text) { doc.load_from_string(text); }

    /// The first element with a local name, in document order; null when there is none.
    ko::lxml::element_t* find(const std::string& name) { return find_below(doc.root, name); }

    ko::lxml::document_t doc;

private:
    static ko::lxml::element_t* find_below(ko::lxml::element_t* e, const std::string& name) {
        if (e->name_get() == name) {
            return e;
        }
        for (ko::lxml::element_t* child : e->children) {
            if (ko::lxml::element_t* const found = find_below(child, name)) {
                return found;
            }
        }
        return nullptr;
    }
};

/// `count` repetitions of `text`.
inline std::string repeated(const std::string& text, std::size_t count) {
    std::string out;
    out.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        out += text;
    }
    return out;
}

} // namespace test

// Writing of trees. Everything goes through unformatted output, so that the bytes do not depend
// on the width, fill or locale that a stream was given.

#include <fstream>
#include <locale>
#include <ostream>
#include <string_view>
#include <vector>

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "str/str.h"

namespace ko::lxml {

namespace {

/// The layout of one element's own tags.
struct layout_style_t {
    int indent;
    bool pretty;
};

/// Elements below the one that is printed have no layout; callers rely on these bytes.
constexpr layout_style_t plain = {0, false};

/// An element whose children are being written.
struct printing_t {
    const element_t* e;
    element_t::children_t::const_iterator next;
};

void put(std::ostream& os, std::string_view text) {
    os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void put_indent(std::ostream& os, layout_style_t style) {
    for (int i = 0; style.pretty && i < style.indent; ++i) {
        os.put(' ');
    }
}

void put_endl(std::ostream& os, layout_style_t style) {
    os << conditional_endl_t{style.pretty};
}

/// Writes a name and the prefix of its namespace.
void put_name(std::ostream& os, const std::string& prefix, const std::string& name) {
    if (!prefix.empty()) {
        put(os, prefix);
        os.put(':');
    }
    put(os, name);
}

/// Writes what stands in quotes after a name, and the space that ends every attribute.
void put_value(std::ostream& os, const std::string& value) {
    put(os, "=\"");
    put(os, value);
    put(os, "\" ");
}

void put_cdata(std::ostream& os, const std::string& cdata) {
    put(os, "<![CDATA[");
    put(os, cdata);
    put(os, "]]>");
}

void put_declaration(std::ostream& os, const document_t& document, layout_style_t style) {
    put(os, "<?xml version=\"1.0\" standalone=\"yes\"?>");
    put_endl(os, style);
    if (!document.stylesheet.empty()) {
        put(os, "<?xml-stylesheet type=\"text/xsl\" href=\"");
        put(os, document.stylesheet);
        put(os, "\"?>");
        put_endl(os, style);
    }
}

void put_bindings(std::ostream& os, const document_t& document) {
    for (const auto& [uri, prefix] : document.uri_to_prefix) {
        const std::string& prefix_text = document.atoms->text_get(prefix);
        if (!prefix_text.empty()) {
            put(os, "xmlns:");
            put(os, prefix_text);
            put_value(os, document.atoms->text_get(uri));
        }
    }
}

void put_attribute(std::ostream& os, document_t& document, const attribute_t& attribute) {
    const std::string& uri = attribute.ns_get();
    if (!uri.empty()) {
        put(os, document.uri_prefix_get(uri));
        os.put(':');
    }
    put(os, attribute.name_get());
    put_value(os, xml_encode(attribute.value));
}

/// Writes the start tag up to its closing bracket, with what stands before it.
void put_start(std::ostream& os, const element_t& e, int parent_ns, layout_style_t style) {
    const bool is_root = e.document->root == &e;
    if (is_root) {
        put_declaration(os, *e.document, style);
    }
    put_indent(os, style);
    const std::string& uri = e.ns_get();
    const std::string& prefix = e.document->uri_prefix_get(uri);
    os.put('<');
    put_name(os, prefix, e.name_get());
    os.put(' ');
    if (is_root) {
        put_bindings(os, *e.document);
    }
    if (e.ns != parent_ns && !uri.empty() && prefix.empty()) {
        put(os, "xmlns");
        put_value(os, uri);
    }
    for (const attribute_t* attribute : e.attributes) {
        put_attribute(os, *e.document, *attribute);
    }
}

void put_end(std::ostream& os, const element_t& e, layout_style_t style) {
    put(os, "</");
    put_name(os, e.document->uri_prefix_get(e.ns_get()), e.name_get());
    os.put('>');
    put_endl(os, style);
}

/// Writes what follows the start tag of an element without children.
void put_leaf(std::ostream& os, const element_t& e, layout_style_t style) {
    if (e.text.empty() && e.cdata.empty()) {
        put(os, "/>");
        put_endl(os, style);
        return;
    }
    os.put('>');
    put(os, xml_encode(e.text));
    if (!e.cdata.empty()) {
        put_cdata(os, e.cdata);
    }
    put_end(os, e, style);
}

/// Writes the text of an element with children. Unlike that of a leaf it is not escaped, which
/// callers rely on.
void put_text(std::ostream& os, const element_t& e, bool trim, layout_style_t style) {
    os.put('>');
    put_endl(os, style);
    if (trim) {
        std::string text = e.text;
        str::strip_leading_whitespace(text);
        str::strip_trailing_whitespace(text);
        put(os, text);
    } else {
        put(os, e.text);
    }
    if (!e.cdata.empty()) {
        put_cdata(os, e.cdata);
        put_endl(os, style);
    }
}

/// Writes an element but for its children and what follows them.
void put_head(std::ostream& os, const element_t& e, int parent_ns, bool trim,
              layout_style_t style) {
    put_start(os, e, parent_ns, style);
    if (e.children.empty()) {
        put_leaf(os, e, style);
    } else {
        put_text(os, e, trim, style);
    }
}

} // namespace

std::ostream& operator<<(std::ostream& out, const conditional_endl_t& endl) {
    if (endl.on) {
        out.put('\n');
        out.flush();
    }
    return out;
}

void element_t::print(std::ostream& os, int indent, int parent_ns, bool trim, bool pretty) const {
    const layout_style_t own_style = {indent, pretty};
    put_head(os, *this, parent_ns, trim, own_style);
    std::vector<printing_t> open;
    if (!children.empty()) {
        open.push_back({this, children.begin()});
    }
    while (!open.empty()) {
        const element_t& parent = *open.back().e;
        if (open.back().next == parent.children.end()) {
            const layout_style_t style = open.size() == 1 ? own_style : plain;
            put_indent(os, style);
            put_end(os, parent, style);
            open.pop_back();
            continue;
        }
        const element_t& child = **open.back().next++;
        put_head(os, child, parent.ns, trim, plain);
        if (!child.children.empty()) {
            open.push_back({&child, child.children.begin()});
        }
    }
}

void document_t::save(const std::string& file, bool trim, bool pretty) {
    std::ofstream os;
    os.imbue(std::locale::classic());
    os.open(file, std::ios::out | std::ios::trunc);
    if (!os.is_open()) {
        throw exception_t("error opening file %s", file.c_str());
    }
    if (root != nullptr) {
        root->print(os, 0, 0, trim, pretty);
    }
    // A full device is noticed only when the buffered rest is written.
    os.close();
    if (!os) {
        throw exception_t("error writing file %s", file.c_str());
    }
}

} // namespace ko::lxml

// Writing in the fixed format. The pieces go to a block in front of the stream, which gets them
// when the block is full and before every line break, since a line break flushes.

#include <algorithm>
#include <fstream>
#include <locale>
#include <string_view>
#include <vector>

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "lxml/sink.h"
#include "lxml/walk.h"
#include "str/ascii.h"

namespace ko::lxml {

namespace {

constexpr escapes_t make_escapes() {
    escapes_t made;
    for (unsigned c = 0; c != 256; ++c) {
        if (!ascii::is_print(static_cast<char>(c))) {
            made.set_reference(static_cast<unsigned char>(c));
        }
    }
    made.set('"', "&quot;");
    made.set('&', "&amp;");
    made.set('<', "&lt;");
    made.set('>', "&gt;");
    made.set_end('\0');
    return made;
}

/// What is written for a text; it ends at an embedded zero byte.
constexpr escapes_t escapes = make_escapes();

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && ascii::is_space(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && ascii::is_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The layout of one element's own tags.
struct layout_style_t {
    int indent;
    bool pretty;
};

/// Elements below the one that is printed have no layout; callers rely on it (quirk "pretty on
/// top only").
constexpr layout_style_t plain = {0, false};

/// Writes one element with its subtree.
class printer_t {
public:
    printer_t(std::ostream& os, bool trim_texts) : out(os), trim(trim_texts) {}

    void print(const element_t& top, int parent_ns, layout_style_t style) {
        namespaces.push_back(parent_ns);
        walk(
            top, [&](const element_t& e) { return enter(e, is_outside() ? style : plain); },
            [&](const element_t& e) {
                namespaces.pop_back();
                put_indent(is_outside() ? style : plain);
                put_end(e, is_outside() ? style : plain);
            });
        out.hand_over();
    }

private:
    /// Writes an element but for its children and what follows them.
    /// @return whether there are any
    bool enter(const element_t& e, layout_style_t style) {
        put_start(e, namespaces.back(), style);
        if (e.children.empty()) {
            put_leaf(e, style);
            return false;
        }
        put_text(e, style);
        namespaces.push_back(e.ns);
        return true;
    }

    /// Whether no element is open.
    bool is_outside() const { return namespaces.size() == 1; }

    /// Writes the start tag up to its closing bracket, with what stands before it.
    void put_start(const element_t& e, int parent_ns, layout_style_t style) {
        const bool is_root = e.document->root == &e;
        if (is_root) {
            put_declaration(*e.document, style);
        }
        put_indent(style);
        const std::string_view prefix = prefix_of(e, *e.document);
        out.put('<');
        put_name(prefix, e);
        out.put(' ');
        if (is_root) {
            put_bindings(*e.document);
        }
        if (e.ns != parent_ns && prefix.empty() && !e.ns_get().empty()) {
            out.put("xmlns");
            put_value(e.ns_get());
        }
        for (const attribute_t* attribute : e.attributes) {
            put_attribute(*attribute, *e.document);
        }
    }

    [[gnu::cold]] void put_declaration(const document_t& document, layout_style_t style) {
        out.put("<?xml version=\"1.0\" standalone=\"yes\"?>");
        put_endl(style);
        if (!document.stylesheet.empty()) {
            out.put("<?xml-stylesheet type=\"text/xsl\" href=\"");
            out.put(document.stylesheet);
            out.put("\"?>");
            put_endl(style);
        }
    }

    [[gnu::cold]] void put_bindings(const document_t& document) {
        for (const auto& [uri, prefix] : document.uri_to_prefix) {
            const std::string& prefix_text = document.atoms->text_get(prefix);
            if (!prefix_text.empty()) {
                out.put("xmlns:");
                out.put(prefix_text);
                put_value(document.atoms->text_get(uri));
            }
        }
    }

    void put_attribute(const attribute_t& attribute, document_t& document) {
        if (attribute.ns != 0 && !attribute.ns_get().empty()) {
            out.put(prefix_of(attribute, document));
            out.put(':');
        }
        out.put(attribute.name_get());
        out.put('=', '"');
        out.put(attribute.value, escapes);
        out.put('"', ' ');
    }

    /// Writes what follows the start tag of an element without children.
    void put_leaf(const element_t& e, layout_style_t style) {
        if (e.text.empty() && e.cdata.empty()) {
            out.put('/', '>');
            put_endl(style);
            return;
        }
        out.put('>');
        out.put(e.text, escapes);
        if (!e.cdata.empty()) {
            put_cdata(e.cdata);
        }
        put_end(e, style);
    }

    /// Writes the text of an element with children. Unlike that of a leaf it is not escaped;
    /// callers rely on it (quirk "raw text above").
    void put_text(const element_t& e, layout_style_t style) {
        out.put('>');
        put_endl(style);
        out.put(trim ? trimmed(e.text) : std::string_view(e.text));
        if (!e.cdata.empty()) {
            put_cdata(e.cdata);
            put_endl(style);
        }
    }

    [[gnu::cold]] void put_cdata(const std::string& cdata) {
        out.put("<![CDATA[");
        out.put(cdata);
        out.put("]]>");
    }

    void put_end(const element_t& e, layout_style_t style) {
        out.put('<', '/');
        put_name(prefix_of(e, *e.document), e);
        out.put('>');
        put_endl(style);
    }

    /// Writes a name and the prefix of its namespace.
    void put_name(std::string_view prefix, const node_t& node) {
        if (!prefix.empty()) {
            out.put(prefix);
            out.put(':');
        }
        out.put(node.name_get());
    }

    /// Writes what stands in quotes after a name, and the space that ends every attribute.
    void put_value(std::string_view value) {
        out.put('=', '"');
        out.put(value);
        out.put('"', ' ');
    }

    [[gnu::cold]] void put_indent(layout_style_t style) {
        for (int i = 0; style.pretty && i < style.indent; ++i) {
            out.put(' ');
        }
    }

    [[gnu::cold]] void put_endl(layout_style_t style) {
        if (style.pretty) {
            out.put('\n');
            out.flush();
        }
    }

    /// As `uri_prefix_get`, by atoms. That of the namespace asked for last is remembered.
    std::string_view prefix_of(const node_t& node, document_t& document) {
        if (node.atoms != document.atoms) {
            return document.uri_prefix_get(node.ns_get());
        }
        if (node.ns != known_ns || &document != known_document) {
            const auto found = document.uri_to_prefix.find(node.ns_get().empty() ? 0 : node.ns);
            known_prefix = found == document.uri_to_prefix.end()
                               ? str_empty
                               : document.atoms->text_get(found->second);
            known_document = &document;
            known_ns = node.ns;
        }
        return known_prefix;
    }

    sink_t out;
    const bool trim;
    std::vector<int> namespaces; ///< of what the next element stands in, outermost first

    const document_t* known_document = nullptr;
    int known_ns = 0;
    std::string_view known_prefix; ///< of `known_ns` in `known_document`
};

} // namespace

std::string xml_encode(const std::string& text) {
    constexpr std::size_t part = 64;
    char block[escapes_t::room(part)];
    std::string out;
    out.reserve(text.size());
    bool is_whole = true;
    for (std::string_view left = text; is_whole && !left.empty();
         left.remove_prefix(std::min(left.size(), part))) {
        char* end = block;
        is_whole = escapes.apply(left.substr(0, part), end);
        out.append(block, end);
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, const conditional_endl_t& endl) {
    if (endl.on) {
        out.put('\n');
        out.flush();
    }
    return out;
}

void element_t::print(std::ostream& os, int indent, int parent_ns, bool trim, bool pretty) const {
    printer_t(os, trim).print(*this, parent_ns, {indent, pretty});
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

// The faithful writer. A first walk over the tree makes sure that XML can hold all of it and
// finds out which namespaces need a prefix; a second one writes. Invariants:
//
//  - Nothing is written before the first walk is over, so that a tree that cannot be written
//    leaves the stream alone.
//  - Prefixes are settled by the first walk and declared on the top element.
//  - Atoms are compared, never made: writing changes nothing in the document.

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exception/exception.h"
#include "lxml/file_replacement.h"
#include "lxml/lxml.h"
#include "lxml/prefixes.h"
#include "lxml/sink.h"
#include "lxml/walk.h"
#include "lxml/well_formed.h"
#include "str/str.h"

namespace ko::lxml {

namespace {

/// The widest indentation. A tree may be a million levels deep.
constexpr std::size_t column_max = 80;

constexpr auto make_blanks() {
    std::array<char, column_max> blanks = {};
    for (char& blank : blanks) {
        blank = ' ';
    }
    return blanks;
}

[[noreturn]] void refuse(const char* what, const std::string& name) {
    throw exception_t("document_t::write() -- %s '%s' cannot be written as XML", what,
                      name.c_str());
}

/// The end of a CDATA section may not stand in a text.
constexpr escapes_t make_text_escapes() {
    escapes_t escapes;
    escapes.set('&', "&amp;");
    escapes.set('<', "&lt;");
    escapes.set('>', "&gt;");
    escapes.set_reference('\r');
    return escapes;
}

/// White space in attributes is read as blanks unless it is written by references.
constexpr escapes_t make_value_escapes() {
    escapes_t escapes = make_text_escapes();
    escapes.set('"', "&quot;");
    escapes.set_reference('\t');
    escapes.set_reference('\n');
    return escapes;
}

constexpr escapes_t text_escapes = make_text_escapes();
constexpr escapes_t value_escapes = make_value_escapes();

/// A set of atoms of one table.
class atom_set_t {
public:
    bool has(int id) const {
        return static_cast<std::size_t>(id) < members.size() &&
               members[static_cast<std::size_t>(id)];
    }

    void insert(int id) {
        const auto place = static_cast<std::size_t>(id);
        if (place >= members.size()) {
            members.resize(place + 1);
        }
        members[place] = true;
    }

private:
    std::vector<bool> members;
};

/// Finds what XML cannot hold, element by element.
class examiner_t {
public:
    examiner_t(const document_t& source, prefixes_t& in_use)
        : document(source), prefixes(in_use) {}

    void examine(const element_t& e) {
        examine_name(e);
        prefixes.use(e.ns, false);
        const std::string& name = e.name_get();
        require_text("the text of", e.text, name);
        require_text("the CDATA of", e.cdata, name);
        // Read as a line feed, and CDATA knows no references.
        if (e.cdata.find('\r') != std::string::npos) {
            refuse("the CDATA of", name);
        }
        for (const attribute_t* attribute : e.attributes) {
            examine(*attribute);
        }
    }

    static void require_text(const char* what, const std::string& text, const std::string& name) {
        if (!is_xml_text(text)) {
            refuse(what, name);
        }
    }

private:
    void examine(const attribute_t& attribute) {
        examine_name(attribute);
        prefixes.use(attribute.ns, true);
        const std::string& name = attribute.name_get();
        if (attribute.ns == 0 && name == "xmlns") {
            refuse("the attribute", name);
        }
        require_text("the attribute", attribute.value, name);
    }

    void examine_name(const node_t& node) {
        if (node.atoms != document.atoms) {
            throw exception_t(std::string("elements cannot span documents"));
        }
        if (!names.has(node.name)) {
            if (!is_xml_name(node.name_get())) {
                refuse("the name", node.name_get());
            }
            names.insert(node.name);
        }
        if (node.ns != 0 && !namespaces.has(node.ns)) {
            if (!is_namespace_name(node.ns_get())) {
                refuse("the namespace name", node.ns_get());
            }
            namespaces.insert(node.ns);
        }
    }

    const document_t& document;
    prefixes_t& prefixes;
    atom_set_t names;      ///< those found good
    atom_set_t namespaces; ///< those found good
};

/// The first walk.
void examine_tree(const document_t& document, examiner_t& examiner) {
    std::size_t depth = 0;
    const auto enter = [&](const element_t& e) {
        if (e.document != &document) {
            throw exception_t(std::string("elements cannot span documents"));
        }
        // No tree is deeper than it has elements.
        if (depth++ == document.elements.size()) {
            refuse("an element that holds itself,", e.name_get());
        }
        examiner.examine(e);
        return true;
    };
    walk(std::as_const(*document.root), enter, [&](const element_t&) { --depth; });
}

/// What the children of an element are written in.
struct inside_t {
    int default_ns;   ///< what names without a prefix are in
    bool is_laid_out; ///< they stand on lines of their own
};

/// The second walk.
class writer_t {
public:
    writer_t(const document_t& source, const prefixes_t& in_use, sink_t& sink, int spaces)
        : document(source), prefixes(in_use), out(sink), indent(spaces),
          xml_ns(source.atoms->find(xml_namespace)), space_name(source.atoms->find("space")) {}

    void put_declaration() {
        out.put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        if (!document.stylesheet.empty()) {
            out.put("<?xml-stylesheet type=\"text/xsl\" href=\"");
            out.put(document.stylesheet, value_escapes);
            out.put("\"?>\n");
        }
    }

    void put_tree() {
        const auto enter = [this](const element_t& e) {
            return put_head(e);
        };
        walk(std::as_const(*document.root), enter, [this](const element_t& e) {
            const bool is_laid_out = open.back().is_laid_out;
            open.pop_back();
            put_line_break(is_laid_out);
            put_end(e);
        });
        if (indent >= 0) {
            out.put('\n');
        }
    }

private:
    /// Writes an element up to its children, or the whole of one without.
    /// @return whether there are any
    bool put_head(const element_t& e) {
        const inside_t around = open.empty() ? inside_t{0, indent >= 0} : open.back();
        const bool is_laid_out = around.is_laid_out && can_lay_out(e);
        const bool is_empty = e.text.empty() && e.cdata.empty() && e.children.empty();
        put_line_break(!open.empty() && around.is_laid_out);
        const int default_ns = put_start(e, around.default_ns);
        out.put(is_empty ? "/>" : ">");
        if (is_empty) {
            return false;
        }
        if (!is_laid_out) {
            out.put(e.text, text_escapes);
            put_cdata(e.cdata);
        }
        if (e.children.empty()) {
            put_end(e);
            return false;
        }
        open.push_back({default_ns, is_laid_out});
        return true;
    }

    /// @return the default namespace inside the element
    int put_start(const element_t& e, int default_ns) {
        out.put('<');
        const std::string_view prefix = prefixes.get(e.ns);
        put_name(prefix, e);
        if (prefix.empty() && e.ns != default_ns) {
            put_value("xmlns", e.ns_get());
            default_ns = e.ns;
        }
        if (open.empty()) {
            for (const auto& [uri, declared] : prefixes.declared()) {
                put_value("xmlns:" + declared, document.atoms->text_get(uri));
            }
        }
        for (const attribute_t* attribute : e.attributes) {
            out.put(' ');
            put_name(prefixes.get(attribute->ns), *attribute);
            put_quoted(attribute->value);
        }
        return default_ns;
    }

    void put_end(const element_t& e) {
        out.put("</");
        put_name(prefixes.get(e.ns), e);
        out.put('>');
    }

    void put_name(std::string_view prefix, const node_t& node) {
        if (!prefix.empty()) {
            out.put(prefix);
            out.put(':');
        }
        out.put(node.name_get());
    }

    void put_value(std::string_view name, const std::string& value) {
        out.put(' ');
        out.put(name);
        put_quoted(value);
    }

    void put_quoted(const std::string& value) {
        out.put("=\"");
        out.put(value, value_escapes);
        out.put('"');
    }

    /// The end of a section that stands in the text is divided between two sections.
    void put_cdata(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = text.find("]]>");
            const std::size_t size = end == std::string_view::npos ? text.size() : end + 2;
            out.put("<![CDATA[");
            out.put(text.substr(0, size));
            out.put("]]>");
            text.remove_prefix(size);
        }
    }

    void put_line_break(bool is_on) {
        if (is_on) {
            static constexpr auto blanks = make_blanks();
            const std::size_t depth = std::min(open.size(), column_max);
            const std::size_t spaces = std::min(static_cast<std::size_t>(indent), column_max);
            out.put('\n');
            out.put({blanks.data(), std::min(depth * spaces, column_max)});
        }
    }

    /// Whether line breaks between the children of an element add nothing to a text.
    bool can_lay_out(const element_t& e) const {
        const bool is_blank = e.text.empty() || (e.text.find('\n') != std::string::npos &&
                                                 str::all_whitespace(e.text));
        if (e.children.empty() || !is_blank || !e.cdata.empty()) {
            return false;
        }
        const attribute_t* const space = e.attribute_get(space_name, xml_ns);
        return space == nullptr || space->value != "preserve";
    }

    const document_t& document;
    const prefixes_t& prefixes;
    sink_t& out;
    const int indent;
    const int xml_ns;     ///< -1 when the document does not know it
    const int space_name; ///< -1 when the document does not know it
    std::vector<inside_t> open;
};

} // namespace

void document_t::write(std::ostream& os, const write_options_t& options) const {
    if (root == nullptr) {
        throw exception_t(std::string("document_t::write() -- document has no root"));
    }
    prefixes_t prefixes(*this);
    examiner_t examiner(*this, prefixes);
    examiner.require_text("the stylesheet", stylesheet, stylesheet);
    examine_tree(*this, examiner);

    sink_t out(os);
    writer_t writer(*this, prefixes, out, options.indent);
    if (options.declaration) {
        writer.put_declaration();
    }
    writer.put_tree();
    out.hand_over();
}

void document_t::save_atomically(const std::string& file, const write_options_t& options) const {
    file_calls_t system;
    file_replacement_t replacement(file, system);
    write(replacement.stream(), options);
    replacement.commit();
}

} // namespace ko::lxml

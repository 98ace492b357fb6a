/// @file
/// The atoms that the preprocessor asks for in one atom table.
///
/// Elements are recognised by atoms, and the atoms of a source, of included files, of definitions
/// and of what plug-ins generate may come from different tables. So whatever is processed goes
/// with the keywords of its table. Nothing is ever looked up by the address of a table: a table
/// may be gone and another one stand in its place. An object of this class thus lasts only as
/// long as elements that use its table may be processed.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "lxml/lxml.h"
#include "xml_preprocessor/string_table.h"

namespace ko::xpp {

/// The names of the two namespaces.
struct namespaces_t {
    std::string xpp;      ///< directives
    std::string xpr;      ///< expression attributes
    unsigned changes = 0; ///< how often the names were changed
};

/// The atoms of namespaces and keywords in one table. It borrows the table and the names.
class keywords_t : public std::enable_shared_from_this<keywords_t> {
public:
    keywords_t(lxml::atom_table_t* atoms, const namespaces_t& names);

    /// Whether the atoms are those of the element.
    bool is_of(const lxml::element_t& element) const { return element.atoms == table; }

    /// The atoms, under the namespace names of this moment.
    const string_table_t& get() {
        if (changes != namespaces.changes) {
            fill();
        }
        return strings;
    }

    /// What an atom of the table is in that of the output, to which its text is added when new.
    int output_atom(int atom, lxml::atom_table_t& output) {
        const translation_t& known =
            translations[static_cast<unsigned>(atom) % translations.size()];
        return known.atom == atom && known.output == &output ? known.translated
                                                             : translate(atom, output);
    }

private:
    /// The last translation of the atoms that share a place. A place for each atom would cost a
    /// table's size for each use of a small part of a large one.
    struct translation_t {
        int atom = 0;
        int translated = 0;
        const lxml::atom_table_t* output = nullptr;
    };

    void fill();
    int translate(int atom, lxml::atom_table_t& output);

    lxml::atom_table_t* table;
    const namespaces_t& namespaces;
    unsigned changes;
    string_table_t strings;
    std::array<translation_t, 128> translations;
};

using keywords_ptr_t = std::shared_ptr<keywords_t>;

} // namespace ko::xpp

#pragma once

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

/// The atoms of namespaces and keywords in one atom table.
///
/// It borrows the table and the namespace names. It is never looked up by the address of a table:
/// a table may be gone and another one stand in its place, so an object lasts only as long as
/// elements that use its table are being processed.
class keywords_t {
public:
    keywords_t(ko::lxml::atom_table_t* atoms, const namespaces_t& names);

    /// Whether the atoms are those of the element.
    bool is_of(const ko::lxml::element_t& element) const { return element.atoms == table; }
    /// The atoms, under the namespace names of this moment.
    const string_table_t& get();

private:
    void fill();

    ko::lxml::atom_table_t* table;
    const namespaces_t& namespaces;
    unsigned changes;
    string_table_t strings;
};

using keywords_ptr_t = std::shared_ptr<keywords_t>;

} // namespace ko::xpp

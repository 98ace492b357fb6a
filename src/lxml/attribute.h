/// @file
/// An attribute of an element.
#pragma once

#include <string>
#include <string_view>

#include "export.h"
#include "lxml/node.h"

namespace ko::lxml {

/// A pair of atoms by which an attribute is found.
struct attribute_key_t {
    int ns;   ///< atom of the namespace name
    int name; ///< atom of the local name
};

/// An attribute: a name and a value.
///
/// @par Owns
/// Its value; its element owns and deletes it.
/// @par Lives
/// Until it is removed from its element, or with the element.
/// @par Threads
/// Used by one thread at a time, together with its document.
class KO_API attribute_t : public node_t {
public:
    /// @throws ko::exception_t when `table` is null
    attribute_t(atom_table_t* table, int name_id, int ns_id, const std::string& text);
    ~attribute_t() override;

    std::string value; ///< the value, references resolved

protected:
    /// For attributes in the memory of a document.
    /// @throws ko::exception_t when `table` is null
    attribute_t(atom_table_t* table, const attribute_key_t& key, std::string_view text)
        : node_t(table, key.name, key.ns), value(text) {}
};

/// Orders attributes by namespace atom and then by name atom: in the order in which their names
/// first came up in the document, not alphabetically.
struct attr_ptr_cmp_t {
    using is_transparent = void; ///< sets can be searched by a key

    /// @name Whether the first comes before the second
    /// @{

    /// By their atoms.
    bool operator()(const attribute_t* a, const attribute_t* b) const {
        return less(a->ns, a->name, b->ns, b->name);
    }
    bool operator()(const attribute_t* a, const attribute_key_t& b) const {
        return less(a->ns, a->name, b.ns, b.name);
    }
    bool operator()(const attribute_key_t& a, const attribute_t* b) const {
        return less(a.ns, a.name, b->ns, b->name);
    }
    /// @}

private:
    static bool less(int a_ns, int a_name, int b_ns, int b_name) {
        return a_ns != b_ns ? a_ns < b_ns : a_name < b_name;
    }
};

} // namespace ko::lxml

/// @file
/// What elements and attributes have in common.
#pragma once

#include <string>

#include "export.h"
#include "lxml/atom_table.h"

namespace ko::lxml {

class attribute_t;
class element_t;

/// A named node of a document: an element or an attribute.
///
/// @par Owns
/// Nothing: the name is a pair of atoms in the table of the document, which is borrowed.
/// @par Lives
/// As long as the document, unless it is removed before.
/// @par Threads
/// Used by one thread at a time, together with its document.
class KO_API node_t {
public:
    virtual ~node_t();
    node_t(const node_t&) = delete;
    node_t& operator=(const node_t&) = delete;

    /// The node as an element.
    /// @throws ko::exception_t "node cannot be coverted to element"
    element_t* as_element();
    const element_t* as_element() const; ///< @copydoc as_element()
    /// The node as an attribute.
    /// @throws ko::exception_t "node cannot be coverted to attribute"
    attribute_t* as_attribute();
    const attribute_t* as_attribute() const; ///< @copydoc as_attribute()

    const std::string& name_get() const; ///< text of the local name
    const std::string& ns_get() const;   ///< text of the namespace name; empty for none

    atom_table_t* atoms; ///< the table of the owning document
    int name;            ///< atom of the local name
    int ns;              ///< atom of the namespace name; 0 for none

protected:
    /// @throws ko::exception_t when `table` is null
    node_t(atom_table_t* table, int name_id, int ns_id);
};

} // namespace ko::lxml

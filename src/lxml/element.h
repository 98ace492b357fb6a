/// @file
/// An element of a document.
#pragma once

#include <iosfwd>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"
#include "lxml/attribute.h"
#include "lxml/attribute_set.h"
#include "lxml/child_list.h"
#include "lxml/named_children.h"
#include "lxml/node.h"

namespace ko::lxml {

class atom_map_t;
class document_t;
class xpath_t;
struct attribute_text_t;

/// An element: a name, attributes, children and text.
///
/// Mixed content is not modelled: an element has two texts, one gathered outside and one inside
/// CDATA sections.
///
/// @par Owns
/// Its attributes and texts, but not its children: the document that made it owns it, whether it
/// hangs in a tree or not.
/// @par Lives
/// As long as its document, unless a call frees it before.
/// @par Threads
/// Used by one thread at a time, together with its document. A look-up by name adds an unknown
/// name to the document's atom table, which makes it a change of the document even where it is
/// `const`; `attribute_find`, `child_find` and `children_named` never do, so that several threads
/// may use them, and the members, of a document that nobody changes.
/// @par After an exception
/// The tree is whole, also where memory ran out: what was linked, set or freed before stays so.
/// @code
/// lxml::document_t document;
/// document.load_from_string("<rack><amp id='1' gain='-3'/><amp id='2'/></rack>");
/// for (const lxml::element_t* amp : document.root->children) {
///     std::cout << amp->attribute_get_value("gain", "0") << ' ';
/// }
/// std::cout << "dB" << '\n'; // -3 0 dB
/// @endcode
class KO_API element_t : public node_t {
public:
    /// Children in document order.
    using children_t = child_list_t;
    /// Attributes by namespace and name, in the order of their atoms.
    using attributes_t = attribute_set_t;
    /// Children of one name.
    using named_t = named_children_t;

    /// Adds `child` after the other children.
    ///
    /// Whether it already hangs somewhere is not checked; an element linked twice is met twice.
    /// It must not be an element that holds this one, at whatever depth.
    /// @return `child`
    /// @throws ko::exception_t when `child` is null, this element, or of another document
    element_t* append(element_t* child);
    /// Adds `child` before another child; before null it is added after the others.
    /// @return `child`
    /// @throws ko::exception_t as `append`, or "element_t::insert_before() -- not a child of the
    ///         element"
    element_t* insert_before(element_t* child, const element_t* before);
    /// Unlinks a child from this element and frees it with its descendants. It costs as much as
    /// there are children before it and descendants.
    /// @throws ko::exception_t "element_t::child_erase() -- not a child of the element"; as
    ///         `children_delete`
    void child_erase(element_t* child);

    /// @name Attributes
    /// @{

    /// The attribute with a pair of atoms, or null.
    attribute_t* attribute_get(int name_id, int ns_id);
    const attribute_t* attribute_get(int name_id, int ns_id) const;
    /// The attribute with a name and a namespace name, or null.
    attribute_t* attribute_get(const std::string& name_text, const std::string& ns_text);
    const attribute_t* attribute_get(const std::string& name_text,
                                     const std::string& ns_text) const;
    /// The attribute with a name and no namespace, or null.
    attribute_t* attribute_get(const std::string& name_text);
    const attribute_t* attribute_get(const std::string& name_text) const;
    /// A copy of the value of the attribute without namespace, or of `default_value`.
    std::string attribute_get_value(const std::string& name_text,
                                    const std::string& default_value) const;
    /// The attribute with a name and a namespace name, or null; adds no name to the atom table.
    attribute_t* attribute_find(const std::string& name_text, const std::string& ns_text = "");
    /// @copydoc attribute_find(const std::string&, const std::string&)
    const attribute_t* attribute_find(const std::string& name_text,
                                      const std::string& ns_text = "") const;
    /// Sets the value of an attribute, which is made when missing.
    void attribute_set_ns(const std::string& name_text, const std::string& ns_text,
                          const std::string& value);
    /// Sets the value of an attribute without namespace.
    void attribute_set(const std::string& name_text, const std::string& value);
    /// Deletes an attribute. @return whether there was one
    bool attribute_remove(const std::string& name_text, const std::string& ns_text = "");
    /// @}

    /// @name Children by name
    /// These functions add no name to the atom table.
    /// @{

    /// The first child with a name and a namespace name, or null.
    element_t* child_find(const std::string& name_text, const std::string& ns_text = "");
    /// @copydoc child_find(const std::string&, const std::string&)
    const element_t* child_find(const std::string& name_text,
                                const std::string& ns_text = "") const;
    /// The children with a name and a namespace name, for a `for` over them. While it runs, the
    /// children that are still to come must not be erased.
    named_t children_named(const std::string& name_text, const std::string& ns_text = "") const;
    /// @}

    /// @name Trees
    /// @{

    /// Makes a copy in `target`, not attached anywhere: names, attributes and, when `deep`, the
    /// children. Texts and CDATA are left out; callers rely on it (quirk "bare clones").
    element_t* clone(document_t& target, bool deep) const;
    /// Makes a copy in `target`, not attached anywhere: names, attributes, texts, CDATA and all
    /// descendants. Prefixes are a matter of the documents; `document_t::copy` copies them.
    element_t* clone_whole(document_t& target) const;
    /// Frees all descendants.
    /// @throws ko::exception_t "element_free() -- given element not in document" when an element
    ///         is linked twice; what was freed before is unlinked
    void children_delete();
    /// Unlinks `e` wherever it is a child below this element and frees its descendants; `e`
    /// itself is not freed. The sibling after an unlinked `e` is not searched; where `e` was the
    /// last child, the search starts again at the first.
    ///
    /// It costs at least as much as there are elements below this one, since `e` may hang in
    /// several places: to free a child that hangs here only, `child_erase` is the cheaper way.
    /// @throws ko::exception_t as `children_delete`
    void child_remove(const element_t* e);
    /// @}

    /// @name Path queries
    /// `lxpath/lxpath.h` describes the language.
    /// @{

    /// Appends the nodes that `path` selects below this element; the document owns them.
    /// @throws ko::exception_t as `xpath_t::parse`
    void select_nodes(const std::string& path, std::list<node_t*>& out) const;
    /// The first node that `path` selects, or null. What comes after it is not looked for.
    node_t* select_single_node(const std::string& path) const;
    /// The same with a path that was parsed before, which saves reading it each time.
    void select_nodes(const xpath_t& path, std::list<node_t*>& out) const;
    /// @copydoc select_nodes(const xpath_t&, std::list<node_t*>&) const
    node_t* select_single_node(const xpath_t& path) const;
    /// @}

    /// Writes the element and its subtree as XML.
    ///
    /// Before the root of a document stands the XML declaration. Line breaks and indentation are
    /// written around this element's own tags only, never inside its subtree; text of an element
    /// with children is written as it is, text of a leaf is escaped. Callers rely on these bytes
    /// (quirks "pretty on top only", "raw text above").
    /// @param os where to; its errors stay in its state
    /// @param indent number of spaces before the tags
    /// @param parent_ns atom of the parent's namespace, 0 at the top
    /// @param trim strips white space around the text of elements that have children
    /// @param pretty writes line breaks and indentation
    void print(std::ostream& os, int indent, int parent_ns, bool trim, bool pretty) const;

    document_t* document;    ///< the owner
    children_t children;     ///< child elements, not owned
    attributes_t attributes; ///< owned
    std::string text;        ///< character data outside CDATA sections, concatenated
    std::string cdata;       ///< character data inside CDATA sections, concatenated

protected:
    /// Elements are freed by their document.
    ~element_t() override;

private:
    friend class document_t;
    friend class sax_t;
    friend struct by_atoms_t;

    /// The memory is the document's.
    static void operator delete(void* place) noexcept;

    /// @param names, list serve one element after the other
    KO_LOCAL element_t* clone_one(document_t& target, bool whole, atom_map_t& names,
                                  std::vector<attribute_text_t>& list) const;
    KO_LOCAL element_t* clone_tree(document_t& target, bool deep, bool whole) const;
    /// Sets the value of an attribute, which is made when missing.
    KO_LOCAL void attribute_put(const attribute_key_t& key, std::string_view value);

    element_t(document_t* owner, int name_id, int ns_id);
};

/// Selects below the root of `doc` and takes the first node when it is an element.
/// @param required true throws where there is none
/// @return the element or null
/// @throws ko::exception_t "element '%s' not found in document"; a path that does not parse
KO_API element_t* element_find(document_t& doc, const std::string& path, bool required);
/// The same below `from`.
KO_API element_t* element_find(element_t* from, const std::string& path, bool required);
/// The same below a constant element.
KO_API const element_t* element_find(const element_t* from, const std::string& path,
                                     bool required);

/// @name With a path that was parsed before
/// In the message stands the path as it would be written.
/// @{

/// The element, as with the text of a path.
KO_API element_t* element_find(document_t& doc, const xpath_t& path, bool required);
KO_API element_t* element_find(element_t* from, const xpath_t& path, bool required);
KO_API const element_t* element_find(const element_t* from, const xpath_t& path, bool required);
/// @}

} // namespace ko::lxml

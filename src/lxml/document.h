/// @file
/// A document: the owner of a tree of elements.
#pragma once

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "errorcode/errorcode.h"
#include "export.h"
#include "lxml/atom_table.h"
#include "lxml/element.h"
#include "lxml/element_set.h"
#include "lxml/load_options.h"
#include "lxml/write.h"

namespace ko::lxml {

class pool_t;

/// An XML document: the owner of all elements made in it, of their names and of the namespace
/// prefixes met while loading.
///
/// @par Owns
/// Every element that was made in it, in a tree or not, those of an earlier tree included when
/// another one is loaded; its destructor deletes them. A shared atom table is borrowed.
/// @par Lives
/// Longer than what points to its elements; a shared atom table must outlive it.
/// @par Threads
/// A document and its elements are used by one thread at a time.
/// @par After an exception
/// A load that throws leaves `root` as it was; elements made before the failure stay owned by the
/// document. A thread that is cancelled while it waits for a file leaves the same, and no line on
/// standard output.
/// @code
/// lxml::document_t document;
/// document.load_from_string("<rack><amp id='1'/></rack>");
/// lxml::element_t* amp = document.element_create("amp", "");
/// amp->attribute_set("id", "2");
/// document.root->append(amp);
/// document.save("rack.xml", true, true);
/// std::cout << document.root->children.size() << '\n'; // 2
/// @endcode
class KO_API document_t {
public:
    /// Every element of the document, by address.
    using elements_t = element_set_t;

    /// An empty document with an atom table of its own.
    document_t();
    /// An empty document that names its nodes in the caller's table.
    /// @throws ko::exception_t when `shared` is null
    explicit document_t(atom_table_t* shared);
    /// A document with an atom table of its own and a deep clone of the tree of `source`: names,
    /// attributes and children, but no text, no file name and no prefixes.
    document_t(const document_t& source);
    document_t& operator=(const document_t&) = delete;
    ~document_t();

    /// @name Elements
    /// @{

    /// Makes an element that is not attached anywhere.
    element_t* element_create(const std::string& name, const std::string& ns);
    /// Deletes an element and its attributes; its children are not touched. Nothing may refer to
    /// it any more; freeing the root makes `root` null.
    /// @throws ko::exception_t "element_free() -- given element not in document"
    void element_free(element_t* e);
    /// Unlinks `e` from the tree, frees its descendants and `e` itself. Of an element that does
    /// not hang below the root, and of the root, the descendants stay.
    /// @throws ko::exception_t "element_free() -- given element not in document"
    ///
    /// The whole tree is searched; `element_t::child_erase` is for who knows the parent.
    void element_remove(element_t* e);
    /// Frees all elements and forgets the root, the prefixes, the file name and the stylesheet.
    /// The atoms stay.
    void clear() noexcept;
    /// Replaces what the document holds by a copy of `source`: the tree with its texts and CDATA,
    /// prefixes, file name and stylesheet. An exception leaves the document as it was, but for
    /// its atoms. A document is not copied onto itself.
    void copy(const document_t& source);
    /// @}

    /// @name Loading
    /// Errors are those of `ko::xml::expat_parser_t::parse` and `parse_buffer`.
    /// @{

    /// Builds the tree of a file and makes it the root; sets `file_name`.
    ///
    /// A failure is also reported as one line on standard output.
    /// @return true
    bool load(const std::string& file);
    /// Builds the tree of a file; `root` and `file_name` stay.
    /// @return the top element
    element_t* load_raw(const std::string& file);
    /// Builds the tree of a text and makes it the root.
    /// @return true
    bool load_from_string(const std::string& text);
    /// Builds the tree of a text; `root` stays.
    /// @return the top element
    element_t* load_from_string_raw(const std::string& text);
    /// @}

    /// @name Loading with options
    /// A failure, and the cancellation of the thread, leaves `root` and `file_name` as they were,
    /// and with `discard_on_failure` the elements and the prefixes too; atoms stay.
    /// @{

    /// Builds the tree of a file and makes it the root; sets `file_name`.
    /// @return true
    /// @throws ko::lxml::load_error_t with the code and the message of `load(file)`
    bool load(const std::string& file, const load_options_t& options);
    /// Builds the tree of what is left of a stream and makes it the root.
    /// @return true
    /// @throws ko::lxml::load_error_t; one of `xml_file_read` where the stream goes bad
    bool load(std::istream& in, const load_options_t& options);
    /// Builds the tree of a text and makes it the root.
    /// @return true
    /// @throws ko::lxml::load_error_t with the code and the message of `load_from_string(text)`
    bool load_from_string(const std::string& text, const load_options_t& options);
    /// Where the start tag of an element stands that was loaded with `positions`.
    /// @return null for any other element; valid until the element is freed
    const position_t* position_get(const element_t* e) const;
    /// @}

    /// Writes the tree to a file; a document without a root gives an empty file.
    ///
    /// The file is truncated first, so that a failure leaves a part of it.
    /// @param trim, pretty see `element_t::print`
    /// @throws ko::exception_t "error opening file %s" or "error writing file %s"
    void save(const std::string& file, bool trim, bool pretty);

    /// Writes the tree so that loading it again gives the same tree: names, attributes, texts,
    /// CDATA and the order of children; prefixes may become others.
    ///
    /// Writes UTF-8, and escapes whatever must be, CDATA and names of namespaces included. Each
    /// prefix is declared on the root and stands for one namespace; attributes in a namespace
    /// without a prefix get one, such as "ns1". A layout that `options` ask for changes white
    /// space between elements and nothing else. The document, its atoms included, stays as it is.
    /// @param os where to; its errors stay in its state
    /// @throws ko::exception_t before anything is written:
    ///         "document_t::write() -- document has no root", or "document_t::write() -- %s '%s'
    ///         cannot be written as XML" where a name or a character is none of XML, CDATA holds
    ///         a carriage return, `load` cannot take a namespace name (it holds "|" or begins
    ///         with a double quote), or an element holds itself
    void write(std::ostream& os, const write_options_t& options = {}) const;

    /// Writes the tree as `write` does to a new file, brings it to the device and puts it in the
    /// place of the old one in one step.
    ///
    /// Whatever happens, power cuts included, there is the old file or the new one, whole. The
    /// new one has the mode of the old one, and its owner where that is allowed; a symbolic link
    /// is followed. A process that is killed may leave files ".FILE." and eight random characters
    /// beside it, which do not matter to later calls.
    /// @throws ko::exception_t as `write`; "error opening file %s" where no file can be made in
    ///         the folder, or the old one is no ordinary file or must not be written; "error
    ///         writing file %s", also where neither a hard link nor a copy can keep the old one.
    ///         That is in its place then and nothing beside it, unless undoing fails, too
    void save_atomically(const std::string& file, const write_options_t& options = {}) const;

    /// @name Namespaces
    /// There is one binding a prefix and one a namespace in the whole document; the last one
    /// wins. The functions add their arguments to the atom table; the texts that they return live
    /// as long as it.
    /// @{

    /// Binds a prefix and a namespace name to each other.
    void add_ns_prefix(const std::string& prefix, const std::string& uri);
    /// The prefix of a namespace name; the empty string when there is none.
    const std::string& uri_prefix_get(const std::string& uri);
    /// The namespace name of a prefix; the empty string when there is none.
    const std::string& uri_prefix_expand(const std::string& prefix);
    /// @}

    std::map<int, int> uri_to_prefix; ///< atoms of prefixes by those of namespace names
    std::map<int, int> prefix_to_uri; ///< atoms of namespace names by those of prefixes
    std::string file_name;            ///< path given to the last `load`
    std::string stylesheet;           ///< when not empty, `save` refers to it
    elements_t elements;              ///< every element; owned
    element_t* root;                  ///< top of the tree, or null
    atom_table_t* atoms;              ///< the table in use
    atom_table_t own_atoms;           ///< the document's own table

private:
    friend struct ko::layout_t;
    friend class element_t;
    friend struct by_atoms_t;
    friend class sax_t;

    class KO_LOCAL load_guard_t;
    using positions_t = std::unordered_map<const element_t*, position_t>;

    KO_LOCAL element_t* element_make(int name_id, int ns_id);
    /// Frees an element with its descendants, each of which is linked in one place and the
    /// document's, so that nothing is thrown. NOLINTNEXTLINE(bugprone-exception-escape)
    KO_LOCAL void tree_free(element_t* e) noexcept;
    KO_LOCAL void position_set(const element_t* e, const position_t& position);
    /// Makes sure that the document owns `e`, before which nothing of `e` may be touched: an
    /// element that is linked in two places is freed when the first of them is.
    /// @throws ko::exception_t "element_free() -- given element not in document"
    KO_LOCAL void require_owned(const element_t* e) const;

    KO_LOCAL void take(document_t& other) noexcept;
    KO_LOCAL void elements_free() noexcept;
    KO_LOCAL void element_destroy(element_t* e) noexcept;

    std::unique_ptr<positions_t> positions; ///< null when there are none
    std::unique_ptr<pool_t> pool;           ///< where the elements lie; null before the first
};

/// Splits a name at its first ":".
/// @param qualified "prefix:local" or "local"
/// @param local receives what follows the colon, or the whole name
/// @param prefix receives what stands before the colon; unchanged without one
KO_API void split_ns(const std::string& qualified, std::string& local, std::string& prefix);

} // namespace ko::lxml

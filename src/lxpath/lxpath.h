/// @file
/// Path queries: the small language of `element_t::select_nodes`.
///
///     path     = any number of "/", step, any number of ("/" step)
///     step     = nametest, filter
///     nametest = optional "@", part, optional (":" part)
///     part     = double-quoted text, or a run of letters, digits, "." and "_"
///     filter   = nothing, or "[" path, optional ("=" double-quoted value), "]"
///
/// A step selects children, with "@" attributes. The namespace of an element test is a prefix
/// that the document expands or, quoted, the namespace name itself; that of an attribute test is
/// always the namespace name as written. Without one it is none. Filters may stand inside each
/// other up to 200 levels deep.
///
/// @code
/// lxml::document_t document;
/// document.load_from_string("<rack><amp id='1'/><amp id='2'><fan/></amp></rack>");
/// lxml::xpath_t path; // read once, for any number of documents
/// path.parse("amp[@id=\"2\"]/fan");
/// std::list<lxml::node_t*> found;
/// document.root->select_nodes(path, found);
/// std::cout << found.front()->name_get() << '\n'; // fan
/// @endcode
#pragma once

#include <list>
#include <memory>
#include <string>

#include "export.h"
#include "lxml/lxml.h"

namespace ko::lxml {

/// A part of a path that selects nodes.
///
/// @par Owns
/// Its own parts; what it selects is the document's.
/// @par Lives
/// Independent of documents.
/// @par Threads
/// Each object is read by one thread at a time. Selecting uses the document as a look-up by name
/// does.
/// @par After an exception
/// It can be read again; nodes selected before stay in the list.
class KO_API xbase_t {
public:
    xbase_t();
    xbase_t(const xbase_t&) = delete;
    xbase_t& operator=(const xbase_t&) = delete;

    /// Appends what is selected for one context node to `out`.
    virtual void matches(node_t* context, std::list<node_t*>& out) const = 0;
    virtual ~xbase_t();

    /// Appends what is selected for every node of `in`, in order, to `out`, which may be the same
    /// list.
    void multi_matches(const std::list<node_t*>& in, std::list<node_t*>& out) const;
};

class xnode_t;

/// A whole path: a sequence of steps. Parsed once, it can be used on any document.
class KO_API xpath_t : public xbase_t {
public:
    xpath_t();
    ~xpath_t() override;

    void matches(node_t* context, std::list<node_t*>& out) const override;
    /// Reads the path at `s`. @return the position after it
    const char* _parse(const char* s);
    /// Reads a whole path.
    /// @throws ko::exception_t "parse error : expecting %c, got %c" (the text ends at a character
    ///         that is the zero at the end), "path filters nested more than 200 levels deep", or
    ///         "path is null"
    void parse(const char* s);

    std::list<std::unique_ptr<xnode_t>> steps; ///< in written order
};

/// One name test.
class KO_API xname_t : public xbase_t {
public:
    xname_t();
    ~xname_t() override;

    void matches(node_t* context, std::list<node_t*>& out) const override;
    /// Reads the test at `s`. @return the position after it
    const char* _parse(const char* s);

    bool kind;        ///< true tests attributes ("@")
    std::string name; ///< local name
    std::string ns;   ///< namespace prefix, or namespace name
    bool quoted;      ///< the first part was written in double quotes
};

/// An optional predicate in brackets.
class KO_API xfilter_t : public xbase_t {
public:
    xfilter_t();
    ~xfilter_t() override;

    void matches(node_t* context, std::list<node_t*>& out) const override;
    /// Reads the filter at `s`, if there is one. @return the position after it
    const char* _parse(const char* s);

    std::unique_ptr<xpath_t> predicate; ///< the path in brackets; null when absent
    std::string value;                  ///< text an attribute must have; empty for any result
};

/// One step: a name test and a filter.
class KO_API xnode_t : public xbase_t {
public:
    xnode_t();
    ~xnode_t() override;

    void matches(node_t* context, std::list<node_t*>& out) const override;
    /// Reads the step at `s`. @return the position after it
    const char* _parse(const char* s);

    xname_t name;     ///< what is tested
    xfilter_t filter; ///< what the nodes must have
};

/// Marks the bytes that may stand in an unquoted name: A-Z, a-z, 0-9, "." and "_".
extern KO_API const unsigned char acceptable[256];

/// @name Reading a path
/// `p` is a cursor into a zero-terminated text; null throws a `ko::exception_t`, "path is null".
/// @{

/// Consumes `c`, but never the zero at the end of the text.
/// @throws ko::exception_t "parse error : expecting %c, got %c" when another character is next
KO_API void assert_char(const char*& p, char c);
/// Consumes `c` as `assert_char` does when it is next. @return whether it was
KO_API bool check_char(const char*& p, char c);
/// Whether `c` is next; consumes nothing.
KO_API bool peek_char(const char*& p, char c);
/// Reads a name: a double-quoted text, or the longest run of acceptable characters.
/// @throws ko::exception_t when a quote is not closed
KO_API void copy_str(const char*& p, std::string& out);
/// @}

} // namespace ko::lxml

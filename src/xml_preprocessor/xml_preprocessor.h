/// @file
/// The XML preprocessor: a configuration document in, a processed one out.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "export.h"
#include "lxml/lxml.h"
#include "xml_preprocessor/del_second_map.h"
#include "xml_preprocessor/file_cache.h"
#include "xml_preprocessor/find_file.h"
#include "xml_preprocessor/limits.h"
#include "xml_preprocessor/observer.h"
#include "xml_preprocessor/place.h"
#include "xml_preprocessor/plugin.h"
#include "xml_preprocessor/string_table.h"

namespace ko::xpp {

/// Namespace name of directives unless `set_namespace` says otherwise.
extern KO_API const std::string default_xpp_uri;
/// Namespace name of expression attributes unless `set_namespace` says otherwise.
extern KO_API const std::string default_xpr_uri;

/// Rewrites an element tree into a new one.
///
/// Elements of the directive namespace (loops, conditions, definitions and so on) are executed,
/// all others copied; attributes of the expression namespace are evaluated.
/// `docs/preprocessor.md` describes the directives.
///
/// Source, definitions, included files and what plug-ins generate may belong to documents with
/// different atom tables. Keywords are added to each of these tables. What a document can make it
/// do without an end of its own, nesting "insert" (10000 levels), "include" and "plugin" (200
/// levels) in themselves, ends in an exception; a "for" whose condition stays true does so only
/// where `limits_set` limits the passes.
///
/// @par Owns
/// Its evaluator, its plug-ins and the documents it includes without a cache. The output document
/// and the cache are borrowed.
/// @par Lives
/// Shorter than the output document and the cache. A source must live as long as `process` runs,
/// and as long as a definition in it may still be inserted; so must what a plug-in generated and
/// a document that the host put into the cache. Definitions in files that were included stay
/// valid as long as the preprocessor, or the cache.
/// @par Threads
/// All of them are used by one thread. A plug-in may call back the preprocessor that calls it,
/// `process` included.
/// @par After an exception
/// The output made so far stays in the output document, and the preprocessor can be used again;
/// `trace_get` tells where it arose.
/// @code
/// lxml::document_t source;
/// source.load_from_string("<rack xmlns:x='kobase.org/xmlns/xmlpreprocessor'>"
///                         "<x:repeat index='n' first='1' last='amps'><amp/></x:repeat></rack>");
/// lxml::document_t output;
/// xpp::preprocessor_t preprocessor(output, nullptr);
/// preprocessor.insert_argument("amps", 2);
/// output.root = preprocessor.process(source.root, xpp::preprocessor_t::process_include);
/// std::cout << output.root->children.size() << '\n'; // 2
/// @endcode
class KO_API preprocessor_t {
public:
    class KO_LOCAL imp_t;

    /// What directives may do; a set of bits.
    enum flags_e {
        include_comments = 1, ///< for callers that read the flags; no directive consults it
        process_include = 2   ///< "include" directives are executed
    };

    /// Finds the file of an "include": gets the text of its attribute "file" and the directive,
    /// gives the path to load, or the empty string where there is none.
    using resolver_t =
        std::function<std::string(const std::string& file, const ko::lxml::element_t& directive)>;

    /// @param output where the new elements are made
    /// @param cache keeps included documents, so that each file is read once; may be null, and
    ///        then each "include" reads its file anew
    preprocessor_t(ko::lxml::document_t& output, ko::xpp::file_cache_t* cache);
    preprocessor_t(const preprocessor_t&) = delete;
    preprocessor_t& operator=(const preprocessor_t&) = delete;
    ~preprocessor_t();

    /// Processes a tree.
    ///
    /// Variables and definitions stay from call to call. The new elements are children of an
    /// element "temporary", which stays in the output document.
    /// @param source the top element; not changed
    /// @param flags what directives may do
    /// @return the first new top element, in the output document, or null when nothing came out;
    ///         it is not made the root
    /// @throws ko::exception_t what a directive, an expression or the reading of a file reports,
    ///         or a null `source`; what a plug-in throws, unchanged
    ko::lxml::element_t* process(ko::lxml::element_t* source, flags_e flags);

    /// @name Arguments
    /// Sets a variable that directives and expression attributes can read. A text is the value
    /// itself and not evaluated. An integer that does not fit 32 bits becomes a floating-point
    /// number.
    /// @{
    void insert_argument(const std::string& name, double value);
    void insert_argument(const std::string& name, int value);
    void insert_argument(const std::string& name, unsigned value);
    void insert_argument(const std::string& name, long value);
    void insert_argument(const std::string& name, unsigned long value);
    void insert_argument(const std::string& name, long long value);
    void insert_argument(const std::string& name, unsigned long long value);
    void insert_argument(const std::string& name, bool value); ///< the integer 0 or 1
    void insert_argument(const std::string& name, const std::string& value);
    void insert_argument(const std::string& name, const char* value); ///< throws on null
    /// @}

    /// Back to the default namespace names.
    void set_namespace();
    /// Sets the namespace names of directives and of expression attributes.
    void set_namespace(const std::string& xpp, const std::string& xpr);

    /// Adds a directory to the search path of includes.
    ///
    /// An entry always ends in a backslash, on every system; one is added where it is missing.
    /// The name of a file follows it directly. The directory of the including file is searched
    /// after the entries.
    /// @throws ko::exception_t when `dir` is empty
    void search_path_add(const std::string& dir);
    /// Whether an "include" without "searchpath" uses the search path; true at first.
    void search_path_use_default(bool on);

    /// Registers a plug-in under a name and owns it from then on.
    ///
    /// A plug-in registered there before is not deleted; it is the caller's again. A plug-in
    /// registered under several names is deleted once.
    /// @throws ko::exception_t when `plugin` is null
    void register_plugin(const std::string& name, plugin_t* plugin);

    /// @name What happened
    /// @{

    /// Where the last failure of `process` arose, the innermost place first; empty after a
    /// `process` that succeeded. While `process` runs, in a plug-in, an observer or a resolver,
    /// the places around what it is doing. Lines come from documents that were loaded with
    /// positions; included files are loaded with positions when the source was.
    std::vector<place_t> trace_get() const;
    /// The files that the last `process` read, each once, in the order in which it first did.
    /// What a cache kept is not read.
    // A copy: the next `process` changes the list.
    // cppcheck-suppress returnByReference
    std::vector<std::string> files_get() const;
    /// Sets who is told what `process` does; null for nobody.
    void observer_set(observer_t* observer);
    /// @}

    /// @name What decides
    /// @{

    /// Sets how the file of an "include" is found; an empty function sets the search back.
    ///
    /// With a resolver neither the search path nor "searchpath" counts, and a cache keeps a
    /// document under its path. An empty path is "failed to load xml file:" and the file. What
    /// the resolver throws ends `process` like an exception of a plug-in.
    void resolver_set(resolver_t resolver);
    /// Sets the limits of each `process` that begins after it.
    void limits_set(const limits_t& limits);
    // cppcheck-suppress returnByReference
    limits_t limits_get() const; ///< the limits in force

    /// The evaluator of all expressions: its variables, functions, macros and limits.
    ///
    /// It lives as long as the preprocessor. What is changed counts from the next expression on.
    ko::alg::algebra_t& algebra_get();
    /// @}

private:
    friend struct ko::layout_t;

    imp_t* imp;
};

/// The bits of both.
inline preprocessor_t::flags_e operator|(preprocessor_t::flags_e a, preprocessor_t::flags_e b) {
    return static_cast<preprocessor_t::flags_e>(static_cast<int>(a) | static_cast<int>(b));
}

} // namespace ko::xpp

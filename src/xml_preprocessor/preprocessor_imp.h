/// @file
/// The state of a preprocessor.
///
/// A source tree is processed by a stack of blocks (block/block_stack.h). A block stands for one
/// element that is being executed or copied, and hands out the children that are to be processed
/// into its output parent, once or in several passes. Nothing recurses over the depth of a tree
/// or of directives.
///
/// Elements are recognised by atoms, and the atoms of a source, of included files, of definitions
/// and of what plug-ins generate may come from different tables. So every block refers to the
/// keywords of the table that its children use: those of the block below when the table is the
/// same, those of the preprocessor's own table, or some made for this block.
#pragma once

#include <map>
#include <set>
#include <string>

#include "algebra/algebra.h"
#include "lxml/lxml.h"
#include "xml_preprocessor/includes.h"
#include "xml_preprocessor/keywords.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace ko::xpp {

/// The state of a preprocessor, and the expressions that directives evaluate.
///
/// Ownership is that of `preprocessor_t`. Elements in `defines` are borrowed.
class preprocessor_t::imp_t {
public:
    imp_t(ko::lxml::document_t& output, file_cache_t* cache);
    imp_t(const imp_t&) = delete;
    imp_t& operator=(const imp_t&) = delete;
    ~imp_t();

    ko::lxml::element_t* process(ko::lxml::element_t& source, flags_e requested);
    void namespaces_set(const std::string& xpp, const std::string& xpr);
    void plugin_add(const std::string& name, plugin_t* plugin);

    /// @name Expressions
    /// All but the last throw what the evaluator reports.
    /// @{
    void evaluate_void(const std::string& expression);
    bool evaluate_bool(const std::string& expression); ///< whether the integer reading is not 0
    int evaluate_int(const std::string& expression);
    std::string evaluate_string(const std::string& expression);
    /// The value as text; the expression itself where it cannot be evaluated.
    std::string evaluate_bstr(const std::string& expression);
    /// @}

    /// The value of an attribute, evaluated when it is an expression attribute.
    std::string value_of(const ko::lxml::attribute_t& attribute, const string_table_t& names);

    /// The keywords for an element met inside a block that has the keywords `nearest`.
    keywords_ptr_t keywords_for(const ko::lxml::element_t& element,
                                const keywords_ptr_t& nearest) const;

    /// What was included; outlives the plug-ins, which may have made elements in its documents.
    includes_t includes;
    del_second_map_t<std::string, plugin_t*> plugins;
    ko::lxml::document_t& document; ///< the output
    ko::alg::algebra_t algebra;
    std::map<std::string, ko::lxml::element_t*> defines;
    int flags = -1;
    limits_t limits;
    observer_t* observer = nullptr;
    resolver_t resolver;
    std::vector<place_t> trace;
    std::vector<std::string> files;

    /// @name Levels of nesting in progress
    /// @{
    unsigned insert_depth = 0;
    unsigned include_depth = 0;
    unsigned plugin_depth = 0;
    /// @}

private:
    friend class source_scope_t;

    namespaces_t namespaces;
    /// Of the cache's table; without a cache of the source's, and null between calls.
    keywords_ptr_t known;
    bool has_cache;
    std::set<plugin_t*> owned_plugins; ///< every plug-in ever registered, the replaced included
};

} // namespace ko::xpp

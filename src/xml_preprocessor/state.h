/// @file
/// What a preprocessor keeps from call to call.
///
/// The way through this module: the facade (xml_preprocessor.cpp) makes a run and a stack of
/// blocks (blocks.h), which copies elements and executes directives (directives.h). A block
/// stands for one directive in execution and hands out the children that are to be processed into
/// its output parent, once or in several passes. Nothing recurses over the depth of a tree or of
/// directives. What all of them share is here and in the run (run.h), through which they reach
/// it.
#pragma once

#include <exception>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "xml_preprocessor/del_second_map.h"
#include "xml_preprocessor/expressions.h"
#include "xml_preprocessor/includes.h"
#include "xml_preprocessor/keywords.h"
#include "xml_preprocessor/limits.h"
#include "xml_preprocessor/observer.h"
#include "xml_preprocessor/plugin.h"

namespace ko::xpp {

class run_t;

/// `preprocessor_t::resolver_t`.
using include_resolver_t =
    std::function<std::string(const std::string& file, const lxml::element_t& directive)>;

/// What a "define" remembers: the directive, borrowed, and the keywords of its table.
struct definition_t {
    lxml::element_t* element;
    keywords_ptr_t keywords;
};

/// What outlives a call of `process`. Ownership is that of `preprocessor_t`.
class state_t {
public:
    state_t(lxml::document_t& output, file_cache_t* cache, const namespaces_t& names);
    state_t(const state_t&) = delete;
    state_t& operator=(const state_t&) = delete;
    ~state_t();

    void namespaces_set(const std::string& xpp, const std::string& xpr);
    void plugin_add(const std::string& name, plugin_t* plugin);

    /// What was included; outlives the plug-ins, which may have made elements in its documents.
    includes_t includes;
    del_second_map_t<std::string, plugin_t*> plugins;
    lxml::document_t& document; ///< the output
    expressions_t expressions;
    std::map<std::string, definition_t> defines;
    limits_t limits;
    observer_t* observer = nullptr;
    include_resolver_t resolver;

    namespaces_t namespaces;
    keywords_ptr_t cache_keywords; ///< of the cache's table; null without a cache

    run_t* run = nullptr;            ///< the innermost one in progress
    std::vector<place_t> trace;      ///< of the last failure
    std::exception_ptr traced;       ///< what `trace` belongs to, until the outermost run ends
    std::vector<std::string> files;  ///< read by the last outermost run
    std::set<std::string> files_set; ///< the same

private:
    std::set<plugin_t*> owned_plugins; ///< every plug-in ever registered, the replaced included
};

} // namespace ko::xpp

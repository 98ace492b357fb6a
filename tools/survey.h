/// @file
/// What can be said about a document without running it.
///
/// A survey walks the trees of documents once, keeps what it learns about names, definitions and
/// includes, and reports what is wrong by itself: what does not depend on other documents or on
/// what a run does. What needs all documents of a run is asked of it afterwards.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "diagnostic.h"
#include "lxml/lxml.h"
#include "vocabulary.h"

namespace tool {

/// An attribute by its local name, as directives look for it: without a namespace first.
const ko::lxml::attribute_t* attribute_of(const ko::lxml::element_t& element,
                                          const std::string& name);

/// @name Messages that a survey and a run have in common
/// @{
std::string expression_message(const std::string& attribute, const std::string& element,
                               const std::string& reported);
std::string directive_unknown_message(const std::string& name);
std::string text_dropped_message(const std::string& name);
/// @}

/// Walks documents.
class survey_t {
public:
    using places_t = std::map<std::string, ko::xpp::place_t>;

    /// @param out receives what is wrong; must outlive this object
    explicit survey_t(diagnostics_t& out) : diagnostics(out) {}

    /// Looks at a document.
    /// @param root its top element
    /// @param is_included whether only the children of the top element go into the output
    void document_add(const ko::lxml::element_t& root, bool is_included);

    /// @name What was found; names with the place where they were first met
    /// @{
    const places_t& names_read() const { return read; }
    const places_t& names_set() const { return set; }
    const places_t& definitions() const { return defined; }
    /// Every name in an expression, in a string of one, or set: what can be read.
    const std::set<std::string>& names_mentioned() const { return mentioned; }
    const std::vector<const ko::lxml::element_t*>& includes() const { return included; }
    /// @}

    /// Reports names that are read and that nothing sets: no document, and none of `given`.
    void unset_names_report(const std::set<std::string>& given);
    /// Reports definitions in `file` that are inserted nowhere, unless some name is computed.
    void unused_definitions_report(const std::string& file);

    /// What may be wrong with the names in an expression that failed, to be added to its message;
    /// empty when nothing is known.
    std::string hint(const std::string& expression, const std::set<std::string>& given) const;

private:
    struct node_t {
        const ko::lxml::element_t* element;
        const directive_rule_t* parent;
    };

    void visit(const node_t& node, std::vector<node_t>& pending);
    void directive(const ko::lxml::element_t& element, const directive_rule_t& rule);
    void directive_attributes(const ko::lxml::element_t& element, const directive_rule_t& rule);
    void attribute(const ko::lxml::element_t& element, const attribute_rule_t& rule,
                   const ko::lxml::attribute_t& attribute);
    void values(const ko::lxml::element_t& element, const std::string& list);
    void collect(const ko::lxml::element_t& element, const directive_rule_t& rule);
    void in_switch(const ko::lxml::element_t& element);
    void switch_order(const ko::lxml::element_t& element);
    void copied(const ko::lxml::element_t& element);
    void namespace_check(const ko::lxml::element_t& element, const std::string& name);
    void expression(const ko::lxml::element_t& element, const std::string& attribute,
                    const std::string& text);
    void report(severity_t severity, const char* code, const ko::lxml::element_t& element,
                const std::string& message);

    diagnostics_t& diagnostics;
    ko::alg::algebra_t algebra;
    places_t read;
    places_t set;
    places_t defined;
    std::set<std::string> inserted;
    std::set<std::string> mentioned;
    std::set<std::string> quoted;
    std::set<std::string> namespaces_seen;
    std::vector<const ko::lxml::element_t*> included;
    bool computed_insert = false;
};

} // namespace tool

/// @file
/// The evaluation of paths: depth first, and no further than the caller asks.
///
/// The steps of a path, and those of the paths in its filters, are laid out in one array. A
/// search keeps a stack of levels: the children of one element that are still to be tested by one
/// step. A child that passes is the context of the next step, or a result when there is none.
/// Filters are searches of their own on the same stack, which end with the first result that
/// satisfies.
///
/// Names are compared as atoms. Each step resolves its names when it is tried on a document for
/// the first time, which adds to the document's table what it always did: the prefix of an
/// element test, the names of an attribute test. Invariant: the table gets the same texts in the
/// same order as when each step was tried on all its contexts before the next one, for a step is
/// reached only through a node that passed all steps before it, and with it all of their filters:
/// by then these have resolved all that they ever will.
#pragma once

#include <cstddef>
#include <vector>

#include "lxpath/lxpath.h"

namespace ko::lxml {

/// One evaluation of a path or of a part of one, which it borrows as it does the tree.
class evaluation_t {
public:
    explicit evaluation_t(const xpath_t& path) {
        steps.reserve(path.steps.size() + usual_size);
        levels.reserve(usual_size);
        whole = add_path(path);
    }
    explicit evaluation_t(const xnode_t& step) : whole(add_step(&step.name, &step.filter)) {}
    explicit evaluation_t(const xname_t& name) : whole(add_step(&name, nullptr)) {}
    explicit evaluation_t(const xfilter_t& filter) : whole(add_step(nullptr, &filter)) {}

    /// Whether all steps are of this library's own class. A path with others is evaluated step by
    /// step through their virtual functions.
    static bool can_evaluate(const xpath_t& path);

    /// The first node that is selected, or null.
    node_t* first(node_t* context);
    /// Appends all nodes that are selected; after an exception `out` is as it was.
    void all(node_t* context, std::list<node_t*>& out);
    /// Whether a node passes the filter that this was made of.
    bool passes(node_t* node);

private:
    /// Some steps that follow each other in `steps`.
    struct range_t {
        std::size_t begin;
        std::size_t end;
    };

    struct step_t {
        const xname_t* name;        ///< null when only the filter is of interest
        const xfilter_t* filter;    ///< null when there is none
        range_t predicate;          ///< the steps of the filter's path
        bool is_foreign;            ///< the filter's path cannot be evaluated here
        const document_t* document; ///< what the atoms belong to; null before
        const atom_table_t* atoms;
        int name_id; ///< -1 for a text that is not in the table
        int ns_id;   ///< the same
    };

    /// Children that are still to be tested.
    struct level_t {
        element_t::children_t::const_iterator next;
        element_t::children_t::const_iterator end;
        std::size_t step;
    };

    /// A node as a context of steps, which only elements are.
    struct context_t {
        node_t* node;
        element_t* element; ///< null when the node is none
    };

    /// A search for the results of some steps, one after the other. What it put on the stack
    /// is taken off at its end.
    class search_t {
    public:
        search_t(evaluation_t& owner, range_t range, context_t context);
        search_t(const search_t&) = delete;
        search_t& operator=(const search_t&) = delete;
        ~search_t();

        /// The next result, or null.
        node_t* next();

    private:
        void enter(element_t& context, std::size_t step);

        evaluation_t& self;
        const std::size_t base; ///< size of the stack below
        const std::size_t last; ///< the end of the range
        node_t* ready;          ///< a result that is to be given next
    };

    range_t add_path(const xpath_t& path);
    range_t add_step(const xname_t* name, const xfilter_t* filter);
    void add_filters(range_t range);

    static void resolve(step_t& step, element_t& context);
    static bool is_named(const element_t& e, const step_t& step);
    attribute_t* find_attribute(std::size_t step, element_t& context);
    bool passes(context_t context, std::size_t step);
    bool passes_search(context_t context, const step_t& step);
    /// Whether a filter is nothing but an attribute test, which needs no search.
    bool asks_for_attribute(const step_t& step) const;

    /// Few paths have more steps or filters.
    static constexpr std::size_t usual_size = 4;

    std::vector<step_t> steps;
    std::vector<level_t> levels;
    range_t whole = {};
};

} // namespace ko::lxml

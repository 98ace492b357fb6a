/// @file
/// The evaluation of paths: depth first, and no further than the caller asks.
///
/// The steps are laid out flat (`lxpath/flat_path.h`). A search keeps a stack of levels: the
/// children of one element that are still to be tested by one step. A child that passes is the
/// context of the next step, or a result when there is none. Filters are searches of their own on
/// the same stack, which end with the first result that satisfies.
///
/// Names are compared as atoms. Each step resolves its names when it is tried on a document for
/// the first time, which adds to the document's table what it always did: the prefix of an
/// element test, the names of an attribute test. Invariant: the table gets the same texts in the
/// same order as when each step was tried on all its contexts before the next one, for a step is
/// reached only through a node that passed all steps before it, and with it all of their filters:
/// by then these have resolved all that they ever will.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

#include "lxpath/flat_path.h"
#include "lxpath/lxpath.h"

namespace ko::lxml {

/// One evaluation of a path or of a part of one, which it borrows as it does the tree.
class evaluation_t {
public:
    /// Of the path whose steps are put into `steps_get()`.
    evaluation_t();
    explicit evaluation_t(const xpath_t& path);
    explicit evaluation_t(const xnode_t& step);
    explicit evaluation_t(const xname_t& name);
    explicit evaluation_t(const xfilter_t& filter);

    /// Whether all steps are of this library's own class. A path with others is evaluated step by
    /// step through their virtual functions.
    static bool can_evaluate(const xpath_t& path);

    flat_path_t& steps_get() { return steps; }

    /// The first node that is selected, or null.
    node_t* first(element_t* context);
    /// Appends all nodes that are selected; after an exception `out` is as it was.
    void all(node_t* context, std::list<node_t*>& out);
    /// Whether a node passes the filter that this was made of.
    bool passes(node_t* node);

private:
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
        search_t(evaluation_t& owner, std::size_t first, context_t context);
        search_t(const search_t&) = delete;
        search_t& operator=(const search_t&) = delete;
        ~search_t();

        /// The next result, or null.
        node_t* next();

    private:
        void enter(element_t& context, std::size_t step);

        evaluation_t& self;
        const std::size_t base; ///< size of the stack below
        node_t* ready;          ///< a result that is to be given next
    };

    std::size_t add_path(const xpath_t& path);
    void add_step(const xname_t* name, const xfilter_t* filter);
    void add_filter(std::size_t number, const xfilter_t& filter);

    static context_t context_of(node_t* node);
    static void resolve(flat_step_t& step, element_t& context);
    static bool is_named(const element_t& e, const flat_step_t& step);
    attribute_t* find_attribute(std::size_t step, element_t& context);
    bool passes(context_t context, std::size_t step);
    bool passes_search(context_t context, const flat_step_t& step);
    /// Whether a filter is nothing but an attribute test, which needs no search.
    bool asks_for_attribute(const flat_step_t& step) const;

    flat_memory_t memory;
    flat_path_t steps{memory.get()};
    std::pmr::vector<level_t> levels{memory.get()};
    std::size_t first_step = 0;
};

} // namespace ko::lxml

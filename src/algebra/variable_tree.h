/// @file
/// A table of variables of which a copy costs next to nothing.
///
/// An AVL tree (G. M. Adelson-Velsky, E. M. Landis, 1962), ordered by the bytes of the names,
/// whose copies share their nodes. A change first copies those nodes on the way from the root to
/// the changed one that are shared (path copying: J. R. Driscoll, N. Sarnak, D. D. Sleator, R. E.
/// Tarjan, 1989), so that it costs the logarithm of the number of variables, however many copies
/// there are. The heights of the two subtrees of a node differ by at most 1. Only nodes on the
/// way to a new one are turned, and these are not shared any more when they are: turning cannot
/// fail.
///
/// A variable that is gone leaves an absent cell. Whoever has found a cell may thus keep its
/// place, until a change copies nodes, or `tidy` takes the absent ones out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "algebra/cow.h"
#include "algebra/limits.h"
#include "algebra/result.h"

namespace ko::alg {

/// The place of a variable.
struct cell_t {
    std::string name;
    result_t value;
    bool is_present = false; ///< false for a name that has no variable
};

/// Variables by name. Used by one thread at a time; copies may be on different threads. A failure
/// leaves names and values as they were.
class variable_tree_t {
public:
    /// @return the value, or null
    const result_t* find(std::string_view name) const;
    /// @return the cell, which may be absent, or null; it is to be read only
    const cell_t* cell_find(std::string_view name) const;
    /// The cell to change, created absent when missing. It stays where it is as long as the tree
    /// is neither copied nor assigned to.
    /// @param moved set to true when other cells have moved for it, else left alone
    cell_t& cell(std::string_view name, bool& moved);
    /// The value to change, created as the integer 0 when missing.
    result_t& write(std::string_view name);
    /// Appends the names of the variables in ascending order.
    void names_get(std::vector<std::string>& out) const;
    /// A copy that shares no node with this tree.
    variable_tree_t clone() const;
    /// Gives every variable whose name is also in `other` the value that it has there.
    void update_from(const variable_tree_t& other);
    /// True when so many names were added that it pays to take out the absent ones.
    bool is_littered() const { return added >= names_untidied_max + kept; }
    /// Takes out all absent cells. The others stay where they are but those that a copy shares.
    void tidy();
    /// Number of nodes from the root to the deepest leaf.
    unsigned height() const { return height_of(root); }

private:
    struct node_t;
    using link_t = cow_t<node_t>;

    /// Nothing of it is inline: a compiler would unfold the recursion over the subtrees wherever
    /// a tree is let go, and make the library a twelfth larger.
    struct node_t {
        node_t();
        node_t(const node_t& other);
        node_t& operator=(const node_t&) = delete;
        ~node_t();

        cell_t cell;
        unsigned height = 1;
        link_t left;
        link_t right;
    };

    using side_t = link_t node_t::*;

    static unsigned height_of(const link_t& link);
    static void measure(link_t& top);
    static void turn(link_t& top, side_t from, side_t to);
    static void even_out(link_t& top, side_t high, side_t low);
    static void balance(link_t& top);
    static void insert(link_t& top, link_t& leaf);
    cell_t& cell_add(std::string_view name);
    // A compiler would unfold their recursion many times.
    [[gnu::noinline]] static std::size_t own_all(link_t& link);
    [[gnu::noinline]] static void take_apart(link_t& link, std::vector<link_t>& present);
    [[gnu::noinline]] static void put_together(link_t& top, link_t* begin, link_t* end);
    static void names_of(const link_t& link, std::vector<std::string>& out);
    static link_t clone(const link_t& link);
    static void update(const link_t& link, const variable_tree_t& other,
                       variable_tree_t& updated);

    link_t root;
    std::size_t added = 0; ///< number of names since it was tidied
    std::size_t kept = 0;  ///< number of names then
};

} // namespace ko::alg

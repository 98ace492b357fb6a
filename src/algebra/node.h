/// @file
/// The library's own tokens: what a parse leaves in a list of the caller's.
///
/// A node is an item of a syntax, which it shares with the other nodes of the same parse; a tree
/// that the parser has bound needs no further nodes. What a host binds later, by `construct`,
/// hangs on the node as tokens of its own, which may be of the host's classes. The two forms meet
/// in `syntax_of`, which makes one syntax out of both: whatever is evaluated is compiled from
/// one, and a tree that is the parser's alone keeps its programs.
///
/// Trees that a host has bound may be as deep as it likes, so nothing recurses over them:
/// destruction chains the nodes that still have to be deleted through `next`, and replication and
/// `syntax_of` keep a list of what is left to do.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "algebra/syntax.h"
#include "algebra/token.h"
#include "algebra/unit.h"

namespace ko::alg {

struct context_t;
struct names_t;

/// A token of the library's own. It owns the operands that a host has bound to it.
class node_t final : public token_t {
public:
    using position_t = std::list<token_t*>::iterator;

    node_t(std::shared_ptr<const syntax_t> tokens, place_t item_place);
    ~node_t() override;

    bool is_string() const override;
    bool construct(list_t& list, position_t& position, std::string& error) override;
    result_t evaluate(algebra_t& algebra) const override;
    void evaluate(algebra_t& algebra, std::vector<result_t>& values) const override;
    void assign(algebra_t& algebra, const result_t& value) const override;
    token_t* replicate() const override;

    /// Adds the names that the tree reads and calls.
    void names_get(names_t& names) const;
    /// True while a program of this tree runs.
    bool is_running() const { return runs != 0; }

private:
    using pending_t = std::vector<std::pair<const node_t*, node_t*>>;

    const item_t& item() const { return tree->items[place]; }
    bool is_leaf() const;
    void mark_bound();
    bool operation_construct(list_t& list, position_t& position, std::string& error);
    bool call_construct(list_t& list, position_t& position, std::string& error);
    bool takes_nothing_now(position_t next, position_t end);
    void take(unsigned i, list_t& list, position_t position);
    void release(node_t*& pending);
    node_t* shell() const;
    void operands_replicate(pending_t& pending, node_t& copy) const;

    result_t leaf_value(context_t& context) const;
    bool is_as_parsed() const;
    unit_t& unit_of(context_t& context, bool as_list, unit_ptr_t& own) const;
    syntax_t syntax_of() const;

    struct grafting_t;

    std::shared_ptr<const syntax_t> tree;
    place_t place;
    bool without_arguments = false; ///< of a call that a host has bound
    bool is_host_bound = false;
    std::array<token_t*, 3> operands{};
    node_t* next = nullptr; ///< of those to delete
    mutable unit_ptr_t value_unit;
    mutable unit_ptr_t list_unit;
    mutable unsigned runs = 0;
};

/// Appends the tokens that a parse has left, side by side, to a list.
void nodes_append(std::shared_ptr<const syntax_t> tokens, list_t& list);

} // namespace ko::alg

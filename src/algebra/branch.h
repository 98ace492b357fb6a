/// @file
/// The inner nodes of an expression tree.
///
/// Trees may be as deep as an input is long, so nothing recurses over them:
/// - evaluation is carried out by `machine_t`, with a stack of its own;
/// - destruction chains the branches that still have to be deleted through `next`, so that it
///   allocates nothing: a branch hands its operands over before it is deleted;
/// - replication keeps a stack of the branches whose operands still have to be copied; what is
///   copied already hangs in the new tree and goes with it when an allocation fails.
///
/// An operand is a token, and also a branch when `branch` is not null.
#pragma once

#include <array>
#include <string>

#include "algebra/token.h"

namespace ko::alg {

class branch_t;
class machine_t;
struct frame_t;

/// An operand, owned by the branch that has taken it.
struct child_t {
    token_t* token = nullptr;
    branch_t* branch = nullptr;
};

/// A node with operands. It owns them.
class branch_t : public token_t {
public:
    using position_t = std::list<token_t*>::iterator;

    static constexpr unsigned children_max = 3;

    branch_t(const std::string& spelling, int binding_strength);
    ~branch_t() override;

    result_t evaluate(algebra_t& algebra) const final;
    using token_t::evaluate;
    /// Throws "non lvalue".
    void assign(algebra_t& algebra, const result_t& value) const final;
    token_t* replicate() const final;

    /// Does the step of the evaluation that `frame` is at.
    virtual void step(machine_t& machine, const frame_t& frame) const = 0;

    /// Adds the branches among the operands to `pending`.
    void branches_get(std::vector<branch_t*>& pending) const;

protected:
    /// A new node of the same class without operands.
    virtual branch_t* shell() const = 0;

    /// Marks the token as bound, whether or not it finds its operands.
    void bind();
    /// Takes the token at `position` out of `list` as operand `i`.
    void take(unsigned i, list_t& list, position_t position);
    /// The operand, null when the branch has not taken it.
    const child_t& child(unsigned i) const { return children[i]; }

private:
    friend struct branch_probe_t;

    void release(branch_t*& pending);
    void child_set(unsigned i, token_t* token);
    void children_replicate(std::vector<std::pair<const branch_t*, branch_t*>>& pending,
                            branch_t& copy) const;

    std::array<child_t, children_max> children;
    branch_t* next = nullptr; ///< of those to delete
};

/// The position after `position`; the end stays the end.
branch_t::position_t next_of(list_t& list, branch_t::position_t position);

} // namespace ko::alg

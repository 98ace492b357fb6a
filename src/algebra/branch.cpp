#include "algebra/branch.h"

#include <memory>
#include <utility>

#include "algebra/machine.h"
#include "algebra/operand_tokens.h"
#include "exception/exception.h"

namespace ko::alg {

branch_t::branch_t(const std::string& spelling, int binding_strength)
    : token_t(spelling, binding_strength, 1), children() {}

branch_t::~branch_t() {
    branch_t* pending = nullptr;
    release(pending);
    while (pending != nullptr) {
        branch_t* const branch = pending;
        pending = branch->next;
        branch->release(pending);
        delete branch;
    }
}

/// Lets go of the operands: deletes leaves and chains branches to `pending`.
void branch_t::release(branch_t*& pending) {
    for (child_t& operand : children) {
        const child_t released = std::exchange(operand, child_t());
        if (released.branch != nullptr) {
            released.branch->next = std::exchange(pending, released.branch);
        } else {
            delete released.token;
        }
    }
}

result_t branch_t::evaluate(algebra_t& algebra) const {
    return machine_t(algebra).value_of(*this);
}

void branch_t::assign(algebra_t&, const result_t&) const {
    throw exception_t("non lvalue");
}

token_t* branch_t::replicate() const {
    std::unique_ptr<branch_t> root(shell());
    std::vector<std::pair<const branch_t*, branch_t*>> pending{{this, root.get()}};
    while (!pending.empty()) {
        const auto [original, copy] = pending.back();
        pending.pop_back();
        original->children_replicate(pending, *copy);
    }
    return root.release();
}

/// Gives `copy`, a shell of this branch, the text, flags and operands; those of operands that are
/// branches are left to do.
void branch_t::children_replicate(std::vector<std::pair<const branch_t*, branch_t*>>& pending,
                                  branch_t& copy) const {
    copy.text = text;
    copy.unbound = unbound;
    copy.strength = strength;
    for (unsigned i = 0; i < children_max; ++i) {
        const child_t& original = children[i];
        if (original.branch != nullptr) {
            branch_t* const branch = original.branch->shell();
            copy.children[i] = {branch, branch};
            pending.emplace_back(original.branch, branch);
        } else if (original.token != nullptr) {
            copy.children[i] = {original.token->replicate(), nullptr};
        }
    }
}

void branch_t::branches_get(std::vector<branch_t*>& pending) const {
    for (const child_t& operand : children) {
        if (operand.branch != nullptr) {
            pending.push_back(operand.branch);
        }
    }
}

void branch_t::bind() {
    unbound = 0;
    strength = bound_strength;
    --depth;
}

void branch_t::take(unsigned i, list_t& list, position_t position) {
    child_set(i, *position);
    list.erase(position);
}

void branch_t::child_set(unsigned i, token_t* token) {
    delete children[i].token; // none, but when a host binds a token twice
    children[i] = {token, dynamic_cast<branch_t*>(token)};
}

branch_t::position_t next_of(list_t& list, branch_t::position_t position) {
    return position == list.end() ? position : std::next(position);
}

} // namespace ko::alg

// Making one syntax out of a tree that is partly the parser's and partly bound by a host.
#include <utility>

#include "algebra/node.h"

namespace ko::alg {

/// What makes one syntax out of tokens; lives as long as that takes.
struct node_t::grafting_t {
    /// A tree that still has to be copied, and the operand that it becomes.
    struct task_t {
        const token_t* token;   ///< null for a tree of a syntax
        const syntax_t* source; ///< of that tree
        place_t place;
        place_t parent;
        unsigned operand;
    };

    void run(const node_t& root);
    place_t copy(const syntax_t& source, const item_t& item, std::string_view text);
    void graft(const task_t& task);
    void graft_node(const node_t& node);

    syntax_t syntax;
    std::vector<task_t> pending;
};

void node_t::grafting_t::run(const node_t& root) {
    pending.push_back({&root, nullptr, 0, no_place, 0});
    while (!pending.empty()) {
        const task_t task = pending.back();
        pending.pop_back();
        graft(task);
    }
    syntax.first = 0;
}

/// Adds a copy of an item without its operands.
place_t node_t::grafting_t::copy(const syntax_t& source, const item_t& item,
                                 std::string_view text) {
    item_t added = item;
    added.text_begin = static_cast<place_t>(syntax.text.size());
    added.text_size = static_cast<place_t>(text.size());
    added.operands[0] = added.operands[1] = added.operands[2] = no_place;
    syntax.text += text;
    if (item.kind == item_e::call) {
        added.callee = static_cast<std::uint32_t>(syntax.callees.size());
        syntax.callees.push_back(source.callees[item.callee]);
    }
    syntax.items.push_back(added);
    return static_cast<place_t>(syntax.items.size() - 1);
}

void node_t::grafting_t::graft(const task_t& task) {
    const auto grafted = static_cast<place_t>(syntax.items.size());
    if (task.parent != no_place) {
        syntax.items[task.parent].operands[task.operand] = grafted;
    }
    if (const auto* const node = dynamic_cast<const node_t*>(task.token)) {
        graft_node(*node);
    } else if (task.token != nullptr) {
        item_t item;
        item.kind = item_e::foreign;
        item.callee = static_cast<std::uint32_t>(syntax.callees.size());
        syntax.callees.emplace_back();
        syntax.callees.back().foreign = task.token;
        syntax.items.push_back(item);
    } else {
        const item_t& item = task.source->items[task.place];
        copy(*task.source, item, task.source->text_of(item));
        for (unsigned i = 3; i-- != 0;) {
            if (item.operands[i] != no_place) {
                pending.push_back({nullptr, task.source, item.operands[i], grafted, i});
            }
        }
    }
}

void node_t::grafting_t::graft_node(const node_t& node) {
    const item_t& item = node.item();
    const bool is_renamed = item.kind == item_e::name || item.kind == item_e::call;
    const place_t grafted =
        copy(*node.tree, item, is_renamed ? node.text : node.tree->text_of(item));
    if (!node.is_host_bound) {
        for (unsigned i = 3; i-- != 0;) {
            if (item.operands[i] != no_place) {
                pending.push_back({nullptr, node.tree.get(), item.operands[i], grafted, i});
            }
        }
        return;
    }
    syntax.items[grafted].is_bound = true;
    syntax.items[grafted].takes_nothing = node.without_arguments;
    for (unsigned i = 3; i-- != 0;) {
        if (node.operands[i] != nullptr) {
            pending.push_back({node.operands[i], nullptr, 0, grafted, i});
        }
    }
}

syntax_t node_t::syntax_of() const {
    grafting_t grafting;
    grafting.run(*this);
    return std::move(grafting.syntax);
}

} // namespace ko::alg

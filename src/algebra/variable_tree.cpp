#include "algebra/variable_tree.h"

#include <algorithm>
#include <utility>

namespace ko::alg {

variable_tree_t::node_t::node_t() = default;
variable_tree_t::node_t::node_t(const node_t& other) = default;
variable_tree_t::node_t::~node_t() = default;

const cell_t* variable_tree_t::cell_find(std::string_view name) const {
    const node_t* node = root.get();
    while (node != nullptr) {
        const int order = name.compare(node->cell.name);
        if (order == 0) {
            return &node->cell;
        }
        node = (order < 0 ? node->left : node->right).get();
    }
    return nullptr;
}

const result_t* variable_tree_t::find(std::string_view name) const {
    const cell_t* const found = cell_find(name);
    return found == nullptr || !found->is_present ? nullptr : &found->value;
}

cell_t& variable_tree_t::cell(std::string_view name, bool& moved) {
    bool is_shared = root.is_shared();
    link_t* link = &root;
    // As long as nothing is shared, the nodes are this tree's own.
    while (!is_shared && link->get() != nullptr) {
        node_t& node = link->own();
        const int order = name.compare(node.cell.name);
        if (order == 0) {
            return node.cell;
        }
        link = order < 0 ? &node.left : &node.right;
        is_shared = link->is_shared();
    }
    const node_t* node = link->get();
    int order = 0;
    while (node != nullptr && (order = name.compare(node->cell.name)) != 0) {
        node = (order < 0 ? node->left : node->right).get();
    }
    moved = moved || is_shared;
    if (node == nullptr) {
        return cell_add(name);
    }
    node_t* own = &root.write();
    for (order = name.compare(own->cell.name); order != 0; order = name.compare(own->cell.name)) {
        own = &(order < 0 ? own->left : own->right).write();
    }
    return own->cell;
}

/// Adds a name that the tree does not have.
cell_t& variable_tree_t::cell_add(std::string_view name) {
    link_t leaf;
    node_t& own = leaf.write();
    own.cell.name = name;
    insert(root, leaf);
    ++added;
    return own.cell;
}

result_t& variable_tree_t::write(std::string_view name) {
    bool moved = false;
    cell_t& own = cell(name, moved);
    if (!own.is_present) {
        own.value = result_t();
        own.is_present = true;
    }
    return own.value;
}

unsigned variable_tree_t::height_of(const link_t& link) {
    return link.get() == nullptr ? 0 : link.get()->height;
}

void variable_tree_t::measure(link_t& top) {
    node_t& node = top.write();
    node.height = 1 + std::max(height_of(node.left), height_of(node.right));
}

/// Makes the child on one side the top, and the old top its child on the other side.
void variable_tree_t::turn(link_t& top, side_t from, side_t to) {
    link_t child = std::move(top.write().*from);
    top.write().*from = std::move(child.write().*to);
    measure(top);
    child.write().*to = std::move(top);
    top = std::move(child);
    measure(top);
}

/// Turns a node when its subtree on the side `high` is too high.
void variable_tree_t::even_out(link_t& top, side_t high, side_t low) {
    node_t& node = top.write();
    if (height_of(node.*high) <= height_of(node.*low) + 1) {
        return;
    }
    const node_t& child = *(node.*high).get();
    if (height_of(child.*high) < height_of(child.*low)) {
        turn(node.*high, low, high);
    }
    turn(top, high, low);
}

void variable_tree_t::balance(link_t& top) {
    measure(top);
    even_out(top, &node_t::left, &node_t::right);
    even_out(top, &node_t::right, &node_t::left);
}

// The recursion goes down by the levels of the tree, of which even a million variables make no
// more than 30. NOLINTBEGIN(misc-no-recursion)

/// Hangs a leaf, whose name the tree does not have, into the tree.
void variable_tree_t::insert(link_t& top, link_t& leaf) {
    if (top.get() == nullptr) {
        top = std::move(leaf);
        return;
    }
    node_t& node = top.write();
    insert(leaf.get()->cell.name < node.cell.name ? node.left : node.right, leaf);
    balance(top);
}

variable_tree_t variable_tree_t::clone() const {
    variable_tree_t copy;
    copy.root = clone(root);
    return copy;
}

variable_tree_t::link_t variable_tree_t::clone(const link_t& link) {
    link_t copy;
    if (link.get() != nullptr) {
        const node_t& from = *link.get();
        node_t& to = copy.write();
        to.cell = from.cell;
        to.height = from.height;
        to.left = clone(from.left);
        to.right = clone(from.right);
    }
    return copy;
}

void variable_tree_t::update_from(const variable_tree_t& other) {
    variable_tree_t updated = *this;
    update(root, other, updated);
    std::swap(root, updated.root);
}

void variable_tree_t::update(const link_t& link, const variable_tree_t& other,
                             variable_tree_t& updated) {
    if (link.get() == nullptr) {
        return;
    }
    const node_t& node = *link.get();
    const result_t* const value = node.cell.is_present ? other.find(node.cell.name) : nullptr;
    // A node that both share has the same value.
    if (value != nullptr && value != &node.cell.value) {
        updated.write(node.cell.name) = *value;
    }
    update(node.left, other, updated);
    update(node.right, other, updated);
}

void variable_tree_t::names_get(std::vector<std::string>& out) const {
    names_of(root, out);
}

void variable_tree_t::names_of(const link_t& link, std::vector<std::string>& out) {
    if (link.get() == nullptr) {
        return;
    }
    names_of(link.get()->left, out);
    if (link.get()->cell.is_present) {
        out.push_back(link.get()->cell.name);
    }
    names_of(link.get()->right, out);
}

void variable_tree_t::tidy() {
    std::vector<link_t> present;
    present.reserve(own_all(root)); // nothing can fail from here on
    take_apart(root, present);
    root = link_t();
    put_together(root, present.data(), present.data() + present.size());
    kept = present.size();
    added = 0;
}

/// Makes all nodes this tree's own.
/// @return the number of nodes
std::size_t variable_tree_t::own_all(link_t& link) {
    if (link.get() == nullptr) {
        return 0;
    }
    node_t& node = link.write();
    return 1 + own_all(node.left) + own_all(node.right);
}

/// Appends the nodes with a variable, in order and without their subtrees.
void variable_tree_t::take_apart(link_t& link, std::vector<link_t>& present) {
    if (link.get() == nullptr) {
        return;
    }
    node_t& node = link.own();
    link_t right = std::move(node.right);
    take_apart(node.left, present);
    node.left = link_t();
    if (node.cell.is_present) {
        present.push_back(std::move(link));
    }
    take_apart(right, present);
}

/// Makes a tree of nodes in order, as even as can be.
void variable_tree_t::put_together(link_t& top, link_t* begin, link_t* end) {
    if (begin == end) {
        return;
    }
    link_t* const middle = begin + (end - begin) / 2;
    top = std::move(*middle);
    node_t& node = top.own();
    put_together(node.left, begin, middle);
    put_together(node.right, middle + 1, end);
    node.height = 1 + std::max(height_of(node.left), height_of(node.right));
}

// NOLINTEND(misc-no-recursion)

} // namespace ko::alg

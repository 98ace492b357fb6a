/// @file
/// From text to nodes, for the reference evaluator.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "algebra/reference/values.h"

namespace test::reference {

enum class kind_t { blank, value, name, unary, binary, condition, assignment, comma, call };

/// A part of an expression: an operator with its operands, once it is bound.
struct node_t {
    kind_t kind;
    std::string text;
    int strength = -15;
    bool unbound = false;
    int depth = 0;
    value_t value;
    std::vector<std::shared_ptr<node_t>> operands;
};

using node_ptr_t = std::shared_ptr<node_t>;
using nodes_t = std::vector<node_ptr_t>;

/// The first statement of a text, without comments and line ends.
std::string statement_of(const std::string& text);

/// The nodes of a statement, unbound, with the parentheses among them.
/// @param calls the names that are functions
nodes_t nodes_of(const std::string& line, const std::set<std::string>& calls);

} // namespace test::reference

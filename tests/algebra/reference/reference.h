/// @file
/// A second evaluator of expressions, for tests: the rules of the language written down as they
/// stand in the manual, without a thought for speed.
///
/// `values` has its values and operators, `lexer` makes nodes of a text.
/// A statement becomes a list of nodes. The unbound node that binds first, found by looking at
/// all of them, takes its neighbours, until one node is left; its value is found by recursion.
/// Macros, the numeric-only mode and host functions are left out.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "algebra/reference/lexer.h"

namespace test::reference {

/// The reference; its variables stay from one expression to the next.
class reference_t {
public:
    /// Defines a script function.
    void define(const std::string& name, const std::vector<std::string>& parameters,
                const std::string& body);
    /// What the evaluation of a statement comes to, as `test::outcome_of` tells it.
    std::string outcome(const std::string& text);

private:
    struct script_t {
        std::vector<std::string> parameters;
        std::string body;
    };

    void bind(nodes_t& list, std::size_t at) const;
    value_t evaluate(const std::string& text);
    node_ptr_t parse(const std::string& line) const;
    value_t value_of(const node_t& node);
    void values_of(const node_t& node, std::vector<value_t>& values);
    value_t assigned(const node_t& node);
    value_t called(const node_t& node);
    value_t script_called(const script_t& script, const std::vector<value_t>& values);

    std::map<std::string, value_t> variables;
    std::map<std::string, script_t> scripts;
    std::string last_parse_error;
};

} // namespace test::reference

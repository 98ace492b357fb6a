#include "algebra/reference/reference.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <tuple>

namespace test::reference {

namespace {

struct return_t {
    value_t value;
};

/// The built-in functions that it has, with their numbers of arguments.
const std::map<std::string, std::size_t> builtins = {
    {"abs", 1}, {"max", 2}, {"min", 2}, {"strlen", 1}, {"evaluate", 1}, {"return", 1}};

/// What to say of each operand that is missing, or not bound itself.
struct messages_t {
    std::vector<std::string> missing, unbound;
};

/// Takes the operands at the `places` relative to `at` out of the list and into the node there.
void operands_take(nodes_t& list, std::size_t at, const std::vector<int>& places,
                   const messages_t& messages) {
    node_t& node = *list[at];
    nodes_t taken;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::size_t place = at + static_cast<std::size_t>(places[i]);
        if (place >= list.size()) {
            throw parse_error_t(messages.missing[i]);
        }
        taken.push_back(list[place]);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (taken[i]->unbound) {
            throw parse_error_t(messages.unbound[i]);
        }
    }
    for (const node_ptr_t& operand : taken) {
        list.erase(std::find(list.begin(), list.end(), operand));
    }
    node.operands = taken;
}

} // namespace

void reference_t::bind(nodes_t& list, std::size_t at) const {
    const node_ptr_t node = list[at];
    node->unbound = false;
    --node->depth;
    const auto expected = [](const std::string& name, const std::vector<std::string>& operands) {
        messages_t messages;
        for (const std::string& operand : operands) {
            messages.missing.push_back(name + "::construct() -- expected " + operand +
                                       " operand");
            messages.unbound.push_back(name + "::construct() -- " + operand +
                                       " operand does not evaluate to a term");
        }
        return messages;
    };
    const std::string call = "function %s -- ";
    switch (node->kind) {
    case kind_t::unary:
        return operands_take(list, at, {1}, expected("unary_t", {"right"}));
    case kind_t::condition:
        return operands_take(list, at, {-1, 1, 2},
                             expected("conditional_assignment_t", {"test", "first", "second"}));
    case kind_t::assignment:
        return operands_take(list, at, {-1, 1}, expected("assign_t", {"left", "right"}));
    case kind_t::call:
        if (builtins.count(node->text) != 0) {
            operands_take(list, at, {1},
                          {{"external " + call + "not enough arguments"},
                           {"external " + call + "parse error"}});
        } else if (!scripts.at(node->text).parameters.empty()) {
            operands_take(list, at, {1},
                          {{"internal " + call + "not enough arguments"},
                           {"internal " + call + "no arguments or parse error"}});
        }
        return;
    default:
        return operands_take(list, at, {-1, 1}, expected("binary_t", {"left", "right"}));
    }
}

node_ptr_t reference_t::parse(const std::string& line) const {
    std::set<std::string> calls;
    for (const auto& [name, count] : builtins) {
        calls.insert(name);
    }
    for (const auto& [name, script] : scripts) {
        calls.insert(name);
    }
    nodes_t list;
    int depth = 0;
    for (const node_ptr_t& node : nodes_of(line, calls)) {
        depth += node->kind != kind_t::blank ? 0 : node->text == "(" ? 1 : 0;
        depth -= node->kind != kind_t::blank ? 0 : node->text == ")" ? 1 : 0;
        node->depth = depth;
        if (node->kind != kind_t::blank) {
            list.push_back(node);
        }
    }
    if (depth != 0) {
        throw parse_error_t("unmatched parenthesis");
    }
    const auto before = [](const node_ptr_t& a, const node_ptr_t& b) {
        return std::make_tuple(a->unbound, a->depth, a->strength) <
               std::make_tuple(b->unbound, b->depth, b->strength);
    };
    for (;;) {
        const auto best = std::max_element(list.begin(), list.end(), before);
        if (best == list.end() || !(*best)->unbound) {
            break;
        }
        bind(list, static_cast<std::size_t>(best - list.begin()));
    }
    if (list.size() != 1) {
        throw parse_error_t("syntax error in " + line + "  -- not enough operators");
    }
    return list.front();
}

value_t reference_t::value_of(const node_t& node) {
    const auto operand = [&](std::size_t i) {
        return value_of(*node.operands[i]);
    };
    switch (node.kind) {
    case kind_t::value:
        return node.value;
    case kind_t::name:
        if (variables.count(node.text) == 0) {
            throw error_t("label_t::evaluate() -- access to undefined term, '" + node.text + "'");
        }
        return variables[node.text];
    case kind_t::unary:
        return unary(node.text, operand(0));
    case kind_t::condition:
        return int_of(operand(0)) != 0 ? operand(1) : operand(2);
    case kind_t::assignment:
        return assigned(node);
    case kind_t::comma:
        throw error_t("sequencer_t::evaluate() -- syntax error");
    case kind_t::call:
        return called(node);
    default:
        const value_t left = operand(0);
        return binary(node.text, left, operand(1));
    }
}

value_t reference_t::assigned(const node_t& node) {
    const value_t value = value_of(*node.operands[1]);
    const node_t& target = *node.operands[0];
    if (target.kind == kind_t::name) {
        variables[target.text] = value;
    } else if (target.kind == kind_t::value && target.value.type == 2) {
        variables[target.value.s] = value;
    } else {
        throw error_t("non lvalue");
    }
    return value;
}

void reference_t::values_of(const node_t& node, std::vector<value_t>& values) {
    if (node.kind == kind_t::comma) {
        values_of(*node.operands[0], values);
        values_of(*node.operands[1], values);
    } else {
        values.push_back(value_of(node));
    }
}

value_t reference_t::called(const node_t& node) {
    const std::string& name = node.text;
    const bool is_builtin = builtins.count(name) != 0;
    const std::size_t count = is_builtin ? builtins.at(name) : scripts[name].parameters.size();
    std::vector<value_t> values;
    if (count != 0) {
        values_of(*node.operands[0], values);
    }
    if (values.size() != count) {
        throw error_t((is_builtin ? "external function " : "internal function ") + name + " -- " +
                      std::to_string(values.size()) + " arguments found, " +
                      std::to_string(count) + " expected");
    }
    if (!is_builtin) {
        return script_called(scripts[name], values);
    }
    const value_t& first = values[0];
    if (name == "abs") {
        return first.type == 1 ? of_float(std::fabs(first.f))
                               : of_int(std::abs(std::int64_t{int_of(first)}));
    }
    if (name == "return") {
        throw return_t{first};
    }
    if (name == "max" || name == "min") {
        return compared(name == "max" ? ">" : "<", values[1], first) ? values[1] : first;
    }
    if (first.type != 2) {
        throw error_t(name == "strlen"
                          ? "algebra_t::strlen_f() -- non-string argument passed"
                          : "algebra_t::evaluate_f() -- non-string argument to 'evaluate'");
    }
    if (name == "strlen") {
        return of_int(static_cast<std::int64_t>(first.s.size()));
    }
    reference_t inner;
    inner.variables = variables;
    return inner.evaluate(first.s);
}

value_t reference_t::script_called(const script_t& script, const std::vector<value_t>& values) {
    reference_t inner = *this;
    inner.last_parse_error.clear();
    for (std::size_t i = 0; i < values.size(); ++i) {
        inner.variables[script.parameters[i]] = values[i];
    }
    return inner.evaluate(script.body);
}

value_t reference_t::evaluate(const std::string& text) {
    const std::string line = statement_of(text);
    if (line.find_first_not_of(" \n") == std::string::npos) {
        throw error_t(last_parse_error); // that of an earlier text, if any
    }
    try {
        return value_of(*parse(line));
    } catch (const parse_error_t& error) {
        last_parse_error = error.what();
        throw error_t(last_parse_error);
    } catch (const return_t& returned) {
        return returned.value;
    }
}

void reference_t::define(const std::string& name, const std::vector<std::string>& parameters,
                         const std::string& body) {
    scripts[name] = {parameters, body};
}

std::string reference_t::outcome(const std::string& text) {
    try {
        const value_t value = evaluate(text);
        const char* const tags[] = {"(i) ", "(f) ", "(s) "};
        return tags[value.type] + text_of(value);
    } catch (const error_t& error) {
        return std::string("! ") + error.what();
    }
}

} // namespace test::reference
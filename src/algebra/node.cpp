#include "algebra/node.h"

#include <iterator>

#include "algebra/context.h"
#include "algebra/machine.h"
#include "algebra/parser.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Counts a run for as long as the object lives.
class running_t {
public:
    explicit running_t(unsigned& counter) : runs(counter) { ++runs; }
    running_t(const running_t&) = delete;
    running_t& operator=(const running_t&) = delete;
    ~running_t() { --runs; }

private:
    unsigned& runs;
};

/// The position after `position`; the end stays the end.
node_t::position_t behind(const list_t& list, node_t::position_t position) {
    return position == list.end() ? position : std::next(position);
}

bool is_mark(item_e kind) {
    return kind == item_e::open || kind == item_e::close || kind == item_e::colon;
}

} // namespace

node_t::node_t(std::shared_ptr<const syntax_t> tokens, place_t item_place)
    : token_t(std::string(tokens->text_of(tokens->items[item_place])),
              syntax_t::strength_of(tokens->items[item_place]),
              syntax_t::is_unbound(tokens->items[item_place]) ? 1 : 0),
      tree(std::move(tokens)), place(item_place) {
    depth = item().depth;
}

node_t::~node_t() {
    node_t* pending = nullptr;
    release(pending);
    while (pending != nullptr) {
        node_t* const node = pending;
        pending = node->next;
        node->release(pending);
        delete node;
    }
}

/// Lets go of the operands: deletes tokens of the host and chains nodes to `pending`.
void node_t::release(node_t*& pending) {
    for (token_t*& operand : operands) {
        token_t* const released = std::exchange(operand, nullptr);
        if (auto* const node = dynamic_cast<node_t*>(released)) {
            node->next = std::exchange(pending, node);
        } else {
            delete released;
        }
    }
}

bool node_t::is_leaf() const {
    return item().kind != item_e::operation && item().kind != item_e::call;
}

bool node_t::is_string() const {
    return item().kind == item_e::text;
}

/// Marks the token as bound, whether or not it finds its operands.
void node_t::mark_bound() {
    unbound = 0;
    strength = bound_strength;
    --depth;
}

bool node_t::construct(list_t& list, position_t& position, std::string& error) {
    mark_bound();
    if (is_leaf()) {
        return true;
    }
    return item().kind == item_e::call ? call_construct(list, position, error)
                                       : operation_construct(list, position, error);
}

bool node_t::operation_construct(list_t& list, position_t& position, std::string& error) {
    const operator_t& row = operator_get(item().operation);
    const unsigned before = before_count(row.shape);
    const unsigned count = before + behind_count(row.shape);
    position_t places[3] = {list.end(), list.end(), list.end()};
    if (before != 0 && position != list.begin()) {
        places[0] = std::prev(position);
    }
    places[before] = behind(list, position);
    if (count == 3) {
        places[2] = behind(list, places[1]);
    }
    for (const bool is_missing : {true, false}) {
        for (unsigned i = 0; i < count; ++i) {
            if (is_missing ? places[i] == list.end() : (*places[i])->unbound != 0) {
                error = message_of_operand(row, i, is_missing);
                return false;
            }
        }
    }
    position = std::next(places[count - 1]);
    for (unsigned i = 0; i < count; ++i) {
        take(i, list, places[i]);
    }
    is_host_bound = true;
    return true;
}

bool node_t::call_construct(list_t& list, position_t& position, std::string& error) {
    const callee_t& callee = tree->callees[item().callee];
    if (position == list.end()) {
        error = callee.is_script() ? "internal_function_t::construct() -- bad iterator"
                                   : "external_function_t::construct() -- bad iterator";
        return false;
    }
    const position_t arguments = std::next(position);
    without_arguments = takes_nothing_now(arguments, list.end());
    if (without_arguments) {
        is_host_bound = true;
        ++position;
        return true;
    }
    if (arguments == list.end() || (*arguments)->unbound != 0) {
        error = arguments == list.end() ? message_of_missing_arguments(callee)
                                        : message_of_unbound_arguments(callee);
        return false;
    }
    position = std::next(arguments);
    take(0, list, arguments);
    is_host_bound = true;
    return true;
}

/// Whether a call that is being bound leaves alone what stands behind it.
bool node_t::takes_nothing_now(position_t behind_call, position_t end) {
    const callee_t& callee = tree->callees[item().callee];
    if (callee.is_script()) {
        const function_t* const function =
            callee.scripts == nullptr ? nullptr : callee.scripts->find(text);
        if (function == nullptr) {
            throw exception_t("internal function %s -- no longer defined", text.c_str());
        }
        return function->parameters.empty();
    }
    const taking_e taking = taking_of(callee);
    const bool has_group =
        behind_call != end && (*behind_call)->unbound == 0 && (*behind_call)->depth > depth;
    return taking == taking_e::nothing || (taking == taking_e::group_only && !has_group);
}

/// Takes the token at `position` out of `list` as operand `i`.
void node_t::take(unsigned i, list_t& list, position_t position) {
    delete std::exchange(operands[i], *position); // none, but when a host binds a token twice
    list.erase(position);
}

/// A node of the same item without operands.
node_t* node_t::shell() const {
    auto copy = std::make_unique<node_t>(tree, place);
    copy->text = text;
    copy->unbound = unbound;
    copy->strength = strength;
    copy->depth = 0;
    copy->without_arguments = without_arguments;
    copy->is_host_bound = is_host_bound;
    return copy.release();
}

token_t* node_t::replicate() const {
    std::unique_ptr<node_t> root(shell());
    pending_t pending{{this, root.get()}};
    while (!pending.empty()) {
        const auto [original, copy] = pending.back();
        pending.pop_back();
        original->operands_replicate(pending, *copy);
    }
    return root.release();
}

/// Gives `copy`, a shell of this node, the operands; those of nodes are left to do.
void node_t::operands_replicate(pending_t& pending, node_t& copy) const {
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (const auto* const node = dynamic_cast<const node_t*>(operands[i])) {
            node_t* const replica = node->shell();
            copy.operands[i] = replica;
            pending.emplace_back(node, replica);
        } else if (operands[i] != nullptr) {
            copy.operands[i] = operands[i]->replicate();
        }
    }
}

result_t node_t::leaf_value(context_t& context) const {
    switch (item().kind) {
    case item_e::integer:
        return item().integer;
    case item_e::real:
        return item().real;
    case item_e::text:
        return std::string(tree->text_of(item()));
    case item_e::name:
        return context.variable_get(text);
    default:
        return {};
    }
}

result_t node_t::evaluate(algebra_t& algebra) const {
    context_t& context = context_of(algebra);
    if (is_leaf()) {
        return leaf_value(context);
    }
    unit_ptr_t own;
    unit_t& unit = unit_of(context, false, own);
    const running_t running(runs);
    bool returned = false;
    result_t value = context.machine_get().run(unit, returned);
    if (returned) {
        throw return_exception_t{std::move(value)};
    }
    return value;
}

void node_t::evaluate(algebra_t& algebra, std::vector<result_t>& values) const {
    if (item().kind != item_e::operation || item().operation != comma_id) {
        values.push_back(evaluate(algebra));
        return;
    }
    context_t& context = context_of(algebra);
    unit_ptr_t own;
    unit_t& unit = unit_of(context, true, own);
    const running_t running(runs);
    if (!context.machine_get().run_list(unit, values)) {
        result_t value = std::move(values.back());
        values.pop_back();
        throw return_exception_t{std::move(value)};
    }
}

void node_t::assign(algebra_t& algebra, const result_t& value) const {
    const item_e kind = item().kind;
    if (kind == item_e::name) {
        context_of(algebra).variables.assign(text, value);
    } else if (kind == item_e::text) {
        context_of(algebra).variables.assign(tree->text_of(item()), value);
    } else if (!is_mark(kind)) {
        throw exception_t("non lvalue");
    }
}

/// True where nothing has been bound or renamed by a host since the parse.
bool node_t::is_as_parsed() const {
    return !is_host_bound && text == tree->text_of(item());
}

/// The compiled tree.
/// @param own receives it where it cannot be kept
unit_t& node_t::unit_of(context_t& context, bool as_list, unit_ptr_t& own) const {
    unit_ptr_t& kept = as_list ? list_unit : value_unit;
    if (kept != nullptr && is_as_parsed()) {
        return *kept;
    }
    unit_ptr_t made = unit_make();
    if (is_as_parsed()) {
        context.machine_get().translator_get().compile(*tree, place, as_list, *made->program);
        kept = std::move(made);
        return *kept;
    }
    const syntax_t syntax = syntax_of();
    context.machine_get().translator_get().compile(syntax, syntax.first, as_list, *made->program);
    own = std::move(made);
    return *own;
}

void node_t::names_get(names_t& names) const {
    program_t program;
    compiler_room_t room;
    if (is_as_parsed()) {
        tree_compile(*tree, place, true, room, program);
    } else {
        const syntax_t syntax = syntax_of();
        tree_compile(syntax, syntax.first, true, room, program);
    }
    for (const instruction_t& step : program.code) {
        if (step.left == operand_e::name) {
            names.variables.insert(program.names[step.a.place]);
        }
        if (step.right == operand_e::name) {
            names.variables.insert(program.names[step.b.place]);
        }
    }
    for (const target_t& target : program.targets) {
        if (target.callee.foreign == nullptr) {
            names.functions.insert(target.name);
        }
    }
}

void nodes_append(std::shared_ptr<const syntax_t> tokens, list_t& list) {
    for (place_t place = tokens->first; place != no_place; place = tokens->items[place].next) {
        list.push_back(nullptr);
        try {
            list.back() = new node_t(tokens, place);
        } catch (...) {
            list.pop_back();
            throw;
        }
    }
}

} // namespace ko::alg

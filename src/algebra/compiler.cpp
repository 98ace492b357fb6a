#include "algebra/compiler.h"

#include "algebra/parser.h"

namespace ko::alg {

namespace {

/// Compiles one tree; lives as long as that takes.
class compiler_t {
public:
    compiler_t(const syntax_t& source, compiler_room_t& compiler_room, program_t& target)
        : syntax(source), room(compiler_room), program(target),
          writer(compiler_room.writer, target) {}

    void run(place_t root, bool as_list);

private:
    void task_do(const task_t& task);
    void value(const item_t& item);
    void list(place_t place);
    void operation(const item_t& item);
    void unary(const item_t& item, const operator_t& row);
    void binary(const item_t& item, const operator_t& row);
    void choice(const item_t& item);
    void assignment(const item_t& item);
    void call(const item_t& item);
    void arguments(const item_t& item, instruction_t call);

    bool leaf_get(place_t place, operand_e& kind, argument_t& argument);
    void push(const item_t& item);
    void fail(opcode_e opcode) { writer.emit({opcode}, 0, 1); }
    void later(task_t::kind_e kind, place_t place = no_place) {
        room.tasks.push_back({kind, place, {opcode_e::end}, 0, 0});
    }
    void later(const instruction_t& instruction, std::size_t taken, std::size_t left = 1,
               task_t::kind_e kind = task_t::emit) {
        room.tasks.push_back({kind, no_place, instruction, taken, left});
    }
    std::uint32_t target_add(const item_t& item);
    std::size_t list_length(place_t place, bool& is_open) const;

    const syntax_t& syntax;
    compiler_room_t& room;
    program_t& program;
    code_writer_t writer;
};

void compiler_t::run(place_t root, bool as_list) {
    room.tasks.clear();
    program.is_list = as_list;
    later(as_list ? task_t::list : task_t::value, root);
    while (!room.tasks.empty()) {
        const task_t task = room.tasks.back();
        room.tasks.pop_back();
        task_do(task);
    }
    writer.end();
}

void compiler_t::task_do(const task_t& task) {
    switch (task.kind) {
    case task_t::value:
        value(syntax.items[task.place]);
        break;
    case task_t::list:
        list(task.place);
        break;
    case task_t::emit:
        writer.emit(task.follow, task.taken, task.left);
        break;
    case task_t::fork:
        writer.emit_fork(task.follow, task.taken);
        break;
    case task_t::jump:
        writer.emit_jump();
        break;
    case task_t::land:
        writer.land();
        break;
    }
}

/// Gives the operand of an instruction that a leaf without effect can be.
bool compiler_t::leaf_get(place_t place, operand_e& kind, argument_t& argument) {
    const item_t& item = syntax.items[place];
    switch (item.kind) {
    case item_e::integer:
        kind = operand_e::integer;
        argument.integer = item.integer;
        return true;
    case item_e::real:
        kind = operand_e::real;
        argument.real = item.real;
        return true;
    case item_e::text:
        kind = operand_e::text;
        argument.place = writer.text_add(syntax.text_of(item));
        return true;
    case item_e::name:
        kind = operand_e::name;
        argument.place = writer.name_place(syntax.text_of(item));
        return true;
    default:
        kind = operand_e::stack;
        return false;
    }
}

void compiler_t::value(const item_t& item) {
    switch (item.kind) {
    case item_e::call:
        call(item);
        break;
    case item_e::operation:
        operation(item);
        break;
    case item_e::foreign: {
        instruction_t instruction{opcode_e::foreign_value};
        instruction.a.place = target_add(item);
        writer.emit(instruction, 0, 1);
        break;
    }
    default:
        push(item);
    }
}

void compiler_t::push(const item_t& item) {
    instruction_t instruction{opcode_e::push};
    if (!leaf_get(static_cast<place_t>(&item - syntax.items.data()), instruction.left,
                  instruction.a)) {
        instruction.left = operand_e::integer; // a parenthesis that a failed parse left is 0
    }
    writer.emit(instruction, 0, 1);
}

/// The values of a tree, those that commas separate one by one.
void compiler_t::list(place_t place) {
    const item_t& item = syntax.items[place];
    if (item.kind == item_e::foreign) {
        instruction_t instruction{opcode_e::foreign_list};
        instruction.a.place = target_add(item);
        writer.emit(instruction, 0, 1); // or more, which the machine makes room for
    } else if (item.kind != item_e::operation || item.operation != comma_id) {
        value(item);
    } else if (item.operands[0] == no_place) {
        fail(opcode_e::no_operand);
    } else {
        later(task_t::list, item.operands[1]);
        later(task_t::list, item.operands[0]);
    }
}

void compiler_t::operation(const item_t& item) {
    const operator_t& row = operator_get(item.operation);
    if (item.operation == comma_id) {
        fail(opcode_e::no_value);
    } else if (item.operands[0] == no_place) {
        fail(opcode_e::no_operand);
    } else if (row.shape == shape_e::prefix) {
        unary(item, row);
    } else if (row.shape == shape_e::choice) {
        choice(item);
    } else if (item.operation == assign_id) {
        assignment(item);
    } else {
        binary(item, row);
    }
}

void compiler_t::unary(const item_t& item, const operator_t& row) {
    instruction_t instruction{row.opcode};
    if (leaf_get(item.operands[0], instruction.left, instruction.a)) {
        writer.emit(instruction, 0, 1);
    } else {
        later(instruction, 1);
        later(task_t::value, item.operands[0]);
    }
}

/// A name on the left is looked at before what is on the right does anything.
void compiler_t::binary(const item_t& item, const operator_t& row) {
    instruction_t instruction{row.opcode};
    const item_e left = syntax.items[item.operands[0]].kind;
    const bool is_right_leaf = leaf_get(item.operands[1], instruction.right, instruction.b);
    const bool is_left_leaf = (is_right_leaf || left != item_e::name) &&
                              leaf_get(item.operands[0], instruction.left, instruction.a);
    const unsigned taken = (is_left_leaf ? 0U : 1U) + (is_right_leaf ? 0U : 1U);
    if (taken == 0) {
        writer.emit(instruction, 0, 1);
        return;
    }
    later(instruction, taken);
    if (!is_right_leaf) {
        later(task_t::value, item.operands[1]);
    }
    if (!is_left_leaf) {
        later(task_t::value, item.operands[0]);
    }
}

void compiler_t::choice(const item_t& item) {
    instruction_t test{opcode_e::branch};
    const bool is_leaf = leaf_get(item.operands[0], test.left, test.a);
    later(task_t::land);
    later(task_t::value, item.operands[2]);
    later(task_t::jump);
    later(task_t::value, item.operands[1]);
    later(test, is_leaf ? 0 : 1, 0, task_t::fork);
    if (!is_leaf) {
        later(task_t::value, item.operands[0]);
    }
}

void compiler_t::assignment(const item_t& item) {
    const item_t& target = syntax.items[item.operands[0]];
    instruction_t store{opcode_e::no_target};
    if (target.kind == item_e::name || target.kind == item_e::text) {
        store.opcode = opcode_e::store;
        store.a.place = writer.name_place(syntax.text_of(target));
    } else if (target.kind == item_e::foreign) {
        store.opcode = opcode_e::foreign_assign;
        store.a.place = target_add(target);
    }
    program.may_change = true;
    const bool is_mark = target.kind == item_e::open || target.kind == item_e::close ||
                         target.kind == item_e::colon;
    if (!is_mark) { // nothing happens to a parenthesis
        later(store, 1);
    }
    later(task_t::value, item.operands[1]);
}

/// Number of values that a list gives, but for those of tokens of the host.
std::size_t compiler_t::list_length(place_t place, bool& is_open) const {
    std::vector<place_t> pending{place};
    std::size_t length = 0;
    while (!pending.empty()) {
        const item_t& item = syntax.items[pending.back()];
        pending.pop_back();
        if (item.kind == item_e::operation && item.operation == comma_id &&
            item.operands[0] != no_place) {
            pending.push_back(item.operands[0]);
            pending.push_back(item.operands[1]);
        } else {
            is_open = is_open || item.kind == item_e::foreign;
            ++length;
        }
    }
    return length;
}

void compiler_t::call(const item_t& item) {
    const callee_t& callee = syntax.callees[item.callee];
    const instruction_t instruction = writer.call_of(callee, target_add(item));
    const bool is_silent =
        (item.is_bound && item.takes_nothing) || taking_of(callee) == taking_e::nothing;
    if (is_silent) {
        writer.emit(instruction, 0, 1);
    } else {
        arguments(item, instruction);
    }
}

/// A script function may have lost its parameters since: its arguments are left out then.
void compiler_t::arguments(const item_t& item, instruction_t call) {
    const bool is_script = call.opcode == opcode_e::script_call;
    if (is_script) {
        later(task_t::land);
    }
    if (item.operands[0] == no_place) {
        later({opcode_e::no_operand}, 0);
    } else {
        bool is_open = false;
        const std::size_t count = list_length(item.operands[0], is_open);
        call.b.place = is_open ? no_place : static_cast<std::uint32_t>(count);
        later(call, count);
        later(task_t::list, item.operands[0]);
        if (is_open) {
            later({opcode_e::list_begin}, 0, 0);
        }
    }
    if (is_script) {
        instruction_t look{opcode_e::arguments};
        look.a = call.a;
        later(look, 0, 0, task_t::fork);
    }
}

std::uint32_t compiler_t::target_add(const item_t& item) {
    return writer.target_add(syntax.callees[item.callee], syntax.text_of(item));
}

} // namespace

void tree_compile(const syntax_t& syntax, place_t root, bool as_list, compiler_room_t& room,
                  program_t& program) {
    compiler_t(syntax, room, program).run(root, as_list);
}

} // namespace ko::alg

#include "algebra/one_pass.h"

#include <utility>

#include "algebra/parser.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Below the strength of all operator_stack.
constexpr signed char outer_strength = -100;

/// Size up to which the stacks get their memory at once.
constexpr std::size_t stack_begin = 12;

/// Translates one line; lives as long as that takes. Functions that return a bool return false
/// where the line is none for the short way.
class one_pass_t {
public:
    one_pass_t(const std::string& line, const lexer_settings_t& settings, one_pass_room_t& room,
               writer_room_t& writer_room, program_t& target)
        : lexer(line, settings), operand_stack(room.operand_stack),
          operator_stack(room.operator_stack), program(target), writer(writer_room, target) {}

    bool run();

private:
    using kind_e = waiting_operator_t::kind_e;

    bool token();
    bool operand_token();
    bool call_token();
    bool call_open(instruction_t instruction);
    bool open_token();
    bool close_token();
    bool colon_token();
    bool operation_token();
    bool prefix_token(const operator_t& row);
    bool assignment_token();
    bool choice_token();
    bool comma_token();

    void operand_add(operand_e kind, argument_t argument) {
        operand_stack.push_back({kind, argument});
        wants_operand = false;
    }
    void result_add() { operand_add(operand_e::stack, {}); }
    void operator_add(kind_e kind, signed char strength, opcode_e opcode,
                      std::uint32_t place = 0) {
        operator_stack.push_back({kind, opcode, strength, place, 0});
        wants_operand = true;
    }
    bool is_inside(kind_e kind) const {
        return !operator_stack.empty() && operator_stack.back().kind == kind;
    }
    waiting_operand_t operand_take() {
        const waiting_operand_t operand = operand_stack.back();
        operand_stack.pop_back();
        return operand;
    }
    static std::size_t slots_of(const waiting_operand_t& operand) {
        return operand.kind == operand_e::stack ? 1 : 0;
    }
    void write_stronger(int strength);
    void write_last();
    void write_prefix(opcode_e opcode);
    void write_infix(opcode_e opcode);
    void write_assignment(std::uint32_t target);
    void names_push(std::size_t end);
    void operand_push(std::size_t place);
    void last_push();

    lexer_t lexer;
    std::vector<waiting_operand_t>& operand_stack;
    std::vector<waiting_operator_t>& operator_stack;
    program_t& program;
    code_writer_t writer;
    std::size_t pushed = 0; ///< below that place, no name waits
    bool wants_operand = true;
};

bool one_pass_t::run() {
    operand_stack.clear();
    operand_stack.reserve(stack_begin);
    operator_stack.clear();
    operator_stack.reserve(stack_begin);
    program.code.reserve(stack_begin);
    while (lexer.next()) {
        if (!token()) {
            return false;
        }
    }
    if (!lexer.error.empty() || wants_operand) {
        return false;
    }
    write_stronger(outer_strength + 1);
    if (!operator_stack.empty()) {
        return false;
    }
    last_push();
    writer.end();
    return true;
}

bool one_pass_t::token() {
    switch (lexer.lexeme.kind) {
    case item_e::operation:
        return operation_token();
    case item_e::open:
        return open_token();
    case item_e::close:
        return close_token();
    case item_e::colon:
        return colon_token();
    case item_e::call:
        return call_token();
    default:
        return operand_token();
    }
}

bool one_pass_t::operand_token() {
    if (!wants_operand) {
        return false;
    }
    const lexeme_t& lexeme = lexer.lexeme;
    argument_t argument{};
    operand_e kind = operand_e::integer;
    if (lexeme.kind == item_e::name) {
        kind = operand_e::name;
        argument.place = writer.name_place(lexer.text_of(lexeme));
    } else if (lexeme.kind == item_e::integer) {
        argument.integer = lexeme.integer;
    } else if (lexeme.kind == item_e::real) {
        kind = operand_e::real;
        argument.real = lexeme.real;
    } else {
        kind = operand_e::text;
        argument.place = writer.text_add(lexer.text_of(lexeme));
    }
    operand_add(kind, argument);
    return true;
}

bool one_pass_t::call_token() {
    if (!wants_operand) {
        return false;
    }
    const lexeme_t call = lexer.lexeme;
    const bool is_silent = call.takes_nothing || taking_of(lexer.callee) == taking_e::nothing;
    const std::uint32_t target = writer.target_add(lexer.callee, lexer.text_of(call));
    const instruction_t instruction = writer.call_of(lexer.callee, target);
    if (!is_silent) {
        return lexer.next() && lexer.lexeme.kind == item_e::open && call_open(instruction);
    }
    names_push(operand_stack.size());
    writer.emit(instruction, 0, 1);
    result_add();
    return true;
}

/// A script function may have lost its parameters since: its arguments are left out then.
bool one_pass_t::call_open(instruction_t instruction) {
    if (instruction.opcode == opcode_e::script_call) {
        instruction_t look{opcode_e::arguments};
        look.a = instruction.a;
        names_push(operand_stack.size());
        writer.emit_fork(look, 0);
    }
    operator_add(kind_e::call, outer_strength, instruction.opcode, instruction.a.place);
    return true;
}

bool one_pass_t::open_token() {
    if (!wants_operand) {
        return false;
    }
    operator_add(kind_e::group, outer_strength, opcode_e::end);
    return true;
}

bool one_pass_t::close_token() {
    if (wants_operand) {
        return false;
    }
    write_stronger(outer_strength + 1);
    if (is_inside(kind_e::group)) {
        operator_stack.pop_back();
        return true;
    }
    if (!is_inside(kind_e::call)) {
        return false;
    }
    last_push();
    instruction_t call{operator_stack.back().opcode};
    const std::uint32_t values = operator_stack.back().values + 1;
    call.a.place = operator_stack.back().place;
    operator_stack.pop_back();
    call.b.place = values;
    operand_stack.resize(operand_stack.size() - values);
    pushed = operand_stack.size();
    writer.emit(call, values, 1);
    if (call.opcode == opcode_e::script_call) {
        writer.land();
    }
    result_add();
    return true;
}

bool one_pass_t::colon_token() {
    if (wants_operand) {
        return false;
    }
    write_stronger(outer_strength + 1);
    if (!is_inside(kind_e::first)) {
        return false;
    }
    last_push();
    operand_stack.pop_back();
    writer.emit_jump();
    operator_stack.pop_back();
    operator_add(kind_e::second, operator_get(choice_id).strength, opcode_e::end);
    return true;
}

bool one_pass_t::operation_token() {
    const operator_id_t id = lexer.lexeme.operation;
    const operator_t& row = operator_get(id);
    if (row.shape == shape_e::prefix) {
        return prefix_token(row);
    }
    if (wants_operand) {
        return false;
    }
    write_stronger(row.strength);
    switch (id) {
    case choice_id:
        return choice_token();
    case assign_id:
        return assignment_token();
    case comma_id:
        return comma_token();
    default:
        operator_add(kind_e::infix, row.strength, row.opcode);
        return true;
    }
}

bool one_pass_t::prefix_token(const operator_t& row) {
    if (!wants_operand || is_inside(kind_e::prefix)) {
        return false;
    }
    operator_add(kind_e::prefix, row.strength, row.opcode);
    return true;
}

bool one_pass_t::assignment_token() {
    if (is_inside(kind_e::first) || operand_stack.back().kind != operand_e::name) {
        return false;
    }
    const std::uint32_t target = operand_take().argument.place;
    pushed = std::min(pushed, operand_stack.size());
    program.may_change = true;
    operator_add(kind_e::assignment, operator_get(assign_id).strength, opcode_e::store, target);
    return true;
}

bool one_pass_t::choice_token() {
    if (is_inside(kind_e::first)) {
        return false;
    }
    names_push(operand_stack.size() - 1);
    const waiting_operand_t test = operand_take();
    instruction_t branch{opcode_e::branch, test.kind};
    branch.a = test.argument;
    writer.emit_fork(branch, slots_of(test));
    operator_add(kind_e::first, outer_strength, opcode_e::end);
    return true;
}

bool one_pass_t::comma_token() {
    if (!is_inside(kind_e::call)) {
        return false;
    }
    last_push();
    ++operator_stack.back().values;
    wants_operand = true;
    return true;
}

/// Writes the operator_stack on top that bind at least as strongly.
inline void one_pass_t::write_stronger(int strength) {
    while (!operator_stack.empty() && operator_stack.back().strength >= strength) {
        write_last();
    }
}

void one_pass_t::write_last() {
    const waiting_operator_t last = operator_stack.back();
    operator_stack.pop_back();
    switch (last.kind) {
    case kind_e::infix:
        write_infix(last.opcode);
        break;
    case kind_e::prefix:
        write_prefix(last.opcode);
        break;
    case kind_e::assignment:
        write_assignment(last.place);
        break;
    default: // the second operand of a choice
        last_push();
        writer.land();
    }
}

void one_pass_t::write_prefix(opcode_e opcode) {
    names_push(operand_stack.size() - 1);
    waiting_operand_t& operand = operand_stack.back();
    instruction_t instruction{opcode, operand.kind};
    instruction.a = operand.argument;
    writer.emit(instruction, slots_of(operand), 1);
    operand = {operand_e::stack, {}};
}

inline void one_pass_t::write_infix(opcode_e opcode) {
    names_push(operand_stack.size() - 2);
    const waiting_operand_t right = operand_take();
    waiting_operand_t& left = operand_stack.back();
    const instruction_t instruction{opcode, left.kind, right.kind, left.argument, right.argument};
    writer.emit(instruction, slots_of(left) + slots_of(right), 1);
    left = {operand_e::stack, {}};
}

void one_pass_t::write_assignment(std::uint32_t target) {
    last_push();
    instruction_t store{opcode_e::store};
    store.a.place = target;
    writer.emit(store, 1, 1);
}

/// Pushes the names that wait below a place, so that they are looked at before what is written.
inline void one_pass_t::names_push(std::size_t end) {
    for (; pushed < end; ++pushed) {
        if (operand_stack[pushed].kind == operand_e::name) {
            operand_push(pushed);
        }
    }
    pushed = end; // what lies above is what is written now
}

void one_pass_t::operand_push(std::size_t place) {
    instruction_t push{opcode_e::push, operand_stack[place].kind};
    push.a = operand_stack[place].argument;
    writer.emit(push, 0, 1);
    operand_stack[place] = {operand_e::stack, {}};
}

/// Pushes the last operand, if it is a leaf.
void one_pass_t::last_push() {
    names_push(operand_stack.size() - 1);
    if (operand_stack.back().kind != operand_e::stack) {
        operand_push(operand_stack.size() - 1);
    }
}

/// Takes a program back to the names that it began with.
void restore(program_t& program, std::size_t names) {
    program.names.erase(program.names.begin() + static_cast<std::ptrdiff_t>(names),
                        program.names.end());
    std::vector<std::string> kept = std::move(program.names);
    program.clear();
    program.names = std::move(kept);
}

} // namespace

bool line_translate(const std::string& line, const lexer_settings_t& settings,
                    one_pass_room_t& room, writer_room_t& writer_room, program_t& program) {
    const std::size_t names = program.names.size();
    bool is_good = false;
    try {
        is_good = one_pass_t(line, settings, room, writer_room, program).run();
    } catch (const exception_t&) {
        // An open string or an interruption: the parser meets it, too.
    }
    if (!is_good) {
        restore(program, names);
    }
    return is_good;
}

} // namespace ko::alg

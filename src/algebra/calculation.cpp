#include "algebra/calculation.h"

#include <algorithm>

#include "algebra/limits.h"

namespace ko::alg {

namespace {

/// Makes one calculation; lives as long as that takes. It knows the stack of the program by the
/// registers in which the values are: a leaf stays in its own until a step needs it elsewhere.
class calculation_maker_t {
public:
    explicit calculation_maker_t(const program_t& source) : program(source) {}

    calculation_t make();

private:
    using step_t = calculation_t::step_t;

    void literals_add();
    std::uint16_t leaf(operand_e kind, argument_t argument);
    std::uint16_t operand(operand_e kind, argument_t argument);
    std::uint16_t free_register() const {
        return static_cast<std::uint16_t>(computed + stack.size());
    }
    void put(opcode_e opcode, std::uint16_t a, std::uint16_t b, unsigned char detail = 0);
    void give(std::uint16_t place, bool is_as_given);
    void top_settle();
    void settle(std::size_t place);
    bool translate(const instruction_t& instruction);
    bool binary(const instruction_t& instruction);
    bool builtin(const instruction_t& instruction);
    bool call(const instruction_t& instruction);
    bool jump(const instruction_t& instruction);
    void reals_add();
    void real_steps_add();
    bool is_of_reals(const step_t& step, const std::vector<bool>& are_reals) const;

    const program_t& program;
    calculation_t made;
    std::vector<std::uint16_t> stack;
    std::vector<std::uint16_t> goals; ///< of the instructions: the step that each begins with
    std::vector<bool> is_joint;       ///< whether a value comes there from elsewhere, too
    std::vector<std::size_t> jumps;   ///< steps whose goal is still an instruction
    std::size_t literals_used = 0;
    std::size_t computed = 0; ///< the first register behind literals and variables
    /// By register: whether it may hold the value of a variable as it is.
    std::vector<bool> givens;
};

calculation_t calculation_maker_t::make() {
    literals_add();
    computed = made.names + program.names.size();
    made.registers.resize(computed + program.stack_need + 1);
    givens.resize(made.registers.size());
    std::fill_n(givens.begin() + static_cast<std::ptrdiff_t>(made.names), program.names.size(),
                true);
    is_joint.resize(program.code.size());
    for (const instruction_t& instruction : program.code) {
        if (instruction.opcode == opcode_e::jump) {
            is_joint[instruction.b.place] = true;
        }
    }
    for (std::size_t i = 0; i < program.code.size(); ++i) {
        if (is_joint[i]) {
            top_settle();
        }
        goals.push_back(static_cast<std::uint16_t>(made.steps.size()));
        if (!translate(program.code[i])) {
            return {};
        }
    }
    for (const std::size_t place : jumps) {
        made.steps[place].out =
            static_cast<std::uint16_t>(goals[made.steps[place].out] - (place + 1));
    }
    reals_add();
    return std::move(made);
}

/// Makes the registers for floats alone, if there can be such.
void calculation_maker_t::reals_add() {
    std::vector<bool> are_reals(made.registers.size(), true);
    for (std::size_t i = 0; i < made.names; ++i) {
        are_reals[i] = !made.registers[i].is_integer();
    }
    bool is_good = !made.may_give_a_name && !made.steps.empty();
    for (const step_t& step : made.steps) {
        is_good = is_good && is_of_reals(step, are_reals);
    }
    if (is_good) {
        made.reals = std::vector<float>(made.registers.size());
        std::transform(made.registers.begin(), made.registers.end(), made.reals.begin(),
                       [](const number_t& number) { return number.float_of_number(); });
        real_steps_add();
    }
}

/// Makes the steps for floats alone. What is multiplied is computed for one step only, so that a
/// product that is added next needs no register.
void calculation_maker_t::real_steps_add() {
    made.real_steps = std::vector<calculation_t::real_step_t>(made.steps.size());
    calculation_t::real_step_t* last = nullptr;
    for (const step_t& step : made.steps) {
        const bool is_sum = step.opcode == opcode_e::add && last != nullptr &&
                            last->opcode == opcode_e::multiply &&
                            (last->out == step.a) != (last->out == step.b);
        if (is_sum) {
            last->c = last->out == step.a ? step.b : step.a;
            last->out = step.out;
            last->opcode = opcode_e::multiply_add;
        } else {
            last = last == nullptr ? made.real_steps.data() : last + 1;
            *last = {step, step.a};
        }
    }
}

/// Whether a step can be done with floats, an integer among its operands being made one. Steps
/// give floats then, so that only literals are integers.
bool calculation_maker_t::is_of_reals(const step_t& step,
                                      const std::vector<bool>& are_reals) const {
    switch (step.opcode) {
    case opcode_e::add:
    case opcode_e::subtract:
    case opcode_e::multiply:
    case opcode_e::divide:
        return are_reals[step.a] || are_reals[step.b];
    case opcode_e::negate:
    case opcode_e::positive:
    case opcode_e::push:
    case opcode_e::end:
        return are_reals[step.a];
    case opcode_e::builtin:
        return are_reals[step.a] && are_reals[step.b] &&
               builtins[step.detail].of_reals != nullptr;
    default:
        return false;
    }
}

/// Gives every literal number a register, in the order of the code.
void calculation_maker_t::literals_add() {
    const auto add = [this](operand_e kind, argument_t argument) {
        if (kind == operand_e::integer) {
            made.registers.push_back(number_t::of_int(argument.integer));
        } else if (kind == operand_e::real) {
            made.registers.push_back(number_t::of_float(argument.real));
        }
    };
    for (const instruction_t& instruction : program.code) {
        add(instruction.left, instruction.a);
        add(instruction.right, instruction.b);
    }
    made.names = static_cast<std::uint32_t>(made.registers.size());
}

std::uint16_t calculation_maker_t::leaf(operand_e kind, argument_t argument) {
    return static_cast<std::uint16_t>(kind == operand_e::name ? made.names + argument.place
                                                              : literals_used++);
}

std::uint16_t calculation_maker_t::operand(operand_e kind, argument_t argument) {
    if (kind != operand_e::stack) {
        return leaf(kind, argument);
    }
    const std::uint16_t place = stack.back();
    stack.pop_back();
    return place;
}

/// Adds a step, the value of which comes on top.
void calculation_maker_t::put(opcode_e opcode, std::uint16_t a, std::uint16_t b,
                              unsigned char detail) {
    const std::uint16_t out = free_register();
    made.steps.push_back({opcode, detail, out, a, b});
    stack.push_back(out);
    give(out, false);
}

/// Notes whether a register gets the value of a variable as it is. Where there are jumps, what it
/// has got on another way counts, too.
void calculation_maker_t::give(std::uint16_t place, bool is_as_given) {
    givens[place] = is_as_given || (!jumps.empty() && givens[place]);
}

/// Brings a value to the register of its place on the stack.
void calculation_maker_t::settle(std::size_t place) {
    const auto own = static_cast<std::uint16_t>(computed + place);
    if (stack[place] != own) {
        made.steps.push_back({opcode_e::push, 0, own, stack[place], stack[place]});
        give(own, givens[stack[place]]);
        stack[place] = own;
    }
}

void calculation_maker_t::top_settle() {
    settle(stack.size() - 1);
}

/// @return false for what is no matter of numbers
bool calculation_maker_t::translate(const instruction_t& instruction) {
    if (instruction.left == operand_e::text || instruction.right == operand_e::text) {
        return false;
    }
    switch (instruction.opcode) {
    case opcode_e::push:
        stack.push_back(leaf(instruction.left, instruction.a));
        return true;
    case opcode_e::negate:
    case opcode_e::positive:
    case opcode_e::logical_not: {
        const std::uint16_t a = operand(instruction.left, instruction.a);
        put(instruction.opcode, a, a);
        return true;
    }
    case opcode_e::branch:
    case opcode_e::jump:
        return jump(instruction);
    case opcode_e::builtin:
        return builtin(instruction);
    case opcode_e::script_call:
        return call(instruction);
    case opcode_e::arguments: // a call without parameters is none for the calculator
    case opcode_e::watch:
        return true;
    case opcode_e::end:
        made.steps.push_back({opcode_e::end, 0, 0, stack.back(), stack.back()});
        made.may_give_a_name = givens[stack.back()];
        return true;
    default:
        return instruction.opcode < opcode_e::push && binary(instruction);
    }
}

/// Of two operands on the stack, the right one is above the left one; literals lie in the order
/// of the code.
bool calculation_maker_t::binary(const instruction_t& instruction) {
    if (instruction.right == operand_e::stack) {
        const std::uint16_t right = operand(instruction.right, instruction.b);
        put(instruction.opcode, operand(instruction.left, instruction.a), right);
    } else {
        const std::uint16_t left = operand(instruction.left, instruction.a);
        put(instruction.opcode, left, operand(instruction.right, instruction.b));
    }
    return true;
}

bool calculation_maker_t::builtin(const instruction_t& instruction) {
    const builtin_t* const row = program.targets[instruction.a.place].callee.builtin;
    const std::size_t count = instruction.b.place;
    if (row->of_numbers == nullptr || count != static_cast<std::size_t>(row->count)) {
        return false;
    }
    const std::uint16_t b = operand(operand_e::stack, {});
    const std::uint16_t a = count == 1 ? b : operand(operand_e::stack, {});
    const bool is_given = givens[a] || givens[b]; // the function may give its argument
    put(opcode_e::builtin, a, b, static_cast<unsigned char>(row - builtins));
    give(stack.back(), is_given);
    return true;
}

bool calculation_maker_t::call(const instruction_t& instruction) {
    const callee_t& callee = program.targets[instruction.a.place].callee;
    const std::size_t count = instruction.b.place;
    if (callee.scripts != nullptr || count == 0 || count > calculation_arguments_max) {
        return false;
    }
    const std::size_t first = stack.size() - count;
    for (std::size_t i = first; count > 1 && i < stack.size(); ++i) {
        settle(i);
    }
    const std::uint16_t argument = stack[first];
    bool is_given = false;
    for (std::size_t i = first; i < stack.size(); ++i) {
        is_given = is_given || givens[stack[i]];
    }
    stack.resize(first);
    put(instruction.opcode, argument, static_cast<std::uint16_t>(instruction.a.place),
        static_cast<unsigned char>(count));
    give(stack.back(), is_given); // a function may give its argument
    return true;
}

bool calculation_maker_t::jump(const instruction_t& instruction) {
    std::uint16_t test = 0;
    if (instruction.opcode == opcode_e::branch) {
        test = operand(instruction.left, instruction.a);
    } else {
        top_settle();
        stack.pop_back(); // the other one of the two values comes to the same place
    }
    jumps.push_back(made.steps.size());
    made.steps.push_back(
        {instruction.opcode, 0, static_cast<std::uint16_t>(instruction.b.place), test, 0});
    return true;
}

} // namespace

calculation_t calculation_make(const program_t& program) {
    const std::size_t size = program.code.size();
    if (size > calculation_max || program.stack_need > calculation_max || program.is_list ||
        program.names.size() > calculation_max) {
        return {};
    }
    return calculation_maker_t(program).make();
}

} // namespace ko::alg

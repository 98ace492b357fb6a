#include "algebra/machine.h"

#include <cmath>

#include "algebra/number_operators.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Operators on two numbers, which are all that most programs need.
/// @return false when it takes more than that
bool binary_of_numbers(opcode_e opcode, slot_t& out, const slot_t& a, const slot_t& b) {
    if (!slot_t::are_numbers(a, b)) {
        return false;
    }
    switch (opcode) {
    case opcode_e::multiply:
        out = numbers::multiply(a, b);
        return true;
    case opcode_e::divide:
        if (b.float_of_number() == 0.0F) {
            return false;
        }
        out = numbers::divide(a, b);
        return true;
    case opcode_e::subtract:
        out = numbers::subtract(a, b);
        return true;
    case opcode_e::add:
        out = numbers::add(a, b);
        return true;
    case opcode_e::less:
    case opcode_e::less_equal:
    case opcode_e::greater:
    case opcode_e::greater_equal:
    case opcode_e::equal:
    case opcode_e::not_equal:
        out = numbers::compare(opcode, a, b);
        return true;
    default:
        return false;
    }
}

} // namespace

result_t machine_t::run(unit_t& unit, bool& returned) {
    returned = false;
    if (unit.is_quick) {
        if (const float value = calculate_reals(unit); !std::isnan(value)) {
            return value;
        }
    }
    if (number_t value; calculate(unit, value)) {
        return value.value();
    }
    return perform(unit, returned);
}

result_t machine_t::perform(unit_t& unit, bool& returned) {
    run_t run(*this);
    begin(unit);
    execute(run);
    returned = run.returned;
    return values.value_of(values.data()[run.slots]);
}

bool machine_t::run_list(unit_t& unit, std::vector<result_t>& out) {
    run_t run(*this);
    begin(unit);
    execute(run);
    for (std::size_t i = run.slots; i < top; ++i) {
        out.push_back(values.value_of(values.data()[i]));
    }
    return !run.returned;
}

/// Begins a run with a frame of the evaluator's own.
void machine_t::begin(unit_t& unit) {
    if (frames.empty()) {
        base.variables.tidy();
    }
    if (base.drawn == nullptr) {
        base.drawn = base.nesting.origin_budget();
        if (base.drawn == nullptr) {
            base.drawn = &base.budget;
            base.budget.begin();
        }
    }
    frame_t& pushed = frame_push(unit, frame_e::base);
    pushed.state = &base;
    pushed.depth = base.nesting.depth_get();
    frame_enter();
}

/// Runs what has begun. The frame of the evaluator stays, with its value or values on top. A
/// `return` in a tree that a host function has evaluated ends a program here.
void machine_t::execute(run_t& run) {
    for (bool is_over = false; !is_over;) {
        try {
            while (!loop(run)) {
                host_call(pc[-1]);
            }
            is_over = true;
        } catch (return_exception_t& returned) {
            is_over = give_back(run, std::move(returned.value));
        }
    }
}

/// Takes back all that a run has left.
void machine_t::end(const run_t& run) noexcept {
    while (frames.size() > run.frames) {
        frame_end();
    }
    values.pool_shrink(run.pool);
    while (marks.size() > run.marks) {
        marks.pop_back();
    }
    top = run.slots;
    base.drawn = run.drawn;
}

/// Undoes what a frame that ends has done to its caller.
void machine_t::frame_undo(const frame_t& ended) noexcept {
    if (ended.kind == frame_e::assign) {
        if (!ended.is_isolated) {
            ended.state->nesting.leave();
        }
    } else if (ended.is_isolated) {
        ended.state->variables.journal_undo(ended.journal);
    }
}

/// Ends a program with its value on top.
/// @return true when it was that of the run
bool machine_t::leave(run_t& run) {
    if (frames.size() == run.frames + 1) {
        return true;
    }
    slot_t value = values.data()[--top];
    if (value.kind() == slot_t::borrowed) {
        value = values.keep_copy(value.value()); // what it is borrowed from may go with the frame
    }
    if (frame().kind == frame_e::assign) {
        assign_end(value);
    }
    frame_end();
    values.data()[top++] = value;
    pc = frame().resume;
    links_check();
    return false;
}

/// Ends a program with the value on top, which is all that is left of it.
bool machine_t::give_back(run_t& run) {
    --top;
    return give_back(run, values.take(values.data()[top]));
}

bool machine_t::give_back(run_t& run, result_t value) {
    const std::size_t floor = frame().floor;
    values.release(values.data() + floor, values.data() + top);
    top = floor;
    values.reserve(top, 1);
    values.data()[top++] = values.keep(std::move(value));
    run.returned = frames.size() == run.frames + 1;
    return leave(run);
}

/// The value of an operand that is a leaf, in the program on top.
inline slot_t machine_t::leaf(const unit_t& unit, operand_e kind, argument_t argument) {
    if (kind == operand_e::name) {
        const cell_t* const cell = unit.names[argument.place].to_read;
        if (cell != nullptr && cell->is_present) {
            const slot_t slot = slot_t::of_value(cell->value);
            if (slot.is_number() || !unit.program->may_change) {
                return slot;
            }
        }
        return load(argument.place);
    }
    if (kind == operand_e::integer) {
        return slot_t::of_int(argument.integer);
    }
    return kind == operand_e::real ? slot_t::of_float(argument.real)
                                   : slot_t::of_value(unit.program->texts[argument.place]);
}

/// The steps of programs, until that of the run ends. Leaves and operators of two operands are
/// done here, all others by `step_do`.
/// @return false at a call of a host function, which does without the stack of the loop
bool machine_t::loop(run_t& run) {
    const instruction_t* at = pc;
    slot_t* slot = values.data() + top;
    const unit_t* unit = frame().unit;
    for (;;) {
        const instruction_t& step = *at++;
        if (step.opcode == opcode_e::push) {
            *slot++ = leaf(*unit, step.left, step.a);
        } else if (step.opcode < opcode_e::push && step.opcode > opcode_e::logical_not) {
            // On the stack, the right operand is above the left one.
            slot_t b;
            if (step.right == operand_e::stack) {
                b = (--slot)->read();
            }
            const slot_t a =
                step.left == operand_e::stack ? (--slot)->read() : leaf(*unit, step.left, step.a);
            if (step.right != operand_e::stack) {
                b = leaf(*unit, step.right, step.b);
            }
            if (!binary_of_numbers(step.opcode, *slot, a, b)) {
                *slot = binary_general(step.opcode, a, b);
            }
            ++slot;
        } else {
            top = static_cast<std::size_t>(slot - values.data());
            pc = at;
            if (step.opcode == opcode_e::host_call) {
                return false;
            }
            if (step.opcode == opcode_e::end && frames.size() == run.frames + 1) {
                return true;
            }
            if (step_do(step, run)) {
                return true;
            }
            at = pc;
            slot = values.data() + top;
            unit = frame().unit;
        }
    }
}

/// Does a step that is not done in the loop, but for calls.
/// @return true at the end of the run
bool machine_t::step_do(const instruction_t& step, run_t& run) {
    switch (step.opcode) {
    case opcode_e::negate:
    case opcode_e::positive:
    case opcode_e::logical_not:
        unary(step);
        return false;
    case opcode_e::branch:
        branch(step);
        return false;
    case opcode_e::jump:
        pc = frame().unit->program->code.data() + step.b.place;
        return false;
    case opcode_e::store:
        store(step.a.place, values.data()[top - 1]);
        return false;
    case opcode_e::list_begin:
        marks.push_back(top);
        return false;
    case opcode_e::watch:
        base.drawn->watch();
        return false;
    case opcode_e::no_operand:
    case opcode_e::no_target:
    case opcode_e::no_value:
        fail(step.opcode);
    case opcode_e::give_back:
        builtin_call(step);
        return give_back(run);
    case opcode_e::end:
        return leave(run);
    default:
        call_do(step);
        return false;
    }
}

/// The one operand of a step.
slot_t machine_t::operand_take(const instruction_t& step) {
    return step.left == operand_e::stack ? values.data()[--top]
                                         : leaf(*frame().unit, step.left, step.a);
}

/// Does an operator of one operand.
void machine_t::unary(const instruction_t& step) {
    const slot_t a = operand_take(step);
    values.data()[top] = unary_general(step.opcode, a);
    ++top;
}

/// Jumps where a test does not hold.
void machine_t::branch(const instruction_t& step) {
    const slot_t test = operand_take(step);
    if (int_of(test) == 0) {
        pc = frame().unit->program->code.data() + step.b.place;
    }
    values.release(test);
}

} // namespace ko::alg

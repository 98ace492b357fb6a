// The machine's calls of built-in functions, of the host's functions and of its tokens.
#include <utility>

#include "algebra/machine.h"
#include "algebra/token.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// True for a number of one view. A function may give an argument as its value, so that others
/// go the general way.
bool is_plain(const slot_t& slot) {
    return slot.is_number() && slot.is_plain();
}

} // namespace

/// Does a step that calls something that is not the host's.
void machine_t::call_do(const instruction_t& step) {
    switch (step.opcode) {
    case opcode_e::builtin:
        builtin_call(step);
        break;
    case opcode_e::evaluate:
        evaluate_call(step);
        break;
    case opcode_e::assign:
        assign_call(step);
        break;
    case opcode_e::arguments:
        if (!arguments_wanted(step)) {
            script_call(step);
        }
        break;
    case opcode_e::script_call:
        script_call(step);
        break;
    default:
        foreign(step);
        break;
    }
}

/// Number of arguments on the stack.
std::size_t machine_t::arguments_count(const instruction_t& instruction) {
    if (instruction.b.place != no_place) {
        return instruction.b.place;
    }
    const std::size_t count = top - marks.back();
    marks.pop_back();
    return count;
}

void machine_t::arguments_release(std::size_t count) {
    values.release(values.data() + top - count, values.data() + top);
    top -= count;
}

void machine_t::fail_counts(const target_t& target, const char* kind, int count, int least,
                            int most) {
    if (least != most) {
        throw exception_t("%s function %s -- %d arguments found, %d to %d expected", kind,
                          target.name.c_str(), count, least, most);
    }
    throw exception_t("%s function %s -- %d arguments found, %d expected", kind,
                      target.name.c_str(), count, most);
}

void machine_t::builtin_call(const instruction_t& instruction) {
    const target_t& target = frame().unit->program->targets[instruction.a.place];
    const builtin_t& row = *target.callee.builtin;
    const std::size_t count = arguments_count(instruction);
    counts_check(target, "external", count, row.count, row.count);
    if (row.apply == nullptr) {
        return; // what the machine does itself leaves its argument where it is
    }
    slot_t* const arguments = values.data() + top - count;
    number_t given[2];
    std::size_t plain = 0;
    while (row.of_numbers != nullptr && plain < count && is_plain(arguments[plain])) {
        given[plain] = arguments[plain].number();
        ++plain;
    }
    if (row.of_numbers == nullptr || plain < count) {
        builtin_general(target, arguments);
        return;
    }
    *arguments = slot_t::of_number(row.of_numbers(given[0], given[1]));
    top -= count - 1;
}

void machine_t::builtin_general(const target_t& target, slot_t* arguments) {
    const builtin_t& row = *target.callee.builtin;
    const auto count = static_cast<std::size_t>(row.count);
    result_t given[builtin_arguments_max];
    for (std::size_t i = count; i-- != 0;) {
        given[i] = values.take(arguments[i]);
    }
    top -= count;
    const context_t& state = *frame().state;
    const lending_t lending(state); // the function may write to the host's output
    result_t value = row.apply({given, state.variables, state.output});
    values.data()[top++] = values.keep(std::move(value));
}

// Each kind of host function is called by a function of its own, so that a call needs no more of
// the stack than its own arguments do.

result_t machine_t::argument_take() {
    return values.take(values.data()[--top]);
}

[[gnu::noinline]] result_t machine_t::host_apply_one(const function_prototype_t& function,
                                                     algebra_t& owner) {
    return function.function1(owner, argument_take());
}

[[gnu::noinline]] result_t machine_t::host_apply_two(const function_prototype_t& function,
                                                     algebra_t& owner) {
    result_t b = argument_take();
    return function.function2(owner, argument_take(), std::move(b));
}

[[gnu::noinline]] result_t machine_t::host_apply_three(const function_prototype_t& function,
                                                       algebra_t& owner) {
    result_t c = argument_take();
    result_t b = argument_take();
    return function.function3(owner, argument_take(), std::move(b), std::move(c));
}

[[gnu::noinline]] result_t machine_t::host_apply_list(const host_record_t& host, algebra_t& owner,
                                                      std::size_t count) {
    std::vector<result_t> arguments(count);
    for (std::size_t i = count; i-- != 0;) {
        arguments[i] = argument_take();
    }
    if (host.closure != nullptr) {
        return host.closure(owner, arguments);
    }
    if (host.prototype.function_list != nullptr) {
        return host.prototype.function_list(owner, std::move(arguments));
    }
    throw exception_t("external_function_t::evaluate() -- no prototype for function '%s'",
                      host.prototype.name.c_str());
}

/// Calls a host function with the uppermost values, which are taken off the stack before.
inline result_t machine_t::host_apply(const std::string& name, const host_record_t& host,
                                      std::size_t count) {
    context_t& state = *frame().state;
    const nesting_t::call_t call(state.nesting, name, *base.drawn);
    algebra_t& owner = *state.owner;
    const function_prototype_t& function = host.prototype;
    const bool is_listed = host.closure != nullptr || count > 3;
    if (!is_listed && function.function0 != nullptr) {
        return function.function0(owner);
    }
    if (!is_listed && function.function1 != nullptr) {
        return host_apply_one(function, owner);
    }
    if (!is_listed && function.function2 != nullptr) {
        return host_apply_two(function, owner);
    }
    if (!is_listed && function.function3 != nullptr) {
        return host_apply_three(function, owner);
    }
    return host_apply_list(host, owner, count);
}

void machine_t::host_call(const instruction_t& instruction) {
    // The program may go while the function runs, but its unit is pinned.
    const target_t& target = frame().unit->program->targets[instruction.a.place];
    const host_record_t& host = *target.callee.host;
    std::size_t count = 0;
    if (host.count_max != 0) {
        count = arguments_count(instruction);
        counts_check(target, "external", count, host.count_min, host.count_max);
    }
    if (frame().is_isolated) {
        evaluators_make();
    }
    const instruction_t* const resume = pc;
    result_t value = host_apply(target.name, host, count);
    pc = resume;
    links_check();
    values.reserve(top, frame().unit->program->stack_need);
    values.data()[top++] = values.keep(std::move(value));
}

/// Asks a token of the host for its value or values, or gives it one. No text names such a token,
/// so that it is in no program that works on a state of its own.
void machine_t::foreign(const instruction_t& instruction) {
    const token_t& token = *frame().unit->program->targets[instruction.a.place].callee.foreign;
    algebra_t& owner = *frame().state->owner;
    const instruction_t* const resume = pc;
    std::vector<result_t> given;
    if (instruction.opcode == opcode_e::foreign_value) {
        given.push_back(token.evaluate(owner));
    } else if (instruction.opcode == opcode_e::foreign_list) {
        token.evaluate(owner, given);
    } else {
        token.assign(owner, values.value_of(values.data()[top - 1]));
    }
    pc = resume;
    links_check();
    values.reserve(top, given.size() + frame().unit->program->stack_need);
    for (result_t& value : given) {
        values.data()[top++] = values.keep(std::move(value));
    }
}

} // namespace ko::alg

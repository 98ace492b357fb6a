#include "algebra/calculator.h"

#include <algorithm>

#include "algebra/limits.h"
#include "algebra/number_operators.h"

namespace ko::alg {

namespace {

/// Makes the calculation of a unit where there is none.
/// @return false when it can be none, or rests
bool prepare(unit_t& unit) {
    if (unit.calculation == nullptr) {
        unit.calculation = std::make_unique<calculation_t>(calculation_make(*unit.program));
    }
    calculation_t& calculation = *unit.calculation;
    if (calculation.rest != 0) {
        --calculation.rest;
        return false;
    }
    return !calculation.steps.empty();
}

/// Lets a calculation that has given up rest, the longer the more often it has in a row.
void rest(calculation_t& calculation) {
    calculation.failures = std::min(calculation.failures + 1, calculation_failures_max);
    calculation.rest = calculation.failures * calculation_rest;
}

} // namespace

bool calculator_t::run(unit_t& unit, std::uint64_t bodies, slot_t& value) {
    if (!unit.has_run) {
        unit.has_run = true;
        return false;
    }
    if (base.drawn != nullptr || !base.nesting.is_plain() || !prepare(unit)) {
        return false;
    }
    bodies_identity = bodies;
    steps = 0;
    if (!may_go_on(*unit.program) || !names_load(unit) || !compute(unit, value)) {
        calls.clear();
        window_used = 0;
        rest(*unit.calculation);
        return false;
    }
    unit.calculation->failures = 0;
    return true;
}

/// Whether a program may begin within the bounds of the evaluation.
bool calculator_t::may_go_on(const program_t& program) {
    const budget_t& budget = base.budget;
    steps += program.steps;
    return (steps <= budget.limits.steps || budget.limits.steps == 0) &&
           (budget.interrupt == nullptr || !budget.interrupt->load(std::memory_order_relaxed));
}

/// Reads the variables.
/// @return false when one of them has no number
bool calculator_t::names_load(unit_t& unit) {
    const variables_t& variables = base.variables;
    unit.links_check(base.family, variables.generation_get());
    slot_t* out = unit.calculation->registers.data() + unit.calculation->names;
    for (name_link_t& link : unit.names) {
        if (link.to_read == nullptr) {
            const auto place = static_cast<std::size_t>(&link - unit.names.data());
            link.to_read = variables.cell_find(unit.program->names[place]);
        }
        const cell_t* const cell = link.to_read;
        if (cell == nullptr || !cell->is_present || !slot_t::is_number(cell->value)) {
            return false;
        }
        *out++ = slot_t::of_number(cell->value);
    }
    return true;
}

/// Finds out what the links of calls must agree with, once a calculation calls anything.
void calculator_t::links_check() {
    if (window.empty()) {
        window.resize(calculation_window);
        calls.reserve(calculation_calls_max);
    }
    const environment_t now{base.functions.identity_get(),
                            base.functions.scripts_get()->identity_get(),
                            base.macros.identity_get()};
    if (family != base.family || !(now == environment) || bodies_identity != bodies_checked) {
        family = base.family;
        environment = now;
        bodies_checked = bodies_identity;
        ++links_number;
    }
    depth = base.nesting.depth_get();
}

/// The body that a call means now, where the machine has called it before and it is one for the
/// calculator.
/// @return null for any other
unit_t* calculator_t::body_find(unit_t& caller, const step_t& step) const {
    if (step.b >= caller.calls.size()) {
        return nullptr;
    }
    call_link_t& link = caller.calls[step.b];
    if (link.calculated_number == links_number) {
        return link.body;
    }
    if (link.body == nullptr || link.table != environment.scripts ||
        link.bodies != bodies_identity || !(link.environment == environment)) {
        return nullptr;
    }
    unit_t& body = *link.body;
    const bool is_own =
        body.parameters.size() == step.count && body.program->names.size() == step.count;
    if (!is_own || !prepare(body)) {
        return nullptr;
    }
    link.calculated_number = links_number;
    return &body;
}

/// The steps, of which each does one thing.
bool calculator_t::compute(unit_t& unit, slot_t& value) {
    unit_t* running = &unit;
    slot_t* r = unit.calculation->registers.data();
    const step_t* at = unit.calculation->steps.data();
    for (;;) {
        const step_t& step = *at++;
        const slot_t& a = r[step.a];
        switch (step.opcode) {
        case opcode_e::push:
            r[step.out] = a;
            break;
        case opcode_e::negate:
            r[step.out] = numbers::negate(a);
            break;
        case opcode_e::positive:
            r[step.out] = numbers::positive(a);
            break;
        case opcode_e::logical_not:
            r[step.out] = slot_t::of_int(a.int_of_number() == 0 ? 1 : 0);
            break;
        case opcode_e::add:
            r[step.out] = numbers::add(a, r[step.b]);
            break;
        case opcode_e::subtract:
            r[step.out] = numbers::subtract(a, r[step.b]);
            break;
        case opcode_e::multiply:
            r[step.out] = numbers::multiply(a, r[step.b]);
            break;
        case opcode_e::divide:
            if (r[step.b].float_of_number() == 0.0F) {
                return false;
            }
            r[step.out] = numbers::divide(a, r[step.b]);
            break;
        case opcode_e::less:
        case opcode_e::less_equal:
        case opcode_e::greater:
        case opcode_e::greater_equal:
        case opcode_e::equal:
        case opcode_e::not_equal:
            r[step.out] = numbers::compare(step.opcode, a, r[step.b]);
            break;
        case opcode_e::modulo:
            if (r[step.b].int_of_number() == 0) {
                return false;
            }
            [[fallthrough]];
        case opcode_e::shift_left:
        case opcode_e::shift_right:
        case opcode_e::bit_and:
        case opcode_e::bit_or:
        case opcode_e::logical_and:
        case opcode_e::logical_or:
            r[step.out] =
                numbers::of_integers(step.opcode, a.int_of_number(), r[step.b].int_of_number());
            break;
        case opcode_e::branch:
            if (a.int_of_number() == 0) {
                at = running->calculation->steps.data() + step.out;
            }
            break;
        case opcode_e::jump:
            at = running->calculation->steps.data() + step.out;
            break;
        case opcode_e::builtin:
            r[step.out] =
                running->program->targets[step.b].callee.builtin->of_numbers(r + step.a);
            break;
        case opcode_e::script_call:
            if (!call(running, at, r)) {
                return false;
            }
            break;
        default:
            value = a;
            if (calls.empty()) {
                return true;
            }
            give_back(running, at, r);
            r[at[-1].out] = value;
            break;
        }
    }
}

/// Begins the body of the call before the step at `at`.
bool calculator_t::call(unit_t*& running, const step_t*& at, slot_t*& registers) {
    const step_t& step = at[-1];
    if (calls.empty()) {
        links_check();
    }
    unit_t* const body = body_find(*running, step);
    if (body == nullptr || !may_go_on(*body->program)) {
        return false;
    }
    const calculation_t& called = *body->calculation;
    const limits_t& limits = base.budget.limits;
    if (window_used + called.registers.size() > window.size() ||
        calls.size() == calculation_calls_max ||
        (depth + calls.size() >= limits.nesting && limits.nesting != 0)) {
        return false;
    }
    slot_t* const entered = window.data() + window_used;
    slot_t* out = entered;
    for (std::uint32_t i = 0; i < called.names; ++i) {
        *out++ = called.registers[i];
    }
    for (unsigned i = 0; i < step.count; ++i) {
        *out++ = registers[step.a + i];
    }
    window_used += called.registers.size();
    calls.push_back({running, at, registers});
    running = body;
    registers = entered;
    at = called.steps.data();
    return true;
}

/// Ends the body of a call.
void calculator_t::give_back(unit_t*& running, const step_t*& at, slot_t*& registers) {
    window_used -= running->calculation->registers.size();
    running = calls.back().unit;
    at = calls.back().resume;
    registers = calls.back().registers;
    calls.pop_back();
}

} // namespace ko::alg

#include "algebra/calculator.h"

#include <algorithm>
#include <limits>

#include "algebra/limits.h"
#include "algebra/number_operators.h"

namespace ko::alg {

namespace {

/// Makes the calculation of a unit where there is none.
/// @return false when it can be none
inline bool prepare(unit_t& unit) {
    if (unit.calculation == nullptr) {
        unit.calculation = std::make_unique<calculation_t>(calculation_make(*unit.program));
    }
    return !unit.calculation->steps.empty();
}

/// Does a step of those that are met most and fail for nothing. One switch for operators and
/// `push`: a function that the machine shares would cost the loop 2 to 8 % more instructions.
/// @return false for any other, and for a division by zero
inline bool quick_do(const calculation_t::step_t& step, number_t* r) {
    switch (step.opcode) {
    case opcode_e::add:
        r[step.out] = numbers::add(r[step.a], r[step.b]);
        return true;
    case opcode_e::subtract:
        r[step.out] = numbers::subtract(r[step.a], r[step.b]);
        return true;
    case opcode_e::multiply:
        r[step.out] = numbers::multiply(r[step.a], r[step.b]);
        return true;
    case opcode_e::divide:
        if (r[step.b].float_of_number() == 0.0F) {
            return false;
        }
        r[step.out] = numbers::divide(r[step.a], r[step.b]);
        return true;
    case opcode_e::less:
    case opcode_e::less_equal:
    case opcode_e::greater:
    case opcode_e::greater_equal:
    case opcode_e::equal:
    case opcode_e::not_equal:
        r[step.out] = numbers::compare(step.opcode, r[step.a], r[step.b]);
        return true;
    case opcode_e::push:
        r[step.out] = r[step.a];
        return true;
    default:
        return false;
    }
}

/// Does any other step of two operands.
/// @return false for a division by zero, and for an operator that is not one of integers
bool binary_do(opcode_e opcode, number_t a, number_t b, number_t& out) {
    const auto of_integers = operator_get(opcode).of_integers;
    if (of_integers == nullptr || (opcode == opcode_e::modulo && b.int_of_number() == 0)) {
        return false;
    }
    out = number_t::of_int(of_integers(a.int_of_number(), b.int_of_number()));
    return true;
}

} // namespace

/// Whether a program may begin within the bounds of the evaluation.
inline bool calculator_t::may_go_on(const program_t& program) {
    steps += program.steps;
    return base.budget.is_within(steps);
}

/// Reads the variables.
/// @return false when one of them has no number
inline bool calculator_t::names_load(unit_t& unit) {
    unit.links_check(base.family, base.variables.generation_get());
    const calculation_t& calculation = *unit.calculation;
    number_t* out = unit.calculation->registers.data() + calculation.names;
    for (name_link_t& link : unit.names) {
        const cell_t* const cell = link.to_read != nullptr ? link.to_read : name_find(unit, link);
        if (cell == nullptr || !cell->is_present || !number_t::is_number(cell->value)) {
            return false;
        }
        *out++ = number_t::of_value(cell->value);
    }
    return !calculation.may_give_a_name || names_are_plain(unit);
}

/// Reads the variables where they are floats, and known.
inline bool calculator_t::reals_load(unit_t& unit) const {
    unit.links_check(base.family, base.variables.generation_get());
    float* out = unit.calculation->reals.data() + unit.calculation->names;
    for (const name_link_t& link : unit.names) {
        const cell_t* const cell = link.to_read;
        if (cell == nullptr || !cell->is_present ||
            result_members_t::type(cell->value) != result_t::type_float) {
            return false;
        }
        *out++ = result_members_t::real(cell->value);
    }
    return true;
}

/// Does the steps with floats alone.
inline float calculator_t::reals_run(calculation_t& calculation) {
    float* const r = calculation.reals.data();
    for (const calculation_t::real_step_t* at = calculation.real_steps.data();; ++at) {
        float value = r[at->a];
        const float b = r[at->b];
        switch (at->opcode) {
        case opcode_e::add:
            value += b;
            break;
        case opcode_e::subtract:
            value -= b;
            break;
        case opcode_e::multiply:
            value *= b;
            break;
        case opcode_e::multiply_add:
            value = value * b + r[at->c];
            break;
        case opcode_e::divide:
            if (b == 0.0F) { // to be reported, even if a function would choose another value
                return std::numeric_limits<float>::quiet_NaN();
            }
            value /= b;
            break;
        case opcode_e::negate:
            value = arm::negate(value);
            break;
        case opcode_e::positive:
        case opcode_e::push:
            break;
        case opcode_e::builtin:
            value = builtins[at->detail].of_reals(value, b);
            break;
        default:
            return value;
        }
        r[at->out] = value;
    }
}

float calculator_t::run_reals(unit_t& unit) const {
    return is_outermost() && base.budget.is_within(unit.program->steps) && reals_load(unit)
               ? reals_run(*unit.calculation)
               : std::numeric_limits<float>::quiet_NaN();
}

bool calculator_t::try_run(unit_t& unit, std::uint64_t bodies, number_t& value) {
    if (!prepare(unit)) {
        unit.rest = calculation_none_rest;
        return false;
    }
    bodies_identity = bodies;
    steps = 0;
    if (may_go_on(*unit.program) && names_load(unit) && compute(unit, value)) {
        unit.calculation->failures = 0;
        unit.is_quick = !unit.calculation->reals.empty();
        return true;
    }
    give_up(unit);
    return false;
}

/// Lets a program rest, the longer the more often it has given up in a row.
void calculator_t::give_up(unit_t& unit) {
    calls.clear();
    window_used = 0;
    unsigned& failures = unit.calculation->failures;
    failures = std::min(failures + 1, calculation_failures_max);
    unit.rest = failures * calculation_rest;
    unit.is_quick = false;
}

/// The cell of a variable that has not been looked up yet, or null.
const cell_t* calculator_t::name_find(const unit_t& unit, name_link_t& link) const {
    const auto place = static_cast<std::size_t>(&link - unit.names.data());
    link.to_read = base.variables.cell_find(unit.program->names[place]);
    return link.to_read;
}

/// True when all variables can be given as a register has them.
bool calculator_t::names_are_plain(const unit_t& unit) {
    bool are_plain = true;
    for (const name_link_t& link : unit.names) {
        are_plain = are_plain && number_t::is_plain(link.to_read->value);
    }
    return are_plain;
}

/// Finds out what the links of calls must agree with, once a calculation calls anything.
void calculator_t::links_check() {
    if (window.empty()) {
        window.resize(calculation_window);
        calls.reserve(calculation_calls_max);
    }
    const environment_t now = environment_of(base);
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
        return nullptr; // for want of memory the machine has not run a body that it has compiled
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
        body.parameters.size() == step.detail && body.program->names.size() == step.detail;
    if (!is_own || !prepare(body)) {
        return nullptr;
    }
    link.calculated_number = links_number;
    return &body;
}

/// Ends the body of a call with its value.
inline void calculator_t::give_back(activation_t& now, number_t value) {
    window_used -= now.unit->calculation->registers.size();
    now = calls.back();
    calls.pop_back();
    now.registers[now.at[-1].out] = value;
}

/// The steps. Most are done here, the others by `step_do`.
bool calculator_t::compute(unit_t& unit, number_t& value) {
    activation_t now{&unit, unit.calculation->steps.data(), unit.calculation->registers.data()};
    number_t* r = now.registers;
    for (const step_t* at = now.at;;) {
        if (quick_do(*at, r)) {
            ++at;
            continue;
        }
        const opcode_e opcode = at->opcode;
        const number_t& a = r[at->a];
        if (opcode == opcode_e::branch) {
            at += a.int_of_number() == 0 ? 1 + at->out : 1;
            continue;
        }
        now.at = at + 1;
        if (opcode == opcode_e::end) {
            if (calls.empty()) {
                value = a;
                return true;
            }
            give_back(now, a);
        } else if (!(opcode == opcode_e::script_call ? call(now) : step_do(now, a))) {
            return false;
        }
        at = now.at;
        r = now.registers;
    }
}

/// Does a step, the first operand of which is `a`.
bool calculator_t::step_do(activation_t& now, number_t a) {
    const step_t& step = now.at[-1];
    number_t* const r = now.registers;
    switch (step.opcode) {
    case opcode_e::jump:
        now.at += step.out;
        return true;
    case opcode_e::negate:
        r[step.out] = numbers::negate(a);
        return true;
    case opcode_e::positive:
        r[step.out] = numbers::positive(a);
        return true;
    case opcode_e::logical_not:
        r[step.out] = number_t::of_int(a.int_of_number() == 0 ? 1 : 0);
        return true;
    case opcode_e::builtin:
        r[step.out] = builtins[step.detail].of_numbers(a, r[step.b]);
        return true;
    default:
        return binary_do(step.opcode, a, r[step.b], r[step.out]);
    }
}

/// Begins the body of a call.
bool calculator_t::call(activation_t& now) {
    const step_t& step = now.at[-1];
    if (calls.empty()) {
        links_check();
    }
    unit_t* const body = body_find(*now.unit, step);
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
    number_t* const entered = window.data() + window_used;
    number_t* out = entered;
    for (std::uint32_t i = 0; i < called.names; ++i) {
        *out++ = called.registers[i];
    }
    for (unsigned i = 0; i < step.detail; ++i) {
        *out++ = now.registers[step.a + i];
    }
    window_used += called.registers.size();
    calls.push_back(now);
    now = {body, called.steps.data(), entered};
    return true;
}

} // namespace ko::alg

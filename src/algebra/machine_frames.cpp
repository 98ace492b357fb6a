// The frames that calls of script functions and of the built-in `evaluate` and `assign` push.
#include <utility>

#include "algebra/limits.h"
#include "algebra/machine.h"
#include "exception/exception.h"

namespace ko::alg {

frame_extra_t::frame_extra_t() = default;
frame_extra_t::~frame_extra_t() = default;

/// What the program at `place` lets the parser know.
lexer_settings_t machine_t::settings_of(const frame_t& place) const {
    lexer_settings_t settings;
    settings.functions = place.is_bare ? nullptr : &place.state->functions;
    settings.numeric_only = !place.is_isolated && place.state->numeric_only;
    settings.budget = base.drawn;
    return settings;
}

/// The text of the last parse error on the evaluator that the frame at `place` works on, be it
/// one that is only made when somebody asks.
std::string& machine_t::parse_error_of(std::size_t place) {
    while (frames[place].is_isolated && frames[place].kind == frame_e::assign) {
        --place;
    }
    return frames[place].is_isolated ? frames[place].extras().parse_error
                                     : frames[place].state->parse_error;
}

/// The function that a call means now.
const function_t& machine_t::script_find(const target_t& target, call_link_t& link) {
    const script_table_t& table = target.callee.scripts != nullptr
                                      ? *target.callee.scripts
                                      : *frame().state->functions.scripts_get();
    const std::uint64_t now =
        target.callee.scripts != nullptr ? table.revision_get() : table.identity_get();
    if (link.table != now || link.table == 0) {
        link = call_link_t();
        link.function = table.find(target.name);
        link.table = link.function == nullptr ? 0 : now;
    }
    if (link.function == nullptr) {
        throw exception_t("internal function %s -- no longer defined", target.name.c_str());
    }
    return *link.function;
}

/// Whether the arguments of a call are to be evaluated: a function without parameters has them
/// left out. If not, the call is what follows them.
bool machine_t::arguments_wanted(const instruction_t& instruction) {
    unit_t& unit = *frame().unit;
    const target_t& target = unit.program->targets[instruction.a.place];
    if (!script_find(target, unit.calls[instruction.a.place]).parameters.empty()) {
        return true;
    }
    pc = unit.program->code.data() + instruction.b.place;
    return false;
}

/// Pushes an isolated frame on top of that of its caller.
frame_t& machine_t::called_push(unit_t& unit, frame_e kind) {
    frame().resume = pc;
    context_t& state = *frame().state;
    const unsigned depth = frame().depth + 1;
    frame_t& called = frame_push(unit, kind);
    called.state = &state;
    called.journal = state.variables.journal_size();
    called.depth = depth;
    called.is_isolated = true;
    return called;
}

void machine_t::script_call(const instruction_t& instruction) {
    unit_t& unit = *frame().unit;
    const target_t& target = unit.program->targets[instruction.a.place];
    call_link_t& link = unit.calls[instruction.a.place];
    const bool has_arguments = instruction.opcode == opcode_e::script_call;
    const std::size_t found = has_arguments ? arguments_count(instruction) : 0;
    const function_t& function = script_find(target, link); // the arguments may have changed it
    if (const std::size_t expected = function.parameters.size(); expected != 0) {
        const int count = static_cast<int>(expected);
        counts_check(target, "internal", found, count, count);
    } else {
        arguments_release(found);
    }
    nesting_t::check(frame().depth, base.drawn->limits, nested_e::script, target.name);
    unit_t& body = body_get(function, link);
    const std::size_t first = top - function.parameters.size();
    frame_t& called = called_push(body, frame_e::script);
    called.name = &target.name;
    called.floor = first;
    parameters_bind(first);
    frame_enter();
}

/// Moves the arguments into the variables of the parameters.
void machine_t::parameters_bind(std::size_t first) {
    links_check();
    context_t& state = *frame().state;
    unit_t& body = *frame().unit;
    std::size_t at = first;
    for (const std::uint32_t parameter : body.parameters) {
        cell_t& cell = cell_to_write(state, body, parameter);
        state.variables.journal_put(cell);
        cell_set(cell, values.data()[at++]);
    }
    arguments_release(top - first);
}

/// The compiled body of a function.
unit_t& machine_t::body_get(const function_t& function, call_link_t& link) {
    const context_t& state = *frame().state;
    const environment_t environment = environment_of(state);
    if (bodies_family != state.family || bodies_identity == 0) {
        bodies_drop(state.family);
    }
    if (link.body != nullptr && link.bodies == bodies_identity &&
        link.environment == environment) {
        return *link.body;
    }
    unit_t& body = body_find(function, environment);
    link.bodies = bodies_identity;
    link.environment = environment;
    link.body = &body;
    return body;
}

/// The body from the collection, which it is put into where it is missing.
unit_t& machine_t::body_find(const function_t& function, const environment_t& environment) {
    std::string key = function.body;
    for (const std::string& parameter : function.parameters) {
        key += '\0' + parameter;
    }
    auto found = bodies.find({environment, key});
    if (found == bodies.end()) {
        unit_ptr_t made = body_make(function);
        if (bodies.size() >= bodies_max) {
            bodies_drop(bodies_family);
        }
        found =
            bodies.emplace(std::make_pair(environment, std::move(key)), std::move(made)).first;
    }
    return *found->second;
}

/// Lets go of all bodies, and of the links to them; collects those of a family from now on.
void machine_t::bodies_drop(const family_ptr_t& of) {
    bodies.clear();
    bodies_family = of;
    bodies_identity = of->number_make();
}

/// Compiles the body of a function as the frame on top sees it.
unit_ptr_t machine_t::body_make(const function_t& function) {
    unit_ptr_t unit = unit_make();
    program_t& program = *unit->program;
    for (const std::string& parameter : function.parameters) {
        std::uint32_t place = 0;
        while (place < program.names.size() && program.names[place] != parameter) {
            ++place;
        }
        if (place == program.names.size()) {
            program.names.push_back(parameter);
        }
        unit->parameters.push_back(place);
    }
    lexer_settings_t settings = settings_of(frame());
    settings.numeric_only = false; // an evaluator begins without
    std::string error;
    if (!translator.statement_get(function.body, &frame().state->macros) ||
        !translator.translate(settings, program, error)) {
        throw exception_t(error);
    }
    return unit;
}

void machine_t::evaluate_call(const instruction_t& instruction) {
    builtin_call(instruction);
    const result_t argument = argument_take();
    const std::string& text =
        text_argument(argument, "algebra_t::evaluate_f() -- non-string argument to 'evaluate'");
    nesting_t::check(frame().depth, base.drawn->limits, nested_e::evaluation, "evaluate");
    unit_ptr_t unit = unit_make();
    lexer_settings_t settings;
    settings.budget = base.drawn;
    std::string error;
    if (!translator.statement_get(text, nullptr) ||
        !translator.translate(settings, *unit->program, error)) {
        throw exception_t(error);
    }
    frame_t& called = called_push(*unit, frame_e::evaluate);
    called.is_bare = true;
    called.extras().unit = std::move(unit);
    frame_enter();
}

void machine_t::assign_call(const instruction_t& instruction) {
    builtin_call(instruction);
    const result_t value = argument_take();
    const result_t target = argument_take();
    assign_begin(text_argument(target, "algebra_t::assign_f() -- non-string value in arg 1"),
                 value.string_get(false, 6));
}

/// A program that ends at once.
unit_t& machine_t::idle_get() {
    if (idle == nullptr) {
        unit_ptr_t made = unit_make();
        made->program->code.push_back({opcode_e::end});
        made->program->stack_need = 1;
        idle = std::move(made);
    }
    return *idle;
}

void machine_t::assign(const std::string& name, const std::string& expression) {
    unit_t& nothing = idle_get();
    run_t run(*this);
    begin(nothing);
    // The name may be the parse error, which the parse replaces.
    assign_begin(name, expression);
    execute(run);
}

/// Begins the evaluation of a text, the value of which a variable gets. The outcome of the parse
/// is ignored; callers rely on it (quirk "failed parse kept").
void machine_t::assign_begin(std::string name, const std::string& text) {
    unit_ptr_t unit = unit_make();
    const frame_t& caller = frame();
    const unsigned depth = caller.depth;
    const bool is_bare = caller.is_bare;
    const bool is_isolated = caller.is_isolated;
    context_t& state = *caller.state;
    if (translator.statement_get(text, is_bare ? nullptr : &state.macros)) {
        std::string error;
        if (!translator.translate(settings_of(caller), *unit->program, error)) {
            parse_error_of(frames.size() - 1) = error;
        }
    } else {
        unit->program->code = {{opcode_e::push, operand_e::integer}, {opcode_e::end}};
        unit->program->stack_need = 1;
    }
    nesting_t::check(depth, base.drawn->limits, nested_e::assignment, name);
    frame_t& called = called_push(*unit, frame_e::assign); // isolated until the state knows it
    called.is_bare = is_bare;
    called.extras().unit = std::move(unit);
    called.extras().target = std::move(name);
    if (!is_isolated) {
        called.is_isolated = false;
        state.nesting.enter();
    }
    frame_enter();
}

/// Gives the variable of an assignment its value.
void machine_t::assign_end(const slot_t& value) {
    frame_t& ended = frame();
    context_t& state = *ended.state;
    cell_t& cell = state.variables.cell(ended.extras().target);
    if (ended.is_isolated) {
        state.variables.journal_put(cell);
    }
    cell_set(cell, value);
}

/// Gives every isolated frame an evaluator of its own, so that a host function can be called.
void machine_t::evaluators_make() {
    std::size_t end = frames.size();
    while (frames[end - 1].is_isolated) {
        std::size_t bottom = end - 1;
        while (frames[bottom].kind == frame_e::assign) {
            --bottom;
        }
        evaluator_make(bottom, end);
        end = bottom;
    }
    for (std::size_t place = end; place < frames.size(); ++place) {
        frame_t& called = frames[place];
        if (called.kind == frame_e::script && called.extra->call == nullptr) {
            called.extra->call = std::make_unique<nesting_t::call_t>(
                frames[place - 1].state->nesting, *called.name, *base.drawn);
        }
    }
}

/// Makes the evaluator that the script function at `bottom` works on, and the assignments in it
/// up to `end`.
void machine_t::evaluator_make(std::size_t bottom, std::size_t end) {
    frame_t& called = frames[bottom];
    frame_extra_t& extra = called.extras();
    context_t& source = *called.state;
    std::shared_ptr<algebra_t> made = evaluator_like(source);
    context_t& state = context_of(*made);
    state.nesting.depth_set(frames[end - 1].depth);
    state.parse_error = extra.parse_error;
    state.drawn = base.drawn;
    state.program = unit_share(called.unit);
    source.variables.journal_split(state.variables, called.journal);
    for (std::size_t place = bottom; place < end; ++place) {
        frames[place].state = &state;
        frames[place].is_isolated = false;
    }
    extra.evaluator = std::move(made);
}

} // namespace ko::alg

/// @file
/// The machine: runs programs.
///
/// It has a stack of values and a stack of frames, one for each program that has begun and not
/// ended. The outermost program of a run is begun by an evaluator; script functions and the
/// built-in `evaluate` and `assign` push frames of their own, so that they need nothing of the
/// C++ stack. A host function that evaluates begins another run on top of the same stacks.
///
/// A frame works on the state of an evaluator. A script function must see a copy of it, and what
/// it does must be lost when it ends. As long as nobody can tell, the frame is isolated instead:
/// it works on the state of its caller, and a journal puts back what it changes. Somebody can
/// tell once a host function is to be called inside: then every isolated frame gets an evaluator
/// of its own, the innermost first, each a copy of the state as its frame sees it
/// (`evaluators_make`). The text of `evaluate` can call no host function, so that its frame is
/// never given one.
///
/// Whatever can be evaluated, the machine can. Beside it stands the calculator, a second way for
/// the programs that are met most: arithmetic on numbers, outside of any other evaluation, with
/// calls of script functions that are that, too. It needs a third of the instructions, for it
/// keeps no frames, no values but numbers and nothing to put back. It is not the one way, since
/// texts, assignments, host functions, failures and what they leave behind need all of that; and
/// it decides nothing: where it gives up, the machine does the whole program anew.
///
/// However a frame ends, by a value, by `return` or by an exception, `frame_end` undoes what it
/// has done to the state of its caller.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "algebra/calculator.h"
#include "algebra/context.h"
#include "algebra/translator.h"
#include "algebra/unit.h"
#include "algebra/value_stack.h"

namespace ko::alg {

/// Carries the value of the built-in `return` through the C++ frames that a host has begun, to
/// the evaluation that it ends.
struct return_exception_t {
    result_t value;
};

/// What has begun a program.
enum class frame_e : unsigned char { base, script, evaluate, assign };

/// What few frames have.
struct frame_extra_t {
    frame_extra_t();
    frame_extra_t(const frame_extra_t&) = delete;
    frame_extra_t& operator=(const frame_extra_t&) = delete;
    ~frame_extra_t();

    std::shared_ptr<algebra_t> evaluator; ///< of a script function that calls the host
    std::unique_ptr<nesting_t::call_t> call;
    unit_ptr_t unit;         ///< that only this frame has
    std::string target;      ///< of an assignment
    std::string parse_error; ///< of an isolated frame
};

/// A program that has begun.
struct frame_t {
    unit_t* unit = nullptr;
    const instruction_t* resume = nullptr; ///< where it goes on after a call
    context_t* state = nullptr;
    const std::string* name = nullptr; ///< of the function
    std::size_t floor = 0;             ///< number of slots that belong to its callers
    std::size_t journal = 0;           ///< size of the journal when it began
    unsigned depth = 0;                ///< of nested evaluations
    frame_e kind = frame_e::base;
    bool is_isolated = false;
    bool is_bare = false; ///< without the functions and macros of the state
    std::unique_ptr<frame_extra_t> extra;

    frame_extra_t& extras() {
        if (extra == nullptr) {
            extra = std::make_unique<frame_extra_t>();
        }
        return *extra;
    }
};

/// Runs programs on one evaluator. Used by one thread.
class machine_t {
public:
    explicit machine_t(context_t& context)
        : base(context),
          calculator({context.family, context.variables, context.functions, context.macros,
                      context.nesting, context.budget, context.drawn}) {}
    machine_t(const machine_t&) = delete;
    machine_t& operator=(const machine_t&) = delete;

    /// Computes the value of a quick program where that is a matter of floats, and begins no
    /// evaluation.
    /// @return not a number when it is to be calculated
    float calculate_reals(unit_t& unit) const { return calculator.run_reals(unit); }
    /// The same for any program where that is a matter of numbers.
    /// @return false when it is to be run
    bool calculate(unit_t& unit, number_t& value) {
        return calculator.run(unit, bodies_identity, value);
    }
    /// The value of a program, calculated or performed.
    /// @param returned set to true when the built-in `return` has ended it
    result_t run(unit_t& unit, bool& returned);
    /// The same without looking whether it can be calculated.
    result_t perform(unit_t& unit, bool& returned);
    /// Appends the values of a program that is compiled as a list.
    /// @return false when the built-in `return` has ended it: one value is appended then
    bool run_list(unit_t& unit, std::vector<result_t>& out);

    /// Evaluates `expression` and stores its value.
    void assign(const std::string& name, const std::string& expression);
    /// What makes programs for this machine, and for its evaluator.
    translator_t& translator_get() { return translator; }

private:
    /// A run, and what it puts back at its end.
    struct run_t {
        explicit run_t(machine_t& runner)
            : machine(runner), frames(runner.frames.size()), slots(runner.top),
              pool(runner.values.pool_size()), marks(runner.marks.size()),
              drawn(runner.base.drawn) {}
        run_t(const run_t&) = delete;
        run_t& operator=(const run_t&) = delete;
        ~run_t() { machine.end(*this); }

        machine_t& machine;
        const std::size_t frames;
        const std::size_t slots;
        const std::size_t pool;
        const std::size_t marks;
        budget_t* const drawn;
        bool returned = false;
    };

    using bodies_t = std::map<std::pair<environment_t, std::string>, unit_ptr_t>;

    // The run (machine.cpp).
    void begin(unit_t& unit);
    void execute(run_t& run);
    void end(const run_t& run) noexcept;
    bool loop(run_t& run);
    bool step_do(const instruction_t& step, run_t& run);
    slot_t leaf(const unit_t& unit, operand_e kind, argument_t argument);
    slot_t operand_take(const instruction_t& step);
    void unary(const instruction_t& step);
    void branch(const instruction_t& step);
    bool leave(run_t& run);
    [[gnu::cold]] bool give_back(run_t& run);
    [[gnu::cold]] bool give_back(run_t& run, result_t value);
    frame_t& frame_push(unit_t& unit, frame_e kind) {
        frames.emplace_back();
        frame_t& pushed = frames.back();
        pushed.unit = &unit;
        pushed.kind = kind;
        pushed.floor = top;
        unit.pin();
        return pushed;
    }
    void frame_end() noexcept {
        frame_t& ended = frames.back();
        if (ended.kind != frame_e::base) {
            frame_undo(ended);
        }
        ended.unit->unpin();
        frames.pop_back();
    }
    static void frame_undo(const frame_t& ended) noexcept;
    /// Makes the program on top ready to run from its beginning.
    void frame_enter() {
        const frame_t& entered = frame();
        const program_t& program = *entered.unit->program;
        base.drawn->steps_draw(program.steps);
        values.reserve(top, program.stack_need);
        links_check(entered);
        pc = program.code.data();
    }
    frame_t& frame() { return frames.back(); }

    // Variables (machine_values.cpp).
    slot_t load(std::uint32_t place);
    slot_t load_text(const result_t& value);
    cell_t& cell_to_write(context_t& state, unit_t& unit, std::uint32_t place);
    void cell_set(cell_t& cell, slot_t value);
    void store(std::uint32_t place, slot_t value);
    /// Forgets links that are no longer good.
    void links_check() { links_check(frame()); }
    static void links_check(const frame_t& running) {
        const context_t& state = *running.state;
        running.unit->links_check(state.family, state.variables.generation_get());
    }

    // Operators on what is no pair of numbers (machine_values.cpp).
    slot_t unary_general(opcode_e opcode, slot_t a);
    slot_t binary_general(opcode_e opcode, slot_t a, slot_t b);
    slot_t binary_of_integers(opcode_e opcode, slot_t a, slot_t b);
    [[gnu::cold]] slot_t binary_of_results(opcode_e opcode, slot_t a, slot_t b);
    const std::string* text_of(slot_t slot) const;
    slot_t join(slot_t a, slot_t b, const std::string& left, const std::string& right);
    int int_of(slot_t slot) const;

    // Calls (machine_calls.cpp).
    void call_do(const instruction_t& step);
    std::size_t arguments_count(const instruction_t& instruction);
    void arguments_release(std::size_t count);
    static void counts_check(const target_t& target, const char* kind, std::size_t found,
                             int least, int most) {
        const int count = static_cast<int>(found);
        if (count < least || count > most) {
            fail_counts(target, kind, count, least, most);
        }
    }
    [[noreturn, gnu::cold]] static void fail_counts(const target_t& target, const char* kind,
                                                    int count, int least, int most);
    void builtin_call(const instruction_t& instruction);
    void builtin_general(const target_t& target, slot_t* arguments);
    void host_call(const instruction_t& instruction);
    result_t host_apply_one(const function_prototype_t& function, algebra_t& owner);
    result_t host_apply_two(const function_prototype_t& function, algebra_t& owner);
    result_t host_apply_three(const function_prototype_t& function, algebra_t& owner);
    result_t host_apply_list(const host_record_t& host, algebra_t& owner, std::size_t count);
    result_t host_apply(const std::string& name, const host_record_t& host, std::size_t count);
    result_t argument_take();
    [[gnu::cold]] void foreign(const instruction_t& instruction);

    // Frames of calls (machine_frames.cpp).
    frame_t& called_push(unit_t& unit, frame_e kind);
    bool arguments_wanted(const instruction_t& instruction);
    void script_call(const instruction_t& instruction);
    const function_t& script_find(const target_t& target, call_link_t& link);
    unit_t& body_get(const function_t& function, call_link_t& link);
    [[gnu::cold]] unit_t& body_find(const function_t& function, const environment_t& environment);
    [[gnu::cold]] unit_ptr_t body_make(const function_t& function);
    [[gnu::cold]] void bodies_drop(const family_ptr_t& of);
    void parameters_bind(std::size_t first);
    [[gnu::cold]] void evaluate_call(const instruction_t& instruction);
    [[gnu::cold]] void assign_call(const instruction_t& instruction);
    [[gnu::cold]] unit_t& idle_get();
    [[gnu::cold]] void assign_begin(std::string name, const std::string& text);
    [[gnu::cold]] lexer_settings_t settings_of(const frame_t& place) const;
    [[gnu::cold]] std::string& parse_error_of(std::size_t place);
    [[gnu::cold]] void evaluators_make();
    [[gnu::cold]] void evaluator_make(std::size_t bottom, std::size_t top);

    [[gnu::cold]] void assign_end(const slot_t& value);
    [[noreturn, gnu::cold]] void fail(opcode_e opcode);

    context_t& base;
    translator_t translator;
    calculator_t calculator;
    value_stack_t values;
    std::vector<frame_t> frames;
    std::vector<std::size_t> marks; ///< where lists of unknown length begin
    bodies_t bodies;
    unit_ptr_t idle;            ///< does nothing; below what a host has assigned
    family_ptr_t bodies_family; ///< of the environments of the bodies
    std::uint64_t bodies_identity = 0;

    // Of the frame on top, kept here while it does not run.
    std::size_t top = 0; ///< number of slots in use
    const instruction_t* pc = nullptr;
};

} // namespace ko::alg

/// @file
/// What writes a program: one instruction after the other, and the names, texts and callees that
/// these refer to.
///
/// The writer knows how many values are on the stack, the jumps that still lack their goal, and
/// when an instruction that looks for interruptions is due.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "algebra/limits.h"
#include "algebra/program.h"

namespace ko::alg {

/// Memory for a writer, which a caller may keep from one program to the next.
struct writer_room_t {
    std::vector<std::uint32_t> names; ///< hash table: places of names, one up
    std::vector<std::uint32_t> jumps; ///< places of the jumps that still lack their goal
};

/// Writes one program; lives as long as that takes.
class code_writer_t {
public:
    /// @param target receives the code; its names may hold some already
    code_writer_t(writer_room_t& writer_room, program_t& target);

    /// Writes an instruction.
    /// @param taken number of values that it takes from the stack
    /// @param left number of values that it leaves there
    void emit(const instruction_t& instruction, std::size_t taken, std::size_t left) {
        if (++unwatched == instructions_unwatched_max) {
            unwatched = 0;
            program.code.push_back({opcode_e::watch});
        }
        program.code.push_back(instruction);
        height = height - taken + left;
        program.stack_need = std::max(program.stack_need, height);
    }
    /// Writes an instruction that may jump; `land` tells where to.
    void emit_fork(const instruction_t& instruction, std::size_t taken);
    /// Writes the jump over the second operand of a choice, which begins here.
    void emit_jump();
    /// Lets the last jump that lacks its goal lead here.
    void land();
    /// Ends the program.
    void end();

    /// The place of a name, which is added where it is new.
    std::uint32_t name_place(std::string_view name);
    std::uint32_t text_add(std::string_view text);
    std::uint32_t target_add(callee_t callee, std::string_view name);
    /// The instruction of a call.
    instruction_t call_of(const callee_t& callee, std::uint32_t target);

private:
    std::uint32_t code_end() const { return static_cast<std::uint32_t>(program.code.size()); }
    std::uint32_t name_add(std::string_view name);
    void names_enter();
    void name_enter(std::uint32_t place);

    writer_room_t& room;
    program_t& program;
    std::size_t height = 0; ///< of the stack of values
    std::size_t unwatched = 0;
};

} // namespace ko::alg

/// @file
/// The short way from a line to a program: most lines need no tree.
///
/// An operator-precedence parser with two stacks. Operands that are leaves wait on the one,
/// operators on the other; an operator is written as soon as what follows it binds no stronger.
/// Of lines that bind this way, the parser makes the same tree, and the compiler the same code,
/// instruction by instruction:
/// - a leaf is part of its operator's instruction. A name that is still waiting when anything
///   else is written is looked at first; numbers and texts can wait;
/// - values in lists, the two operands of a choice and what is assigned are always pushed.
///
/// A line that is wrong or merely unusual (signs side by side, calls without parentheses, lists
/// in lists) is left to the parser and the compiler, which know what becomes of it.
#pragma once

#include <string>
#include <vector>

#include "algebra/code_writer.h"
#include "algebra/lexer.h"

namespace ko::alg {

/// An operand that waits for its operator.
struct waiting_operand_t {
    operand_e kind;
    argument_t argument;
};

/// An operator, parenthesis or call that waits for its operands.
struct waiting_operator_t {
    enum kind_e : unsigned char {
        prefix,
        infix,
        assignment,
        first,  ///< a choice that is at its first operand, which a colon ends
        second, ///< a choice that is at its second operand
        group,  ///< a parenthesis
        call    ///< the parenthesis of a call
    };

    kind_e kind;
    opcode_e opcode;      ///< to write
    signed char strength; ///< very low where what is inside ends with the operator
    std::uint32_t place;  ///< of the name that is assigned to, or of the callee
    std::uint32_t values; ///< of a call: that are on the stack already
};

/// Memory for the two stacks, which a caller may keep from one line to the next.
struct one_pass_room_t {
    std::vector<waiting_operand_t> operand_stack;
    std::vector<waiting_operator_t> operator_stack;
};

/// Translates a line, if it is one for the short way.
/// @param program receives the code; its names may hold some already
/// @return false when it is not, and `program` is as before
bool line_translate(const std::string& line, const lexer_settings_t& settings,
                    one_pass_room_t& room, writer_room_t& writer_room, program_t& program);

} // namespace ko::alg

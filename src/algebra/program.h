/// @file
/// Programs: trees of tokens as flat code for the machine.
///
/// The code is postfix: operands come before their operator and leave their values on the stack.
/// An operand that is a leaf is part of its operator's instruction wherever that makes no
/// difference to the order in which operands are looked at; otherwise it is pushed. There are
/// jumps forward only.
///
/// A program never changes once it is compiled, so that evaluators on any threads may share it.
/// What an evaluator has found out about its names lies beside it, in a `unit_t`.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "algebra/syntax.h"

namespace ko::alg {

/// Where an operand of an instruction is found.
enum class operand_e : unsigned char {
    stack,   ///< on top of the stack
    name,    ///< a variable
    integer, ///< in the instruction
    real,    ///< in the instruction
    text     ///< a string literal
};

/// What an operand says.
union argument_t {
    std::uint32_t place; ///< of a name, text or callee, or of the instruction to jump to
    int integer;
    float real;
};

/// A step of the machine. Of binary operators, `left` and `right` tell about the operands; other
/// instructions use `a` and `b` as their opcode says.
struct instruction_t {
    opcode_e opcode = opcode_e::no_value;
    operand_e left = operand_e::stack;
    operand_e right = operand_e::stack;
    argument_t a = {};
    argument_t b = {};
};

/// A call or foreign token of a program.
struct target_t {
    callee_t callee;
    std::string name; ///< in messages
};

/// A compiled tree.
struct program_t {
    std::vector<instruction_t> code;
    std::vector<std::string> names; ///< of the variables, each once
    std::vector<result_t> texts;    ///< the string literals
    std::vector<target_t> targets;  ///< of the calls
    std::size_t stack_need = 0;     ///< greatest number of slots in use
    std::size_t steps = 0;          ///< what a budget is charged with
    bool may_change = false;        ///< whether anything in it may change a variable
    bool is_list = false;           ///< whether the values that commas separate are wanted

    /// False where the compiler has been stopped half-way.
    bool is_complete() const { return !code.empty() && code.back().opcode == opcode_e::end; }
    void clear() {
        code.clear();
        names.clear();
        texts.clear();
        targets.clear();
        stack_need = 0;
        steps = 0;
        may_change = false;
        is_list = false;
    }
};

} // namespace ko::alg

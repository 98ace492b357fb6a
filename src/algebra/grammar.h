/// @file
/// The operators of the expression language, in one table.
///
/// The lexer finds a row by its spelling; the parser reads from it what the operator takes, how
/// strongly it binds and how it reports what is missing; the compiler which instruction it
/// becomes, and the machine what it does to values. A new operator is an `opcode_e`, and at the
/// same place a row of the table with the function it calls.
#pragma once

#include <string_view>

#include "algebra/result.h"

namespace ko::alg {

/// What a machine does in one step.
enum class opcode_e : unsigned char {
    negate,
    positive,
    logical_not,
    multiply,
    divide,
    modulo,
    subtract,
    add,
    shift_left,
    shift_right,
    less,
    less_equal,
    greater,
    greater_equal,
    equal,
    not_equal,
    bit_and,
    bit_or,
    logical_and,
    logical_or,
    push,   ///< a leaf
    branch, ///< jumps where the test on top does not hold
    jump,
    multiply_add, ///< of a calculation with floats alone: a product, and a sum with it
    store,        ///< the value on top, which stays, into a variable
    builtin,      ///< a built-in that gives a value
    evaluate,     ///< the built-ins that begin or end a program
    assign,
    give_back,
    arguments, ///< looks whether a script function has parameters now
    script_call,
    host_call,
    foreign_value, ///< asks a token of the host for its value
    foreign_list,  ///< asks it for its values
    foreign_assign,
    list_begin, ///< counts from here the values that the next call gets
    watch,      ///< looks for an interruption
    no_operand, ///< failures
    no_target,
    no_value,
    end ///< of the program
};

/// Where the operands of an operator stand.
enum class shape_e : unsigned char {
    prefix, ///< one behind it
    infix,  ///< one before it and one behind it
    choice  ///< one before it and two behind it
};

/// A row of the table; constant data.
struct operator_t {
    std::string_view spelling;
    shape_e shape;
    signed char strength; ///< higher binds first
    opcode_e opcode;
    const char* class_name; ///< in messages
    result_t (*unary)(const result_t& a);
    result_t (*binary)(const result_t& a, const result_t& b);
    /// In place of `binary`, of an operator that reads both values as integers.
    int (*of_integers)(int x, int y) = nullptr;
};

/// Strength of a token that takes no operands, or has taken them.
constexpr int bound_strength = -15;
/// Functions bind before every operator.
constexpr int function_strength = 3;

/// Number of a row.
using operator_id_t = unsigned char;

constexpr operator_id_t choice_id = static_cast<operator_id_t>(opcode_e::push); ///< "?:"
constexpr operator_id_t assign_id = choice_id + 1;                              ///< "="
constexpr operator_id_t comma_id = choice_id + 2;                               ///< ","
constexpr operator_id_t operators_end = choice_id + 3;

/// The rows; those that a value comes of without a jump or a variable first, in the order of
/// their opcodes.
extern const operator_t operators[operators_end];

/// The row of an operator.
inline const operator_t& operator_get(operator_id_t id) {
    return operators[id];
}
/// The row of the operator that an opcode stands for.
inline const operator_t& operator_get(opcode_e opcode) {
    return operators[static_cast<unsigned>(opcode)];
}
/// The operators that begin with one character, but those of structure, which the lexer knows.
struct operator_start_t {
    operator_id_t prefix = operators_end;
    operator_id_t infix = operators_end; ///< of that character alone
    char second[2] = {};                 ///< of the longer ones
    operator_id_t pair[2] = {operators_end, operators_end};
};
/// All operators by their first character.
struct operator_starts_t {
    constexpr operator_starts_t();

    operator_start_t by_character[256];
};
extern const operator_starts_t operator_starts;

/// @return the operator without an operand before it that begins with `c`, or the end
inline operator_id_t prefix_find(char c) {
    return operator_starts.by_character[static_cast<unsigned char>(c)].prefix;
}
/// @param length receives the length of the spelling: 2 where there is one of two characters
/// @return the operator with an operand before it that begins with `c` and `next`, or the end
inline operator_id_t infix_find(char c, char next, std::size_t& length) {
    const operator_start_t& start = operator_starts.by_character[static_cast<unsigned char>(c)];
    for (unsigned i = 0; i < 2 && start.pair[i] != operators_end; ++i) {
        if (start.second[i] == next) {
            length = 2;
            return start.pair[i];
        }
    }
    length = 1;
    return start.infix;
}

/// Number of operands that stand before an operator.
constexpr unsigned before_count(shape_e shape) {
    return shape == shape_e::prefix ? 0 : 1;
}
/// Number of operands that stand behind it.
constexpr unsigned behind_count(shape_e shape) {
    return shape == shape_e::choice ? 2 : 1;
}
/// The name of an operand in messages.
const char* operand_name(shape_e shape, unsigned operand);

} // namespace ko::alg

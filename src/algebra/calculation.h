/// @file
/// A program as the calculator runs it.
#pragma once

#include <cstdint>
#include <vector>

#include "algebra/number.h"
#include "algebra/program.h"

namespace ko::alg {

/// Steps with three addresses, made from a program and the same as long as that.
///
/// Formulas of measured quantities are sums and products of floats. Where nothing but floats can
/// come out of such ones, the steps can be done without a look at any type.
struct calculation_t {
    /// What it does with the registers `a` and `b` goes to the register `out`. A step of one
    /// operand has it in both. A jump has the number of steps that it leaves out in `out`. A call
    /// of a script function has its first argument in `a` and its target in `b`.
    struct step_t {
        opcode_e opcode;
        unsigned char detail; ///< number of arguments, or the row of a built-in function
        std::uint16_t out;
        std::uint16_t a;
        std::uint16_t b;
    };

    /// A step for floats alone. A sum of a product and the register `c` is one step.
    struct real_step_t : step_t {
        std::uint16_t c;
    };

    std::vector<step_t> steps; ///< none where the program is no calculation
    std::vector<number_t> registers;
    /// The same for the case that all variables are floats; none where values of the program can
    /// be integers even then.
    std::vector<real_step_t> real_steps; ///< as many as `steps`; the last ones may be unused
    std::vector<float> reals;
    std::uint32_t names = 0;      ///< register of the first variable
    std::uint32_t failures = 0;   ///< in a row
    bool may_give_a_name = false; ///< whether its value may be that of a variable as it is
};

/// Makes the steps of a program. There are none when it needs more than numbers.
calculation_t calculation_make(const program_t& program);

} // namespace ko::alg

/// @file
/// The limits of the evaluator that an input can meet, beside those that a host sets.
#pragma once

#include <cstddef>

namespace ko::alg {

/// The replacement of macros in one statement at which substitution gives up. The message says
/// 50; callers rely on both (quirk "48, not 50").
constexpr std::size_t replacements_max = 49;

/// Number of instructions between two looks at the flag that interrupts an evaluation: some ten
/// microseconds of work.
constexpr std::size_t instructions_unwatched_max = 4096;

/// Number of tokens that the lexer reads between two looks at that flag.
constexpr std::size_t tokens_unwatched_max = 4096;

/// Number of bodies of script functions that an evaluator keeps compiled.
constexpr std::size_t bodies_max = 256;

/// Number of names beyond those in use that may be added before absent variables are taken out.
constexpr std::size_t names_untidied_max = 64;

/// Size of a program, of its stack and of its names up to which it can become a calculation.
constexpr std::size_t calculation_max = 1000;
/// Number of arguments of a call in a calculation.
constexpr std::size_t calculation_arguments_max = 8;
/// Number of registers of all calls that a calculation is in, and of these calls.
constexpr std::size_t calculation_window = 4096;
constexpr std::size_t calculation_calls_max = 250;
/// Failures in a row of a calculation that count, and how many runs it rests for each.
constexpr unsigned calculation_failures_max = 16;
constexpr unsigned calculation_rest = 8;
/// Number of runs after which a program is looked at again that can be no calculation.
constexpr unsigned calculation_none_rest = 1000000000;

/// Size of a text from which on its memory is given back when it is done with.
constexpr std::size_t text_kept_max = 4096;

} // namespace ko::alg

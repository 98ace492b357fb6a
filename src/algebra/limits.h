/// @file
/// The limits of the evaluator that an input can meet, beside those that a host sets.
#pragma once

#include <cstddef>

namespace ko::alg {

/// The replacement of macros in one statement at which substitution gives up. The message says
/// 50; callers rely on both.
constexpr std::size_t replacements_max = 49;

/// Number of instructions between two looks at the flag that interrupts an evaluation: some ten
/// microseconds of work.
constexpr std::size_t instructions_unwatched_max = 4096;

/// Number of tokens that the lexer reads between two looks at that flag.
constexpr std::size_t tokens_unwatched_max = 4096;

/// Number of bodies of script functions that an evaluator keeps compiled.
constexpr std::size_t bodies_max = 256;

/// Size of a text from which on its memory is given back when it is done with.
constexpr std::size_t text_kept_max = 4096;

} // namespace ko::alg

/// @file
/// Bounds of the work that an evaluation may do.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ko::alg {

/// What an evaluation may use. 0 means no limit.
///
/// An outermost evaluation and all that it brings about share one count of steps and of text
/// bytes: script functions, the built-in `evaluate` and `assign`, what host functions evaluate
/// on the evaluator that they are given, and on copies of it that they make.
struct limits_t {
    /// Levels of evaluations inside evaluations.
    unsigned nesting = 1000;
    /// Operations: a step is one operator, call or operand of a program that is begun.
    std::uint64_t steps = 0;
    /// Bytes of text that operators join and that are copied into variables and arguments.
    std::size_t text_bytes = std::size_t{64} << 20;
};

} // namespace ko::alg

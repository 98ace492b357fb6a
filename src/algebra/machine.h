/// @file
/// Evaluates expression trees of any depth.
///
/// The machine has a stack of frames, one for each branch that is being evaluated, and a stack of
/// values. It asks the branch on top for its next step until no frame is left. In a step a branch
/// either has one operand evaluated, the values of which are put on the stack before its next
/// step, or it finishes: the values from `base` on are then what it gives.
///
/// A leaf is evaluated at once, without a frame. A frame in list mode may give any number of
/// values, every other frame gives one.
#pragma once

#include <cstddef>
#include <vector>

#include "algebra/branch.h"

namespace ko::alg {

/// A branch that is being evaluated.
struct frame_t {
    const branch_t* branch;
    unsigned step;    ///< number of steps done
    bool list;        ///< the values that commas separate are wanted one by one
    std::size_t base; ///< size of the stack of values before the first step
};

/// The evaluation of one tree. Lives as long as that takes; used by one thread.
class machine_t {
public:
    explicit machine_t(algebra_t& evaluator);

    result_t value_of(const branch_t& root);
    /// Appends the values of `root` in list mode.
    void values_of(const branch_t& root, std::vector<result_t>& out);

    /// @name For the branches, in a step
    /// @{

    /// Puts the value of an operand on the stack.
    /// @throws ko::exception_t the operand is missing
    void evaluate(const child_t& child);
    /// Puts the values of an operand on the stack, those that commas separate one by one.
    void collect(const child_t& child);
    /// Ends the branch; its value is on top of the stack.
    void finish();
    /// Ends the branch with `value` in place of the values from the frame's base on.
    void finish(const frame_t& frame, result_t&& value);
    /// Reports that a branch lacks an operand because its parse failed.
    [[noreturn]] void fail_missing() const;

    algebra_t& algebra;
    std::vector<result_t> values;
    /// @}

private:
    void push(const branch_t& branch, bool list);
    void run(const branch_t& root, bool list);

    std::vector<frame_t> frames;
};

} // namespace ko::alg

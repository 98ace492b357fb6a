/// @file
/// What an evaluation has used of the bounds that its host has set.
///
/// An evaluator owns a budget. The outermost evaluation on it begins the budget; whatever runs
/// inside draws on the same one, also through other evaluators, which then point to it. Steps are
/// drawn when a program is begun, for all of its instructions at once: programs have no loops, so
/// that costs nothing inside them. The flag that interrupts is looked at then too, and at the
/// watch points that a compiler puts into long programs.
#pragma once

#include <atomic>

#include "algebra/bounds.h"

namespace ko::alg {

/// The bounds of an evaluator and what is used of them. Used by one thread, but for the flag.
class budget_t {
public:
    limits_t limits;
    const std::atomic<bool>* interrupt = nullptr; ///< of the host; null for none
    bool lent = false; ///< while a callback of the host runs inside the evaluation

    /// Takes the bounds of another budget, not what is used of them.
    void bounds_take(const budget_t& other);
    /// Forgets what is used.
    void begin() {
        steps = 0;
        text_bytes = 0;
    }

    /// Whether an evaluation may take so many steps, and go on.
    bool is_within(std::uint64_t count) const {
        return (count <= limits.steps || limits.steps == 0) &&
               (interrupt == nullptr || !interrupt->load(std::memory_order_relaxed));
    }
    /// Draws the steps of a program and looks whether the host wants the end.
    /// @throws ko::exception_t a limit is exceeded, or the evaluation is interrupted
    void steps_draw(std::size_t count) {
        steps += count;
        if (steps > limits.steps && limits.steps != 0) {
            fail_steps();
        }
        watch();
    }
    /// Draws bytes of text that are about to be made.
    /// @throws ko::exception_t the limit is exceeded
    void text_draw(std::size_t count) {
        text_bytes += count;
        if (text_bytes > limits.text_bytes && limits.text_bytes != 0) {
            fail_text();
        }
    }
    /// @throws ko::exception_t the host has set the flag
    void watch() const {
        if (interrupt != nullptr && interrupt->load(std::memory_order_relaxed)) {
            fail_interrupted();
        }
    }

private:
    [[noreturn]] void fail_steps() const;
    [[noreturn]] void fail_text() const;
    [[noreturn]] static void fail_interrupted();

    std::uint64_t steps = 0;
    std::uint64_t text_bytes = 0;
};

} // namespace ko::alg

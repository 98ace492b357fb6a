/// @file
/// Verbs for tests of programs that run again and again.
#pragma once

#include "support/evaluation.h"

namespace test {

/// A test with an evaluator, whose programs run many times.
class repeated_evaluator_t : public evaluator_t {
protected:
    /// Stores each expression as the program and evaluates it a number of times.
    void expect_each_time(std::initializer_list<case_t> cases) {
        for (const case_t& c : cases) {
            ASSERT_TRUE(algebra.parse(c.expression)) << c.expression;
            for (int time = 0; time < 200; ++time) {
                EXPECT_EQ(program_outcome(), c.outcome) << "of " << c.expression << ", " << time;
            }
        }
    }
};

} // namespace test

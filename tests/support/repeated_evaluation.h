/// @file
/// Verbs for tests of programs that run again and again.
#pragma once

#include "support/evaluation.h"

namespace test {

/// A test with an evaluator, whose programs run many times.
class repeated_evaluator_t : public evaluator_t {
protected:
    /// Evaluates each expression, parsed once, a number of times.
    void expect_each_time(std::initializer_list<case_t> cases) {
        for (const case_t& c : cases) {
            ko::alg::list_t tokens;
            ASSERT_TRUE(algebra.parse(c.expression, tokens)) << c.expression;
            for (int time = 0; time < 40; ++time) {
                EXPECT_EQ(outcome(tokens), c.outcome) << "of " << c.expression << ", " << time;
            }
        }
    }
};

} // namespace test

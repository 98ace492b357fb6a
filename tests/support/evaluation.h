/// @file
/// Verbs for tests of the expression evaluator.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <typeinfo>

#include "algebra/algebra.h"
#include "exception/exception.h"

namespace test {

/// A value as it writes itself to a stream, its type tag in front: "(i) 3".
inline std::string shown(const ko::alg::result_t& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

/// What `action` comes to: its value as `shown`, or "! " and the message that it throws.
template <class A> std::string outcome_of(A&& action) {
    try {
        return shown(action());
    } catch (const ko::exception_t& e) {
        if (typeid(e) != typeid(ko::exception_t)) {
            return std::string("! of a derived type: ") + e.what();
        }
        return std::string("! ") + e.what();
    }
}

/// `text` repeated `count` times.
inline std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// An expression and what its evaluation comes to, as `outcome_of` tells it.
struct case_t {
    std::string expression;
    std::string outcome;
};

/// A test with an evaluator of its own.
class evaluator_t : public testing::Test {
protected:
    /// What the evaluation of `text` comes to.
    std::string outcome(const std::string& text) {
        return outcome_of([&] { return algebra.evaluate(text); });
    }

    /// What the evaluation of a list comes to.
    std::string outcome(const ko::alg::list_t& tokens) {
        return outcome_of([&] { return algebra.evaluate(tokens); });
    }

    /// What the evaluation of the stored program comes to.
    std::string program_outcome() {
        return outcome_of([&] { return algebra.evaluate(); });
    }

    /// The message of the failure to parse `text`.
    std::string parse_error(const std::string& text) {
        return algebra.parse(text) ? "no failure" : algebra.parse_error_get();
    }

    /// Evaluates each expression, all of them with this evaluator.
    void expect(std::initializer_list<case_t> cases) {
        for (const case_t& c : cases) {
            EXPECT_EQ(outcome(c.expression), c.outcome) << "of " << c.expression;
        }
    }

    /// Parses each expression, which must fail with the message given as its outcome.
    void expect_parse_errors(std::initializer_list<case_t> cases) {
        for (const case_t& c : cases) {
            EXPECT_EQ(parse_error(c.expression), c.outcome) << "of " << c.expression;
        }
    }

    ko::alg::algebra_t algebra;
};

} // namespace test

/// @file
/// Why an expression fails, and at which of its tokens.
#pragma once

#include <cstddef>
#include <string>

#include "algebra/algebra.h"

namespace tool {

/// An expression at fault.
struct failure_t {
    std::string message;   ///< what the evaluator reports, without a line break at its end
    std::string statement; ///< the expression as it was read, or as it was written
    std::size_t mark = static_cast<std::size_t>(-1); ///< byte in `statement`; all bits set: none
};

/// Whether an expression can be read; nothing is evaluated.
/// @param failure receives why not
bool parses(ko::alg::algebra_t& algebra, const std::string& expression, failure_t& failure);

/// Evaluates an expression.
/// @param value receives its value
/// @param failure receives why there is none
/// @return whether it succeeded
bool evaluates(ko::alg::algebra_t& algebra, const std::string& expression,
               ko::alg::result_t& value, failure_t& failure);

/// Looks for the token at which an expression failed that reported `message`.
/// @param algebra the evaluator as it was then; it is copied, and the copy evaluates again
failure_t failure_locate(const ko::alg::algebra_t& algebra, const std::string& expression,
                         const std::string& message);

} // namespace tool

/// @file
/// Limits of the recursion that an input can ask for.
///
/// All kinds count on one counter: the number of evaluations that the current one is nested in.
/// It lies in the evaluator and goes on in the evaluators that are made on the way.
#pragma once

#include <string>

#include "exception/exception.h"

namespace ko::alg {

/// A kind of nested evaluation.
struct nesting_t {
    const char* what; ///< names the kind in the message
    unsigned limit;   ///< number of levels that still work
};

constexpr nesting_t script_nesting{"script function", 1000};
constexpr nesting_t evaluate_nesting{"function", 1000};
constexpr nesting_t assign_nesting{"assignment to", 1000};
constexpr nesting_t function_nesting{"evaluation by function", 1000};

/// Lets an evaluation begin that is nested in `depth` others.
/// @throws ko::exception_t the limit of this kind is exceeded
inline void nesting_check(unsigned depth, const nesting_t& kind, const std::string& name) {
    if (depth >= kind.limit) {
        throw exception_t("algebra_t -- " + std::string(kind.what) + " '" + name +
                          "' nested more than " + std::to_string(kind.limit) + " levels deep");
    }
}

} // namespace ko::alg

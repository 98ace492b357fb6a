/// @file
/// Addition of texts, and addition in place.
#pragma once

#include "algebra/result.h"

namespace ko::alg {

/// The text of `a` followed by that of `b`, in memory asked for once.
result_t text_sum(const result_t& a, const result_t& b);

/// Gives `sum` the value of `sum + value`. A text grows in place, so that a long chain of
/// additions costs no more than the text it makes.
void add_to(result_t& sum, const result_t& value);

} // namespace ko::alg

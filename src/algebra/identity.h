/// @file
/// Numbers that tell the states of a table apart.
#pragma once

#include <cstdint>

namespace ko::alg {

/// A number that no other call has given, on any thread; never 0.
///
/// A table takes a new one whenever it changes, and a copy takes that of its source. Equal
/// numbers then mean equal contents, and what has been found in a table stays found for as long
/// as the number stands.
std::uint64_t identity_make();

} // namespace ko::alg

/// @file
/// Rules for make and ninja.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// A rule that says that `target` is made of `files`.
/// @param phony adds a rule without a command for each file but the first, so that make goes on
///        when one of them is gone
std::string make_rule(const std::string& target, const std::vector<std::string>& files,
                      bool phony);

} // namespace tool

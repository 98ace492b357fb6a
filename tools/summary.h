/// @file
/// What a run read, defined and set, as text.
#pragma once

#include <string>

#include "session.h"

namespace tool {

/// Files, definitions, and the variables that were read and set, with the places where each was
/// first met.
std::string dry_run_text(const session_t& session);

/// The variables that a run left, one a line, with their values.
std::string variables_text(session_t& session);

} // namespace tool

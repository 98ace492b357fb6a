/// @file
/// Ending a run from outside: by a signal or after some time.
#pragma once

#include <atomic>

namespace tool {

/// Becomes true when the program is to stop.
const std::atomic<bool>& stop_flag();

/// Whether the time of a `time_limit_t` was up.
bool time_is_up();

/// Lets an interrupt set the flag instead of ending the program.
void stop_on_interrupt();

/// Sets the flag after some time, unless it is destroyed before. A run that does not notice the
/// flag within a second ends the program with status 1 and a message.
class time_limit_t {
public:
    /// @param seconds 0 for no limit
    explicit time_limit_t(double seconds);
    time_limit_t(const time_limit_t&) = delete;
    time_limit_t& operator=(const time_limit_t&) = delete;
    ~time_limit_t();
};

} // namespace tool

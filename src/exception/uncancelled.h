/// @file
/// Stretches of code in which a thread cannot be cancelled.
#pragma once

#include <pthread.h>

namespace ko {

/// While it lives, `pthread_cancel` of this thread takes no effect; a request made meanwhile is
/// obeyed at the next cancellation point after it.
class uncancelled_t {
public:
    uncancelled_t() noexcept { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before); }
    uncancelled_t(const uncancelled_t&) = delete;
    uncancelled_t& operator=(const uncancelled_t&) = delete;
    ~uncancelled_t() { pthread_setcancelstate(before, nullptr); }

private:
    int before = PTHREAD_CANCEL_ENABLE;
};

} // namespace ko

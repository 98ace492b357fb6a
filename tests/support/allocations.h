/// @file
/// Allocations that fail when a test wants them to; for tests of private parts only.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <string>

namespace test {

/// Number of allocations before one fails; negative when none does.
inline thread_local long allocations_left = -1;

/// What became of an action whose allocation number `number`, counted from 0, failed.
template <class A> std::string outcome(A&& action, long number) {
    std::string message = "no exception";
    allocations_left = number;
    try {
        action();
        message = allocations_left >= 0 ? "not reached" : message;
    } catch (const std::exception& e) {
        allocations_left = -1;
        message = e.what();
    }
    allocations_left = -1;
    return message;
}

/// Tells how many allocations of an operation failed in turn.
/// @return `count`
inline long tell(const char* operation, long count) {
    std::fprintf(stderr, "allocations failed in turn: %s: %ld\n", operation, count);
    return count;
}

/// Makes each allocation of `action` fail in turn, which it has to report. Ends at the first
/// report of something else, which could come again and again.
/// @return how many there were
template <class A> long fail_each(const char* operation, A&& action) {
    for (long number = 0;; ++number) {
        const std::string message = outcome(action, number);
        if (message == "not reached") {
            return tell(operation, number);
        }
        if (message.substr(0, 14) != "std::bad_alloc") {
            ADD_FAILURE() << "allocation " << number << ": " << message;
            return number;
        }
    }
}

} // namespace test

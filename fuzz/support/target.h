/// @file
/// What the fuzz targets share: an end to what an input may ask for, and checks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "exception/exception.h"

/// The entry of every target. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Runs `action` with only so many bytes in all from `operator new`, which then throws
/// `std::bad_alloc` until the end.
///
/// Loops and recursion that an input may ask for allocate in every pass, so that this limits time
/// as well, and shows what a lack of memory leaves behind. Any other exception gets out.
void run_limited(void (*action)(const std::string& input), const std::uint8_t* data,
                 std::size_t size);

/// Ends the program with `message` when `condition` is false, unless memory has run out, which
/// may cut results short.
void require(bool condition, const char* message);

/// Runs `action`. @return false when it throws a `ko::exception_t`
template <class A> bool attempt(A&& action) {
    try {
        action();
        return true;
    } catch (const ko::exception_t&) {
        return false;
    }
}

} // namespace fuzz

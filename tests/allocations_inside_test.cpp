// The hook by which tests make allocations fail.
#include "support/allocations.h"

#include <gtest/gtest-spi.h>

#include <cstdlib>
#include <list>
#include <new>
#include <stdexcept>

// Replaced for the whole program: an allocation can be made to fail.
void* operator new(std::size_t size) {
    if (test::allocations_left >= 0 && test::allocations_left-- == 0) {
        throw std::bad_alloc();
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

// Under a sanitizer this one is not made from the other.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    if (test::allocations_left >= 0 && test::allocations_left-- == 0) {
        throw std::bad_alloc();
    }
    void* block = nullptr;
    if (posix_memalign(&block, static_cast<std::size_t>(alignment), size) != 0) {
        throw std::bad_alloc();
    }
    return block;
}

// Where one is inlined and `new` is not, GCC warns of `free` for what came from `new`.

[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::align_val_t) noexcept {
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    std::free(block);
}

namespace {

TEST(allocations, fail_at_the_number_that_is_asked_for) {
    const auto two = [] {
        std::list<int> list(1);
        list.push_back(2);
    };
    EXPECT_EQ(test::outcome(two, 0), "std::bad_alloc");
    EXPECT_EQ(test::outcome(two, 1), "std::bad_alloc");
    EXPECT_EQ(test::outcome(two, 2), "not reached");
    EXPECT_EQ(test::fail_each("a list of two", two), 2);
}

TEST(allocations, are_no_longer_made_to_fail_after_another_exception) {
    EXPECT_NONFATAL_FAILURE(
        test::fail_each("another exception", [] { throw std::runtime_error("another"); }),
        ": another");
}

} // namespace

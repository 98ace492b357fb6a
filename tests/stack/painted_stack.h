/// @file
/// A thread whose stack shows how much of it was used.
#pragma once

#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace test {

/// Stack for one action at a time, filled with a pattern before it.
class painted_stack_t {
public:
    painted_stack_t()
        : bytes(static_cast<unsigned char*>(
              mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        if (bytes == MAP_FAILED) {
            std::abort();
        }
    }
    painted_stack_t(const painted_stack_t&) = delete;
    painted_stack_t& operator=(const painted_stack_t&) = delete;
    ~painted_stack_t() { munmap(bytes, size); }

    /// Runs an action, which must not throw, in a thread of its own.
    /// @return the number of bytes of stack between the first and the last that were written
    std::size_t used_by(std::function<void()> action) {
        std::memset(bytes, pattern, size);
        pthread_attr_t attributes;
        pthread_t thread;
        if (pthread_attr_init(&attributes) != 0 ||
            pthread_attr_setstack(&attributes, bytes, size) != 0 ||
            pthread_create(&thread, &attributes, run, &action) != 0 ||
            pthread_join(thread, nullptr) != 0) {
            std::abort();
        }
        pthread_attr_destroy(&attributes);
        const unsigned char* const deepest =
            std::find_if(bytes, bytes + size, [](unsigned char c) { return c != pattern; });
        return static_cast<std::size_t>(bytes + size - deepest);
    }

private:
    static constexpr std::size_t size = 8 << 20;
    static constexpr unsigned char pattern = 0xA5;

    static void* run(void* action) {
        (*static_cast<std::function<void()>*>(action))();
        return nullptr;
    }

    unsigned char* const bytes;
};

} // namespace test

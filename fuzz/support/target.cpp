#include "support/target.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
constexpr std::size_t budget = 16u << 20;

/// The bytes that may still be allocated.
std::size_t remaining = unlimited;
bool is_spent = false;

void* allocate(std::size_t size) noexcept {
    if (remaining != unlimited) {
        if (is_spent || size > remaining) {
            is_spent = true;
            return nullptr;
        }
        remaining -= size;
    }
    return std::malloc(size == 0 ? 1 : size);
}

void* allocate_or_throw(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

class budget_t {
public:
    budget_t() {
        remaining = budget;
        is_spent = false;
    }
    budget_t(const budget_t&) = delete;
    budget_t& operator=(const budget_t&) = delete;
    ~budget_t() { remaining = unlimited; }
};

} // namespace

void* operator new(std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new[](std::size_t size) {
    return allocate_or_throw(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace fuzz {

void run_limited(void (*action)(const std::string& input), const std::uint8_t* data,
                 std::size_t size) {
    const std::string input(data, data + size);
    const budget_t limited;
    try {
        action(input);
    } catch (const std::bad_alloc&) {
        if (!is_spent) {
            throw;
        }
    }
}

void require(bool condition, const char* message) {
    if (!condition && !is_spent) {
        std::fprintf(stderr, "%s\n", message);
        std::abort();
    }
}

} // namespace fuzz

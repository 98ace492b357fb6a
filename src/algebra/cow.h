/// @file
/// Copy on write for tables that are copied often and changed rarely.
///
/// Copies of a `cow_t` share one immutable value. A holder that wants to change the value may do
/// so in place only while it is the value's one holder; otherwise it takes a copy of its own
/// first. The count of holders is read with acquire order, so a holder that sees itself alone
/// also sees that every other thread has done with the value.
#pragma once

#include <atomic>
#include <utility>

namespace ko::alg {

/// A shared value of type `T`; null until it is first written.
///
/// A holder belongs to one thread at a time; holders of one value may be on different threads.
template <class T> class cow_t {
public:
    cow_t() = default;
    cow_t(const cow_t& other) : block(other.block) {
        if (block != nullptr) {
            block->holders.fetch_add(1, std::memory_order_relaxed);
        }
    }
    cow_t(cow_t&& other) noexcept : block(std::exchange(other.block, nullptr)) {}
    cow_t& operator=(cow_t other) noexcept {
        std::swap(block, other.block);
        return *this;
    }
    ~cow_t() {
        if (block != nullptr && block->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            drop(block);
        }
    }

    /// The value to read, or null when nothing has been written yet.
    const T* get() const { return block == nullptr ? nullptr : &block->value; }

    /// True when another holder has the value, too.
    bool is_shared() const {
        return block != nullptr && block->holders.load(std::memory_order_acquire) != 1;
    }

    /// The value to change, which must not be shared, nor null.
    T& own() { return block->value; }

    /// The value to change, this holder's own.
    T& write() {
        if (block == nullptr) {
            block = new block_t;
        } else if (block->holders.load(std::memory_order_acquire) != 1) {
            cow_t own;
            own.block = new block_t(block->value);
            std::swap(block, own.block);
        }
        return block->value;
    }

private:
    struct block_t {
        block_t() = default;
        explicit block_t(const T& other) : value(other) {}

        T value;
        std::atomic<unsigned> holders{1};
    };

    /// Out of line: a compiler would unfold the recursion of blocks that hold blocks.
    [[gnu::noinline]] static void drop(block_t* last) { delete last; }

    block_t* block = nullptr;
};

} // namespace ko::alg

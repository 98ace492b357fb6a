/// @file
/// The memory of one document's elements, attributes and links.
///
/// Memory comes in blocks of whole pages, which are aligned to their size, so that a piece leads
/// to its page, the page to its block and the block to its pool. Pieces are cut from the current
/// page one after the other; elements have pages of their own, so that they lie close together. A
/// piece that is given back goes to the list of its size, where the next request for that size
/// finds it.
///
/// A block holds more than a document's own objects only in one case: an attribute that a host
/// took out of its element. The host may delete it later than the document; until then its block
/// stays.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ko::lxml {

/// Gives out pieces of memory. Used by one thread at a time.
class pool_t {
public:
    static constexpr std::size_t unit = alignof(void*); ///< alignment of the pieces
    static constexpr std::size_t page_size = 4096;
    static constexpr std::size_t piece_max = 256; ///< bytes of the largest piece

    /// What a piece is for.
    enum kind_e { element, other, kinds };

    pool_t() = default;
    pool_t(const pool_t&) = delete;
    pool_t& operator=(const pool_t&) = delete;
    ~pool_t();

    /// @param size at most `piece_max`
    /// @throws std::bad_alloc
    void* allocate(std::size_t size, kind_e kind = other);
    /// Takes back a piece of this pool.
    void release(void* piece, std::size_t size) noexcept;

    /// The pool of a piece of memory that came from one; null when it is gone.
    static pool_t* of(const void* piece) noexcept { return page_of(piece).block->pool; }
    /// Notes that a host is to give a piece back by `release_lent`, or that it no longer is.
    static void lend(void* piece) noexcept;
    static void take_back(void* piece) noexcept; ///< @copydoc lend
    /// Takes back a piece that was lent. Its pool may be gone.
    static void release_lent(void* piece, std::size_t size) noexcept;

    /// From now on what lies in the pool is only left behind: it goes with the pool.
    void close() noexcept { closing = true; }
    bool is_closing() const { return closing; }

private:
    /// Stands at the start of the first page of a block, after the head of the page.
    struct block_t {
        pool_t* pool; ///< null when it is gone
        block_t* next;
        std::size_t size;
        long lent; ///< pieces that a host is to give back; it may give one before it takes it
    };

    /// The head of a page.
    struct page_t {
        block_t* block;
    };

    struct free_t;
    struct cursor_t {
        char* at = nullptr;        ///< what is free of the current page
        char* end = nullptr;       ///< its end
        char* block_end = nullptr; ///< of its block; further pages follow before it
        std::size_t pages = 0;     ///< of the next block; 0 before the first one
    };

    static page_t& page_of(const void* piece) noexcept {
        const auto address = reinterpret_cast<std::uintptr_t>(piece);
        return *reinterpret_cast<page_t*>( // NOLINT(performance-no-int-to-ptr)
            address & ~std::uintptr_t{page_size - 1});
    }
    void page_next(cursor_t& cursor);
    void block_add(cursor_t& cursor);
    void page_open(cursor_t& cursor, block_t* block, char* page) noexcept;

    std::array<cursor_t, kinds> cursors;
    block_t* first = nullptr;
    block_t* last = nullptr;
    std::array<free_t*, piece_max / unit + 1> free = {}; ///< pieces by their size in units
    bool closing = false;
};

} // namespace ko::lxml

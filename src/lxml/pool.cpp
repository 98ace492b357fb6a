#include "lxml/pool.h"

#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KO_POISON
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(KO_POISON)
#include <sanitizer/asan_interface.h>
#endif

namespace ko::lxml {

namespace {

constexpr std::size_t block_pages_max = 16;
/// Of the first block; a small document needs no whole page.
constexpr std::size_t first_size = 1024;
/// What malloc keeps in front of a block. Without it the blocks follow each other without gaps.
constexpr std::size_t malloc_size = 16;

// Free memory is out of bounds for AddressSanitizer.
#if defined(__SANITIZE_ADDRESS__) || defined(KO_POISON)
void forbid(void* begin, std::size_t size) {
    __asan_poison_memory_region(begin, size);
}
void allow(void* begin, std::size_t size) {
    __asan_unpoison_memory_region(begin, size);
}
#else
void forbid(void*, std::size_t) {}
void allow(void*, std::size_t) {}
#endif

constexpr std::size_t units_of(std::size_t size) {
    return (size + pool_t::unit - 1) / pool_t::unit;
}

} // namespace

/// A piece that is free.
struct pool_t::free_t {
    free_t* next;
};

pool_t::~pool_t() {
    while (first != nullptr) {
        block_t* const block = first;
        first = block->next;
        if (block->lent != 0) {
            block->pool = nullptr;
            continue;
        }
        void* const memory = &page_of(block);
        allow(memory, block->size);
        ::operator delete(memory, std::align_val_t(page_size));
    }
}

void* pool_t::allocate(std::size_t size, kind_e kind) {
    const std::size_t units = units_of(size);
    if (free_t* const piece = free[units]) {
        allow(piece, units * unit);
        free[units] = piece->next;
        return piece;
    }
    cursor_t& cursor = cursors[kind];
    while (static_cast<std::size_t>(cursor.end - cursor.at) < units * unit) {
        page_next(cursor);
    }
    char* const piece = cursor.at;
    cursor.at += units * unit;
    allow(piece, units * unit);
    return piece;
}

void pool_t::release(void* piece, std::size_t size) noexcept {
    if (closing) {
        return;
    }
    const std::size_t units = units_of(size);
    free[units] = new (piece) free_t{free[units]};
    forbid(piece, units * unit);
}

void pool_t::lend(void* piece) noexcept {
    ++page_of(piece).block->lent;
}

void pool_t::take_back(void* piece) noexcept {
    --page_of(piece).block->lent;
}

void pool_t::release_lent(void* piece, std::size_t size) noexcept {
    page_t& page = page_of(piece);
    block_t* const block = page.block;
    --block->lent;
    if (block->pool != nullptr) {
        block->pool->release(piece, size);
    } else if (block->lent == 0) {
        void* const memory = &page_of(block);
        allow(memory, block->size);
        ::operator delete(memory, std::align_val_t(page_size));
    }
}

/// What is left of the page before is lost: less than the size of an element.
void pool_t::page_next(cursor_t& cursor) {
    if (cursor.end == cursor.block_end) {
        block_add(cursor);
    } else {
        page_open(cursor, page_of(cursor.at - 1).block, cursor.end);
    }
}

/// The first block is small, and each further one twice as large up to a limit.
void pool_t::block_add(cursor_t& cursor) {
    const std::size_t size =
        (cursor.pages == 0 ? first_size : cursor.pages * page_size) - malloc_size;
    char* const memory = static_cast<char*>(::operator new(size, std::align_val_t(page_size)));
    cursor.pages = cursor.pages == 0 ? 1 : cursor.pages * 2;
    cursor.pages = cursor.pages > block_pages_max ? block_pages_max : cursor.pages;
    block_t* const block = new (memory + sizeof(page_t)) block_t{this, nullptr, size, 0};
    (last == nullptr ? first : last->next) = block;
    last = block;
    cursor.block_end = memory + size;
    page_open(cursor, block, memory);
    cursor.at += sizeof(block_t);
    forbid(cursor.at, static_cast<std::size_t>(cursor.block_end - cursor.at));
}

void pool_t::page_open(cursor_t& cursor, block_t* block, char* page) noexcept {
    allow(page, sizeof(page_t));
    new (page) page_t{block};
    cursor.at = page + sizeof(page_t);
    const auto left = static_cast<std::size_t>(cursor.block_end - page);
    cursor.end = page + (left < page_size ? left : page_size);
}

} // namespace ko::lxml

#include "expat_parser/memory.h"

#include <algorithm>
#include <cstdlib>

#include <expat.h>

#include "expat_parser/limits.h"

namespace ko::xml {

namespace {

/// The account that the thread charges. A pointer finds room among what the loader sets aside, so
/// that no function of the loader is called for it.
[[gnu::tls_model("initial-exec")]] thread_local expat_memory_t* current = nullptr;

} // namespace

/// What lies before the bytes that expat gets.
struct alignas(std::max_align_t) expat_memory_t::block_t {
    expat_memory_t* owner;
    std::size_t size;
};

expat_memory_t::expat_memory_t() : limit(memory_free) {}

expat_memory_t::use_t::use_t(expat_memory_t& account) noexcept : before(current) {
    current = &account;
}

expat_memory_t::use_t::~use_t() {
    current = before;
}

XML_ParserStruct* expat_memory_t::parser_create(bool namespaces) {
    static constexpr XML_Memory_Handling_Suite functions = {allocate, reallocate, free};
    const use_t use(*this);
    return XML_ParserCreate_MM(nullptr, &functions, namespaces ? "|" : nullptr);
}

void expat_memory_t::input_add(std::size_t bytes) noexcept {
    input += bytes;
    if (!is_denied()) {
        const std::uint64_t wanted = memory_free + memory_factor * input;
        limit = std::min<std::uint64_t>(wanted, SIZE_MAX / 2);
    }
}

/// No size that is taken comes near to what would wrap around.
bool expat_memory_t::take(std::size_t size) noexcept {
    if (used > limit || size > limit - used) {
        exceeded = true;
        return false;
    }
    used += size;
    return true;
}

void* expat_memory_t::allocate(std::size_t size) {
    if (!current->take(size)) {
        return nullptr;
    }
    auto* const block = static_cast<block_t*>(std::malloc(sizeof(block_t) + size));
    if (block == nullptr) {
        current->used -= size;
        return nullptr;
    }
    *block = {current, size};
    return block + 1;
}

void* expat_memory_t::reallocate(void* bytes, std::size_t size) {
    if (bytes == nullptr) {
        return allocate(size);
    }
    block_t* const old = static_cast<block_t*>(bytes) - 1;
    expat_memory_t& owner = *old->owner;
    const std::size_t growth = size > old->size ? size - old->size : 0;
    if (!owner.take(growth)) {
        return nullptr;
    }
    auto* const block = static_cast<block_t*>(std::realloc(old, sizeof(block_t) + size));
    if (block == nullptr) {
        owner.used -= growth;
        return nullptr;
    }
    owner.used -= block->size + growth - size;
    block->size = size;
    return block + 1;
}

void expat_memory_t::free(void* bytes) {
    if (bytes != nullptr) {
        block_t* const block = static_cast<block_t*>(bytes) - 1;
        block->owner->used -= block->size;
        std::free(block);
    }
}

} // namespace ko::xml

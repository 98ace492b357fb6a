#include "algebra/value_stack.h"

#include <algorithm>
#include <utility>

#include "algebra/limits.h"

namespace ko::alg {

void value_stack_t::grow(std::size_t size) {
    slots.resize(std::max(size, slots.size() + slots.size() / 2));
}

slot_t value_stack_t::keep_text(result_t&& value) {
    const slot_t slot = claim();
    pool[slot.place()] = std::move(value);
    return slot;
}

slot_t value_stack_t::keep_copy(const result_t& value) {
    const slot_t slot = claim();
    try {
        pool[slot.place()] = value;
    } catch (...) {
        release(slot);
        throw;
    }
    return slot;
}

/// A long text gives its memory back.
void value_stack_t::pool_release() noexcept {
    --pool_used;
    std::string& text = result_members_t::text(pool[pool_used]);
    if (text.capacity() > text_kept_max) {
        std::string().swap(text);
    }
}

result_t value_stack_t::take_text(slot_t slot) {
    if (slot.kind() != slot_t::owned) {
        return slot.value();
    }
    result_t& value = pool[slot.place()];
    // A short text is copied, so that the pool keeps its memory.
    result_t taken =
        result_members_t::text(value).size() > text_kept_max ? std::move(value) : value;
    release(slot);
    return taken;
}

} // namespace ko::alg

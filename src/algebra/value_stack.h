/// @file
/// The values of a running program.
///
/// A value is a slot: a tag and eight bytes. A number lies in the slot itself. Everything else,
/// texts above all, is a whole `result_t` that the slot refers to:
/// - a borrowed one belongs to a variable or to the program, and must not change before the slot
///   is gone: only programs that can change nothing borrow from variables;
/// - an owned one lies in the pool of the stack. Slots come and go last in, first out, and so do
///   their values in the pool: the uppermost owned slot always refers to the last one in use.
///   What the pool gives up keeps its memory for the next value.
///
/// A number has the view of its type alone (`single`), or both views as a `result_t` has them,
/// which need not agree where a host has set a type: such a value keeps both on its way from a
/// variable to another one.
#pragma once

#include <cstddef>
#include <vector>

#include "algebra/arm_arithmetic.h"
#include "algebra/result.h"
#include "algebra/result_members.h"

namespace ko::alg {

/// A value on the stack.
struct slot_t {
    enum tag_e : unsigned {
        integer = 0,
        real = 1,
        borrowed = 2, ///< refers to a `result_t` elsewhere
        owned = 3,    ///< refers to a `result_t` in the pool
        kinds = 3,    ///< mask of the above
        single = 4    ///< of a number: the view of the other type is yet to be computed
    };
    struct number_t {
        int integer;
        float real;
    };

    static slot_t of_int(int value) {
        slot_t slot;
        slot.tag = integer | single;
        slot.number.integer = value;
        return slot;
    }
    static slot_t of_float(float value) {
        slot_t slot;
        slot.tag = real | single;
        slot.number.real = value;
        return slot;
    }
    /// A number with both its views, or the value itself, borrowed. A number that has a text,
    /// which a host can bring about, goes as a whole.
    static slot_t of_value(const result_t& value) {
        slot_t slot;
        const unsigned type = result_members_t::type(value);
        if (type <= real && result_members_t::text(value).empty()) {
            slot.tag = type;
            slot.number = {result_members_t::integer(value), result_members_t::real(value)};
        } else {
            slot.tag = borrowed;
            slot.value = &value;
        }
        return slot;
    }

    unsigned kind() const { return tag & kinds; }
    bool is_number() const { return (tag & borrowed) == 0; }
    /// The float reading of a number.
    float float_of_number() const {
        return kind() == integer ? static_cast<float>(number.integer) : number.real;
    }
    /// The integer reading of a number.
    int int_of_number() const {
        return kind() == integer ? number.integer
                                 : arm::truncate(static_cast<double>(number.real));
    }
    /// Computes the view that is missing.
    void complete() {
        if (tag == (integer | single)) {
            number.real = static_cast<float>(number.integer);
        } else if (tag == (real | single)) {
            number.integer = arm::truncate(static_cast<double>(number.real));
        }
        tag &= kinds;
    }

    unsigned tag;
    union {
        number_t number;
        const result_t* value; ///< of a borrowed one
        std::size_t place;     ///< of an owned one, in the pool
    };
};

/// Stack of values. Used by one thread.
class value_stack_t {
public:
    value_stack_t() = default;
    value_stack_t(const value_stack_t&) = delete;
    value_stack_t& operator=(const value_stack_t&) = delete;

    /// Makes room for `count` more slots above `size`. Pointers to slots are void then.
    void reserve(std::size_t size, std::size_t count) {
        if (slots.size() < size + count) {
            grow(size + count);
        }
    }
    slot_t* data() { return slots.data(); }

    /// The value that a slot refers to.
    const result_t& whole(const slot_t& slot) const {
        return slot.kind() == slot_t::owned ? pool[slot.place] : *slot.value;
    }
    /// The value in the pool that an owned slot refers to, to change.
    result_t& own(const slot_t& slot) { return pool[slot.place]; }
    /// A slot with a value of the pool's own, which is what the value last there has left.
    slot_t claim() {
        if (pool_used == pool.size()) {
            pool.emplace_back();
        }
        slot_t slot;
        slot.tag = slot_t::owned;
        slot.place = pool_used++;
        return slot;
    }
    /// A slot that keeps a value of its own.
    slot_t keep(result_t&& value);
    slot_t keep_copy(const result_t& value);
    /// Lets go of a slot, the uppermost one among those that own a value.
    void release(const slot_t& slot) {
        if (slot.kind() == slot_t::owned) {
            pool_release();
        }
    }
    /// Lets go of the values of the slots from `begin` up to `end`.
    void release(const slot_t* begin, const slot_t* end) {
        while (end != begin) {
            release(*--end);
        }
    }
    /// The value of a slot, which is let go of.
    result_t take(slot_t slot);
    /// A copy of the value of a slot.
    result_t value_of(slot_t slot) const;

    std::size_t pool_size() const { return pool_used; }
    /// Lets go of all values that were claimed after the pool had `size`.
    void pool_shrink(std::size_t size) noexcept {
        while (pool_used > size) {
            pool_release();
        }
    }

private:
    void grow(std::size_t size);
    void pool_release() noexcept;

    std::vector<slot_t> slots;
    std::vector<result_t> pool;
    std::size_t pool_used = 0;
};

} // namespace ko::alg

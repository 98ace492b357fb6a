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
#include <cstdint>
#include <utility>
#include <vector>

#include "algebra/arm_arithmetic.h"
#include "algebra/number.h"
#include "algebra/result.h"
#include "algebra/result_text.h"

namespace ko::alg {

/// A value on the stack: two plain words, which a compiler keeps in registers.
class slot_t {
public:
    enum tag_e : unsigned {
        integer = 0,
        real = 1,
        borrowed = 2, ///< refers to a `result_t` elsewhere
        owned = 3,    ///< refers to a `result_t` in the pool
        kinds = 3,    ///< mask of the above
        single = 4    ///< of a number: the view of the other type is yet to be computed
    };

    static slot_t of_int(int value) {
        return {integer | single, static_cast<std::uint32_t>(value)};
    }
    static slot_t of_float(float value) { return {real | single, high(value)}; }
    static slot_t of_place(std::size_t place) { return {owned, place}; }
    static slot_t of_number(number_t value) {
        return value.is_integer() ? of_int(value.int_view()) : of_float(value.float_view());
    }
    /// A number with both its views.
    static slot_t of_number(const result_t& value) {
        return {result_members_t::type(value),
                static_cast<std::uint32_t>(result_members_t::integer(value)) |
                    high(result_members_t::real(value))};
    }
    /// The same, or the value itself, borrowed.
    static slot_t of_value(const result_t& value) {
        if (number_t::is_number(value)) {
            return of_number(value);
        }
        return {borrowed, reinterpret_cast<std::uintptr_t>(&value)};
    }

    unsigned kind() const { return static_cast<unsigned>(tag) & kinds; }
    bool is_number() const { return (tag & borrowed) == 0; }
    bool is_integer() const { return kind() == integer; }
    /// True for a number whose other view is yet to be computed.
    bool is_single() const { return (tag & single) != 0; }
    int int_view() const { return static_cast<int>(static_cast<std::uint32_t>(word)); }
    float float_view() const { return arm::float_of(static_cast<std::uint32_t>(word >> 32U)); }
    /// A copy, word by word: a slot has been written so, and a processor waits where one read
    /// of both words follows.
    slot_t read() const { return {tag, word}; }
    /// What a borrowed slot refers to.
    const result_t& value() const {
        // A word keeps numbers, too. NOLINTNEXTLINE(performance-no-int-to-ptr)
        return *reinterpret_cast<const result_t*>(static_cast<std::uintptr_t>(word));
    }
    /// Where the value of an owned slot lies.
    std::size_t place() const { return static_cast<std::size_t>(word); }

    /// The float reading of a number.
    float float_of_number() const {
        return kind() == integer ? static_cast<float>(int_view()) : float_view();
    }
    /// The integer reading of a number.
    int int_of_number() const {
        return kind() == integer ? int_view() : arm::truncate(float_view());
    }
    /// The number in the view of its type alone, which is all there is to a single one.
    number_t number() const {
        return kind() == integer ? number_t::of_int(int_view())
                                 : number_t::of_float(float_view());
    }
    /// True for a number whose other view is what would be computed from its own one.
    bool is_plain() const {
        if (is_single()) {
            return true;
        }
        const number_t own = number();
        return own.int_of_number() == int_view() &&
               arm::bits_of(own.float_of_number()) == arm::bits_of(float_view());
    }
    /// The number with both its views.
    slot_t completed() const {
        if (!is_single()) {
            return *this;
        }
        return {kind(), static_cast<std::uint32_t>(int_of_number()) | high(float_of_number())};
    }
    /// The value of a number that has both its views.
    result_t value_of_both() const {
        result_t value;
        result_members_t::set(value, kind(), int_view(), float_view());
        return value;
    }
    /// True when both are integers.
    static bool are_integers(const slot_t& a, const slot_t& b) {
        return ((a.tag | b.tag) & kinds) == integer;
    }
    /// True when both, which are numbers, are floats.
    static bool are_reals(const slot_t& a, const slot_t& b) {
        return (a.tag & b.tag & real) != 0;
    }
    static bool are_numbers(const slot_t& a, const slot_t& b) {
        return ((a.tag | b.tag) & borrowed) == 0;
    }

    slot_t() = default;

private:
    slot_t(std::uint64_t new_tag, std::uint64_t new_word) : tag(new_tag), word(new_word) {}
    static std::uint64_t high(float value) { return std::uint64_t{arm::bits_of(value)} << 32U; }

    std::uint64_t tag = 0;
    std::uint64_t word = 0;
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
        return slot.kind() == slot_t::owned ? pool[slot.place()] : slot.value();
    }
    /// The value in the pool that an owned slot refers to, to change.
    result_t& own(const slot_t& slot) { return pool[slot.place()]; }
    /// A slot with a value of the pool's own, which is what the value last there has left.
    slot_t claim() {
        if (pool_used == pool.size()) {
            pool.emplace_back();
        }
        return slot_t::of_place(pool_used++);
    }
    /// A slot that keeps a value of its own.
    slot_t keep(result_t&& value) {
        return number_t::is_number(value) ? slot_t::of_number(value)
                                          : keep_text(std::move(value));
    }
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
    result_t take(slot_t slot) { return slot.is_number() ? number_of(slot) : take_text(slot); }
    /// A copy of the value of a slot.
    result_t value_of(slot_t slot) const {
        return slot.is_number() ? number_of(slot) : whole(slot);
    }
    /// The value of a slot that is a number.
    static result_t number_of(const slot_t& slot) {
        return slot.is_single() ? slot.number().value() : slot.value_of_both();
    }

    std::size_t pool_size() const { return pool_used; }
    /// Lets go of all values that were claimed after the pool had `size`.
    void pool_shrink(std::size_t size) noexcept {
        while (pool_used > size) {
            pool_release();
        }
    }

private:
    void grow(std::size_t size);
    slot_t keep_text(result_t&& value);
    result_t take_text(slot_t slot);
    void pool_release() noexcept;

    std::vector<slot_t> slots;
    std::vector<result_t> pool;
    std::size_t pool_used = 0;
};

} // namespace ko::alg

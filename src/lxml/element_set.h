/// @file
/// The elements that a document owns.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <map>
#include <utility>

#include "export.h"
#include "lxml/iterator_facade.h"

namespace ko::lxml {

class element_t;

/// A set of elements by address, with the member names of `std::set`; it owns nothing.
///
/// It keeps a bit for each place where an element can lie, in maps of 512 bits, so that elements
/// that lie close together take a few bytes each. Iterators stay valid when other elements come
/// and go; a reference to what an iterator points to lives as long as the iterator. Looking up,
/// inserting and erasing take the logarithm of the size.
class element_set_t {
public:
    using key_type = element_t*;
    using value_type = element_t*;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = element_t* const&;
    using const_reference = element_t* const&;

    /// Goes up by address.
    class const_iterator : public bidirectional_facade_t<const_iterator, element_t* const&> {
    public:
        const_iterator() = default;

    private:
        friend class element_set_t;
        friend class forward_facade_t<const_iterator, element_t* const&>;
        friend class bidirectional_facade_t<const_iterator, element_t* const&>;

        const_iterator(const element_set_t* owner, element_t* e) : set(owner), current(e) {}

        element_t* const& get() const { return current; }
        void step() { current = set->after(current); }
        void step_back() { current = set->before(current); }
        bool equals(const const_iterator& other) const { return current == other.current; }

        const element_set_t* set = nullptr;
        element_t* current = nullptr; ///< null at the end
    };
    using iterator = const_iterator;

    element_set_t() = default;
    element_set_t(std::initializer_list<element_t*> list) { insert(list.begin(), list.end()); }
    element_set_t(const element_set_t& other) : maps(other.maps), total(other.total) {}
    element_set_t& operator=(const element_set_t& other) {
        if (this != &other) {
            element_set_t(other).swap(*this);
        }
        return *this;
    }
    ~element_set_t() = default;

    const_iterator begin() const { return {this, after(nullptr)}; }
    const_iterator end() const { return {this, nullptr}; }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }

    bool empty() const { return total == 0; }
    size_type size() const { return total; }

    KO_API size_type count(const element_t* e) const;
    const_iterator find(const element_t* e) const {
        return {this, count(e) == 0 ? nullptr : const_cast<element_t*>(e)};
    }
    /// The first element at or after an address.
    const_iterator lower_bound(const element_t* e) const {
        return count(e) == 0 ? upper_bound(e) : find(e);
    }
    const_iterator upper_bound(const element_t* e) const { return {this, after(e)}; }

    /// Null is not taken.
    KO_API std::pair<const_iterator, bool> insert(element_t* e);
    template <class I> void insert(I first, I last) {
        for (; first != last; ++first) {
            insert(*first);
        }
    }
    KO_API size_type erase(const element_t* e);
    const_iterator erase(const_iterator at) {
        const const_iterator next = std::next(at);
        erase(*at);
        return next;
    }
    KO_API void clear() noexcept;
    KO_API void swap(element_set_t& other) noexcept;

    friend bool operator==(const element_set_t& a, const element_set_t& b) {
        return a.maps == b.maps;
    }
    friend bool operator!=(const element_set_t& a, const element_set_t& b) { return !(a == b); }

private:
    friend class document_t;

    using word_t = std::uintptr_t;

    /// Where an element can lie: a multiple of this.
    static constexpr std::size_t spacing = alignof(void*);
    static constexpr std::size_t word_bits = sizeof(word_t) * 8;
    static constexpr std::size_t words = 512 / word_bits;

    struct map_t {
        std::array<word_t, words> bits = {};

        bool operator==(const map_t& other) const { return bits == other.bits; }
    };
    using maps_t = std::map<std::uintptr_t, map_t>;

    static std::uintptr_t slot_of(const element_t* e) {
        return reinterpret_cast<std::uintptr_t>(e) / spacing;
    }
    static element_t* element_at(std::uintptr_t slot) {
        return reinterpret_cast<element_t*>(slot * spacing); // NOLINT(performance-no-int-to-ptr)
    }
    /// The number of the lowest bit of a word other than 0.
    static std::size_t lowest(word_t word) {
        return static_cast<std::size_t>(__builtin_ctzll(word));
    }

    /// Calls `visit` with each element. It may free the element; it may take others out of the
    /// set, which are not met then, as the destructor of a host's attribute does.
    template <class V> void for_each(const V& visit) const {
        for (const auto& [key, map] : maps) {
            for (std::size_t i = 0; i < words; ++i) {
                word_t done = 0;
                for (word_t left = map.bits[i]; left != 0; left = map.bits[i] & ~done) {
                    done |= left ^ (left - 1);
                    visit(element_at((key * words + i) * word_bits + lowest(left)));
                }
            }
        }
    }

    /// The map for elements with a key; null where there is none.
    maps_t::value_type* map_find(std::uintptr_t key) const;
    /// The element after or before one, null where there is none; of null, the first or the last.
    KO_API element_t* after(const element_t* e) const;
    KO_API element_t* before(const element_t* e) const;

    maps_t maps; ///< by address divided by what a map covers; none is empty
    size_type total = 0;
    maps_t::value_type* recent = nullptr; ///< the map that was changed last; null when it is gone
};

} // namespace ko::lxml

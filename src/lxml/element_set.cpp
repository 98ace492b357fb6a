#include "lxml/element_set.h"

namespace ko::lxml {

namespace {

constexpr std::size_t bits_a_map = 512;

/// The number of the highest bit of a word other than 0.
std::size_t highest(std::uintptr_t word) {
    return static_cast<std::size_t>(63 - __builtin_clzll(word));
}

/// The first bit of a map from a number on; `bits_a_map` when there is none.
template <class M> std::size_t bit_from(const M& map, std::size_t bit, std::size_t word_bits) {
    for (std::size_t i = bit / word_bits; i < map.bits.size(); ++i) {
        const std::uintptr_t word = i == bit / word_bits
                                        ? map.bits[i] & (~std::uintptr_t{0} << bit % word_bits)
                                        : map.bits[i];
        if (word != 0) {
            return i * word_bits + static_cast<std::size_t>(__builtin_ctzll(word));
        }
    }
    return bits_a_map;
}

/// The last bit of a map before a number; `bits_a_map` when there is none.
template <class M> std::size_t bit_before(const M& map, std::size_t bit, std::size_t word_bits) {
    for (std::size_t i = map.bits.size(); i-- > 0;) {
        if (i * word_bits >= bit) {
            continue;
        }
        const std::size_t inside = bit - i * word_bits;
        const std::uintptr_t word =
            inside < word_bits ? map.bits[i] & ((std::uintptr_t{1} << inside) - 1) : map.bits[i];
        if (word != 0) {
            return i * word_bits + highest(word);
        }
    }
    return bits_a_map;
}

} // namespace

/// Who looks for one element after the other most often finds them in one map.
element_set_t::maps_t::value_type* element_set_t::map_find(std::uintptr_t key) const {
    if (recent != nullptr && recent->first == key) {
        return recent;
    }
    const auto found = maps.find(key);
    return found == maps.end() ? nullptr : const_cast<maps_t::value_type*>(&*found);
}

element_set_t::size_type element_set_t::count(const element_t* e) const {
    const maps_t::value_type* const map = map_find(slot_of(e) / bits_a_map);
    if (map == nullptr || reinterpret_cast<std::uintptr_t>(e) % spacing != 0) {
        return 0;
    }
    const std::size_t bit = slot_of(e) % bits_a_map;
    return map->second.bits[bit / word_bits] >> bit % word_bits & 1;
}

std::pair<element_set_t::const_iterator, bool> element_set_t::insert(element_t* e) {
    if (e == nullptr) {
        return {end(), false};
    }
    const std::uintptr_t key = slot_of(e) / bits_a_map;
    if (recent == nullptr || recent->first != key) {
        recent = &*maps.try_emplace(key).first;
    }
    const std::size_t bit = slot_of(e) % bits_a_map;
    word_t& word = recent->second.bits[bit / word_bits];
    const word_t mask = word_t{1} << bit % word_bits;
    const bool is_new = (word & mask) == 0;
    word |= mask;
    total += is_new ? 1 : 0;
    return {const_iterator(this, e), is_new};
}

element_set_t::size_type element_set_t::erase(const element_t* e) {
    if (count(e) == 0) {
        return 0;
    }
    recent = map_find(slot_of(e) / bits_a_map);
    const std::size_t bit = slot_of(e) % bits_a_map;
    word_t& word = recent->second.bits[bit / word_bits];
    word &= ~(word_t{1} << bit % word_bits);
    --total;
    if (word == 0 && bit_from(recent->second, 0, word_bits) == bits_a_map) {
        maps.erase(recent->first);
        recent = nullptr;
    }
    return 1;
}

void element_set_t::clear() noexcept {
    maps.clear();
    total = 0;
    recent = nullptr;
}

void element_set_t::swap(element_set_t& other) noexcept {
    maps.swap(other.maps);
    std::swap(total, other.total);
    std::swap(recent, other.recent);
}

element_t* element_set_t::after(const element_t* e) const {
    std::uintptr_t slot = e == nullptr ? 0 : slot_of(e) + 1;
    for (auto map = maps.lower_bound(slot / bits_a_map); map != maps.end(); ++map) {
        const std::size_t from = map->first == slot / bits_a_map ? slot % bits_a_map : 0;
        const std::size_t bit = bit_from(map->second, from, word_bits);
        if (bit != bits_a_map) {
            return element_at(map->first * bits_a_map + bit);
        }
    }
    return nullptr;
}

element_t* element_set_t::before(const element_t* e) const {
    const std::uintptr_t slot = e == nullptr ? ~std::uintptr_t{0} : slot_of(e);
    for (auto map = maps.upper_bound(slot / bits_a_map); map != maps.begin();) {
        --map;
        const bool is_same = map->first == slot / bits_a_map && e != nullptr;
        const std::size_t bit =
            bit_before(map->second, is_same ? slot % bits_a_map : bits_a_map, word_bits);
        if (bit != bits_a_map) {
            return element_at(map->first * bits_a_map + bit);
        }
    }
    return nullptr;
}

} // namespace ko::lxml

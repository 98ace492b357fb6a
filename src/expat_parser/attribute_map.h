/// @file
/// The attributes of one start tag.
#pragma once

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <utility>
#include <vector>

namespace ko::xml {

/// Attribute values by name, in the order of `strcmp`: a sorted array with the member names of
/// `std::map`.
///
/// Names and values are borrowed. Inserting and erasing end the validity of iterators. Looking up
/// takes the logarithm of the size; `assign` sorts once, inserting one by one moves what follows.
class attribute_map_t {
public:
    using key_type = const char*;
    using mapped_type = const char*;
    using value_type = std::pair<const char*, const char*>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = const value_type&;
    using const_reference = const value_type&;
    using const_iterator = std::vector<value_type>::const_iterator;
    using iterator = const_iterator;
    using const_reverse_iterator = std::vector<value_type>::const_reverse_iterator;
    using reverse_iterator = const_reverse_iterator;

    attribute_map_t() = default;
    attribute_map_t(std::initializer_list<value_type> list) {
        for (const value_type& pair : list) {
            insert(pair);
        }
    }

    const_iterator begin() const { return pairs.begin(); }
    const_iterator end() const { return pairs.end(); }
    const_iterator cbegin() const { return pairs.begin(); }
    const_iterator cend() const { return pairs.end(); }
    const_reverse_iterator rbegin() const { return pairs.rbegin(); }
    const_reverse_iterator rend() const { return pairs.rend(); }

    bool empty() const { return pairs.empty(); }
    size_type size() const { return pairs.size(); }

    const_iterator lower_bound(const char* name) const {
        return std::lower_bound(pairs.begin(), pairs.end(), value_type(name, nullptr), less);
    }
    const_iterator upper_bound(const char* name) const {
        return std::upper_bound(pairs.begin(), pairs.end(), value_type(name, nullptr), less);
    }
    const_iterator find(const char* name) const {
        const const_iterator at = lower_bound(name);
        return at != end() && std::strcmp(at->first, name) == 0 ? at : end();
    }
    size_type count(const char* name) const { return find(name) == end() ? 0 : 1; }
    /// The value of a name.
    /// @throws std::out_of_range when there is none
    const char* at(const char* name) const {
        const const_iterator found = find(name);
        if (found == end()) {
            throw std::out_of_range("attribute_map_t::at");
        }
        return found->second;
    }

    /// Adds a pair unless the name is there. @return where it is, and whether it was added
    std::pair<const_iterator, bool> insert(const value_type& pair) {
        const const_iterator at = lower_bound(pair.first);
        if (at != end() && std::strcmp(at->first, pair.first) == 0) {
            return {at, false};
        }
        return {pairs.insert(at, pair), true};
    }
    std::pair<const_iterator, bool> emplace(const char* name, const char* value) {
        return insert(value_type(name, value));
    }
    const_iterator erase(const_iterator at) { return pairs.erase(at); }
    size_type erase(const char* name) {
        const const_iterator found = find(name);
        if (found == end()) {
            return 0;
        }
        pairs.erase(found);
        return 1;
    }
    void clear() { pairs.clear(); }

    /// Takes the pairs of an array "name, value, name, value, ..., null" of different names.
    void assign(const char* const* array) {
        pairs.clear();
        for (; *array != nullptr; array += 2) {
            pairs.emplace_back(array[0], array[1]);
        }
        sort();
    }

private:
    static bool less(const value_type& a, const value_type& b) {
        return std::strcmp(a.first, b.first) < 0;
    }

    /// A start tag has a handful of attributes, for which the simplest way is the quickest.
    void sort() {
        constexpr size_type few = 12;
        if (pairs.size() > few) {
            std::sort(pairs.begin(), pairs.end(), less);
            return;
        }
        for (size_type i = 1; i < pairs.size(); ++i) {
            const value_type pair = pairs[i];
            size_type to = i;
            for (; to > 0 && less(pair, pairs[to - 1]); --to) {
                pairs[to] = pairs[to - 1];
            }
            pairs[to] = pair;
        }
    }

    std::vector<value_type> pairs;
};

} // namespace ko::xml

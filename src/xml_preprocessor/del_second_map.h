/// @file
/// A map that owns what its pointers point to.
#pragma once

#include <map>

namespace ko {

/// A map from `K` to the pointer type `V` whose destructor deletes every mapped pointer, in the
/// order of the keys. A pointer that is replaced or erased is the caller's again. Neither copied
/// nor assigned.
template <class K, class V> class del_second_map_t : public std::map<K, V> {
public:
    del_second_map_t() = default;
    del_second_map_t(const del_second_map_t&) = delete;
    del_second_map_t& operator=(const del_second_map_t&) = delete;

    ~del_second_map_t() {
        for (auto& entry : *this) {
            delete entry.second;
        }
    }
};

} // namespace ko

#include "lxml/attribute_set.h"

#include <algorithm>
#include <memory>
#include <new>

#include "lxml/attribute_text.h"
#include "lxml/pool.h"
#include "lxml/pooled_attribute.h"

namespace ko::lxml {

namespace {

bool is_before(const attribute_text_t& a, const attribute_text_t& b) {
    return a.ns != b.ns ? a.ns < b.ns : a.name < b.name;
}

/// Keeps the order of equal ones. An element has a handful of attributes, for which the simplest
/// way is the quickest.
void sort(std::vector<attribute_text_t>& list) {
    constexpr std::size_t few = 12;
    if (list.size() > few) {
        std::stable_sort(list.begin(), list.end(), is_before);
        return;
    }
    for (std::size_t i = 1; i < list.size(); ++i) {
        const attribute_text_t item = list[i];
        std::size_t to = i;
        for (; to > 0 && is_before(item, list[to - 1]); --to) {
            list[to] = list[to - 1];
        }
        list[to] = item;
    }
}

} // namespace

attribute_set_t::~attribute_set_t() {
    destroy();
}

/// Frees the attributes of an element's set, and the memory of any.
void attribute_set_t::destroy() noexcept {
    if (is_in_element != 0 && is_pooled != 0 && pool_t::of(this)->is_closing()) {
        for (attribute_t* const a : *this) {
            pooled_attribute_t::leave(a);
        }
    } else if (is_in_element != 0) {
        for (attribute_t* const a : *this) {
            free(a, is_ours(a));
        }
    }
    if (is_tree != 0) {
        delete tree;
    } else {
        array_free();
    }
}

attribute_t** attribute_set_t::place_of(const attribute_key_t& key) const {
    return std::lower_bound(array, array + used, key, attr_ptr_cmp_t());
}

attribute_set_t::const_iterator attribute_set_t::lower_bound(const attribute_key_t& key) const {
    return is_tree != 0 ? const_iterator(tree->lower_bound(key)) : const_iterator(place_of(key));
}

attribute_set_t::const_iterator attribute_set_t::find(const attribute_key_t& key) const {
    const auto is_wanted = [&](const attribute_t* a) {
        return a->name == key.name && a->ns == key.ns;
    };
    // Among a few the simplest way is the quickest.
    constexpr std::size_t few = 8;
    if (is_tree == 0 && used <= few) {
        return const_iterator(std::find_if(array, array + used, is_wanted));
    }
    const const_iterator at = lower_bound(key);
    return at == end() || !is_wanted(*at) ? end() : at;
}

std::pair<attribute_set_t::const_iterator, bool> attribute_set_t::insert(attribute_t* a) {
    const const_iterator at = lower_bound(a);
    if (at != end() && (*at)->ns == a->ns && (*at)->name == a->name) {
        return {at, false};
    }
    const const_iterator place = insert_at(at, a);
    if (is_in_element != 0 && pooled_attribute_t::is_beside(this, a)) {
        pool_t::take_back(a);
    } else {
        is_pooled = 0;
    }
    return {place, true};
}

/// @param at `lower_bound` of the attribute
attribute_set_t::const_iterator attribute_set_t::insert_at(const_iterator at, attribute_t* a) {
    if (is_tree == 0) {
        const std::ptrdiff_t index = at.slot - array;
        reserve(used + std::size_t{1});
        if (is_tree == 0) {
            attribute_t** const place = array + index;
            std::copy_backward(place, array + used, array + used + 1);
            *place = a;
            ++used;
            return const_iterator(place);
        }
    }
    return const_iterator(tree->insert(a).first);
}

/// Sorted first, each attribute is added at the end.
void attribute_set_t::fill(atom_table_t* table, std::vector<attribute_text_t>& list) {
    sort(list);
    reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const attribute_text_t& item = list[i];
        if (i + 1 < list.size() && !is_before(item, list[i + 1])) {
            continue;
        }
        attribute_t* const made =
            pooled_attribute_t::make(this, table, item.name, item.ns, item.value);
        if (is_tree == 0) {
            array[used++] = made;
            continue;
        }
        try {
            tree->insert(tree->end(), made);
        } catch (...) {
            pooled_attribute_t::free(made);
            throw;
        }
    }
}

attribute_set_t::const_iterator attribute_set_t::take(const_iterator at) {
    if (is_tree != 0) {
        return const_iterator(tree->erase(at.node));
    }
    attribute_t** const place = array + (at.slot - array);
    std::copy(place + 1, array + used, place);
    --used;
    return at;
}

void attribute_set_t::remove(const_iterator at) {
    attribute_t* const a = *at;
    take(at);
    free(a, is_ours(a));
}

void attribute_set_t::free(attribute_t* a, bool is_ours) noexcept {
    if (is_ours) {
        pooled_attribute_t::free(a);
    } else {
        delete a;
    }
}

attribute_set_t::const_iterator attribute_set_t::erase(const_iterator at) {
    if (is_ours(*at)) {
        pool_t::lend(*at);
    }
    return take(at);
}

attribute_set_t::size_type attribute_set_t::erase(const attribute_t* a) {
    const const_iterator found = find(a);
    if (found == end()) {
        return 0;
    }
    erase(found);
    return 1;
}

void attribute_set_t::clear() noexcept {
    for (attribute_t* const a : *this) {
        if (is_ours(a)) {
            pool_t::lend(a);
        }
    }
    if (is_tree != 0) {
        tree->clear();
    }
    used = 0;
}

bool attribute_set_t::is_ours(const attribute_t* a) const {
    return is_in_element != 0 && (is_pooled != 0 || pooled_attribute_t::is_beside(this, a));
}

void attribute_set_t::reserve(std::size_t number) {
    if (is_tree != 0 || number <= capacity) {
        return;
    }
    if (number > array_max) {
        tree_make();
        return;
    }
    reserve_array(used == 0 ? number
                            : std::min(array_max, std::max(number, used * std::size_t{2})));
}

void attribute_set_t::reserve_array(std::size_t number) {
    attribute_t** const larger = array_allocate(number);
    std::copy(array, array + used, larger);
    array_free();
    array = larger;
    capacity = static_cast<std::uint32_t>(number) & 0x1FFFFFFF;
}

void attribute_set_t::tree_make() {
    auto made = std::make_unique<tree_t>(array, array + used);
    array_free();
    tree = made.release();
    is_tree = 1;
    capacity = 0;
    used = 0;
}

attribute_t** attribute_set_t::array_allocate(std::size_t number) const {
    const std::size_t size = number * sizeof(attribute_t*); // NOLINT(bugprone-sizeof-expression)
    void* const memory = is_in_element != 0 && size <= pool_t::piece_max
                             ? pool_t::of(this)->allocate(size)
                             : ::operator new(size);
    return static_cast<attribute_t**>(memory);
}

void attribute_set_t::array_free() noexcept {
    const std::size_t size =
        capacity * sizeof(attribute_t*); // NOLINT(bugprone-sizeof-expression)
    if (size == 0) {
        return;
    }
    if (is_in_element != 0 && size <= pool_t::piece_max) {
        pool_t::of(this)->release(array, size);
    } else {
        ::operator delete(array);
    }
}

} // namespace ko::lxml

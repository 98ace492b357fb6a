#include "lxml/child_list.h"

#include <new>
#include <utility>

#include "lxml/pool.h"

namespace ko::lxml {

child_list_t::~child_list_t() {
    if (count != 0 && !(is_in_element != 0 && pool_t::of(this)->is_closing())) {
        clear();
    }
}

void* child_list_t::link_allocate() const {
    return is_in_element != 0 ? pool_t::of(this)->allocate(sizeof(node_t))
                              : ::operator new(sizeof(node_t));
}

child_list_t::iterator child_list_t::insert(const_iterator at, element_t* e) {
    auto* const node = new (link_allocate()) node_t{{at.link->prev, at.link}, e};
    node->prev->next = node;
    node->next->prev = node;
    ++count;
    return iterator(node);
}

child_list_t::iterator child_list_t::insert_all(const_iterator at,
                                                const std::vector<element_t*>& values) {
    iterator first = iterator(at.link);
    const size_type before = count;
    try {
        for (auto value = values.rbegin(); value != values.rend(); ++value) {
            first = insert(first, *value);
        }
    } catch (...) {
        while (count > before) {
            first = erase(first);
        }
        throw;
    }
    return first;
}

child_list_t::iterator child_list_t::erase(const_iterator at) {
    link_t* const next = at.link->next;
    next->prev = at.link->prev;
    next->prev->next = next;
    --count;
    if (is_in_element != 0) {
        pool_t::of(this)->release(at.link, sizeof(node_t));
    } else {
        ::operator delete(at.link);
    }
    return iterator(next);
}

void child_list_t::clear() noexcept {
    while (count != 0) {
        pop_back();
    }
}

bool child_list_t::shares_memory(const child_list_t& other) const noexcept {
    return is_in_element == other.is_in_element &&
           (is_in_element == 0 || pool_t::of(this) == pool_t::of(&other));
}

void child_list_t::reverse() noexcept {
    link_t* link = &ends;
    do {
        std::swap(link->prev, link->next);
        link = link->prev;
    } while (link != &ends);
}

void child_list_t::relink(const std::vector<link_t*>& links) noexcept {
    link_t* before = &ends;
    for (link_t* const link : links) {
        before->next = link;
        link->prev = before;
        before = link;
    }
    before->next = &ends;
    ends.prev = before;
}

void child_list_t::splice(const_iterator at, child_list_t& other) {
    if (this != &other) {
        splice(at, other, other.begin(), other.end());
    }
}

void child_list_t::splice(const_iterator at, child_list_t& other, const_iterator one) {
    const const_iterator after = std::next(one);
    if (at != one && at != after) {
        splice(at, other, one, after);
    }
}

void child_list_t::splice(const_iterator at, child_list_t& other, const_iterator first,
                          const_iterator last) {
    if (first == last) {
        return;
    }
    if (!shares_memory(other)) {
        insert(at, first, last);
        other.erase(first, last);
        return;
    }
    if (this != &other) {
        const auto number = static_cast<size_type>(first == other.begin() && last == other.end()
                                                       ? static_cast<difference_type>(other.count)
                                                       : std::distance(first, last));
        constexpr size_type max = ~size_type{0} >> 1;
        count = (count + number) & max;
        other.count = (other.count - number) & max;
    }
    link_t* const head = first.link;
    link_t* const tail = last.link->prev;
    head->prev->next = last.link;
    last.link->prev = head->prev;
    head->prev = at.link->prev;
    tail->next = at.link;
    head->prev->next = head;
    at.link->prev = tail;
}

void child_list_t::swap(child_list_t& other) {
    if (this != &other) {
        const auto number = static_cast<difference_type>(other.count);
        splice(begin(), other);
        other.splice(other.end(), *this, std::next(begin(), number), end());
    }
}

} // namespace ko::lxml

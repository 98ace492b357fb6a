/// @file
/// What the iterators of the document model's containers have in common.
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace ko::lxml {

/// The operators of an iterator that goes forward.
///
/// @tparam I the iterator. It derives from the facade, makes it a friend and has
///         `get()`, what it points to; `step()`, which goes to the next; and
///         `equals(other)`, whether two iterators point to the same.
/// @tparam R the type of its references
template <class I, class R> class forward_facade_t {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_cv_t<std::remove_reference_t<R>>;
    using difference_type = std::ptrdiff_t;
    using pointer = std::add_pointer_t<R>;
    using reference = R;

    reference operator*() const { return self().get(); }
    pointer operator->() const { return &self().get(); }
    I& operator++() {
        self().step();
        return self();
    }
    I operator++(int) {
        const I before = self();
        self().step();
        return before;
    }
    friend bool operator==(const I& a, const I& b) { return are_equal(a, b); }
    friend bool operator!=(const I& a, const I& b) { return !are_equal(a, b); }

protected:
    I& self() { return static_cast<I&>(*this); }
    const I& self() const { return static_cast<const I&>(*this); }

private:
    static bool are_equal(const I& a, const I& b) { return a.equals(b); }
};

/// The operators of an iterator that also goes back, by its `step_back()`.
template <class I, class R> class bidirectional_facade_t : public forward_facade_t<I, R> {
public:
    using iterator_category = std::bidirectional_iterator_tag;

    I& operator--() {
        this->self().step_back();
        return this->self();
    }
    I operator--(int) {
        const I before = this->self();
        this->self().step_back();
        return before;
    }
};

} // namespace ko::lxml

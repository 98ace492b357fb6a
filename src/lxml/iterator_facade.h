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
    using iterator_category = std::forward_iterator_tag; ///< goes forward
    /// What it points to.
    using value_type = std::remove_cv_t<std::remove_reference_t<R>>;
    using difference_type = std::ptrdiff_t; ///< as of pointers
    using pointer = std::add_pointer_t<R>;  ///< of `operator->`
    using reference = R;                    ///< of `operator*`

    /// What it points to; the end points to nothing.
    reference operator*() const { return self().get(); }
    /// @copydoc operator*
    pointer operator->() const { return &self().get(); }
    /// Goes to the next. @return itself
    I& operator++() {
        self().step();
        return self();
    }
    /// Goes to the next. @return where it pointed before
    I operator++(int) {
        const I before = self();
        self().step();
        return before;
    }
    /// Whether two iterators of one container point to the same.
    friend bool operator==(const I& a, const I& b) { return are_equal(a, b); }
    /// Whether they do not.
    friend bool operator!=(const I& a, const I& b) { return !are_equal(a, b); }

protected:
    /// The iterator that derives from this.
    I& self() { return static_cast<I&>(*this); }
    /// @copydoc self
    const I& self() const { return static_cast<const I&>(*this); }

private:
    static bool are_equal(const I& a, const I& b) { return a.equals(b); }
};

/// The operators of an iterator that also goes back, by its `step_back()`.
template <class I, class R> class bidirectional_facade_t : public forward_facade_t<I, R> {
public:
    using iterator_category = std::bidirectional_iterator_tag; ///< goes both ways

    /// Goes to the one before. @return itself
    I& operator--() {
        this->self().step_back();
        return this->self();
    }
    /// Goes to the one before. @return where it pointed before
    I operator--(int) {
        const I before = this->self();
        this->self().step_back();
        return before;
    }
};

} // namespace ko::lxml

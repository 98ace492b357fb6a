/// @file
/// Numbers that tell the states of tables apart.
///
/// Whoever has found something in a table keeps it with the number that the table had then. A
/// table takes a new number whenever it changes, and a copy takes that of its source, so that
/// equal numbers mean equal contents.
///
/// The numbers come from a family: a counter that an evaluator and its copies share, and that an
/// evaluator which is assigned to takes over from its source. Numbers of two families say nothing
/// about each other. So whoever keeps numbers owns a part of their family, and lets go of all
/// that it has found when it meets another one. As long as a number is kept, no other family can
/// be where its own one is, and the comparison of two pointers is enough.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace ko::alg {

/// A counter of states. It is used by the threads of all evaluators that share it.
class family_t {
public:
    /// A number that this family has not given before; never 0, which stands for a table that
    /// has never been changed, or for nothing found.
    std::uint64_t number_make() noexcept {
        return last.fetch_add(1, std::memory_order_relaxed) + 1;
    }

private:
    std::atomic<std::uint64_t> last{0};
};

/// Owns a part of a family.
using family_ptr_t = std::shared_ptr<family_t>;

} // namespace ko::alg

/// @file
/// The variables of an evaluator and their saved copies.
#pragma once

#include <string>
#include <vector>

#include "algebra/cow.h"
#include "algebra/result.h"
#include "algebra/variable_tree.h"

namespace ko::alg {

/// The variables by name and a stack of snapshots of them.
///
/// Copies and snapshots share the variables until one of them changes. Once a reference to a
/// variable has been given out, which a caller may write through at any time, they share nothing:
/// copying then costs as much as there are variables.
class variables_t {
public:
    variables_t() = default;
    variables_t(const variables_t& other);
    variables_t(variables_t&&) noexcept = default;
    variables_t& operator=(const variables_t& other);
    variables_t& operator=(variables_t&&) noexcept = default;
    ~variables_t() = default;

    /// The value, created as the integer 0 when missing.
    result_t& operator[](const std::string& name);
    /// @return the value, or null
    const result_t* find(const std::string& name) const { return values.find(name); }
    /// Stores a value; a failure leaves the variable as it was.
    void assign(const std::string& name, result_t value);

    void push();
    /// Restores the last snapshot; without one, nothing happens.
    void pop();
    /// Restores the last snapshot but for the values of variables that are still there.
    /// @throws ko::exception_t there is no snapshot
    void pop_diff();
    /// Takes the variables of `other` and leaves the snapshots alone.
    void copy_values(const variables_t& other);

private:
    using snapshots_t = std::vector<variable_tree_t>;

    bool has_snapshot() const { return snapshots.get() != nullptr && !snapshots.get()->empty(); }
    variable_tree_t copy() const { return referenced ? values.clone() : values; }
    void restore(variable_tree_t& restored);

    variable_tree_t values;
    cow_t<snapshots_t> snapshots;
    bool referenced = false; ///< whether a reference to one of the values may be in use
};

} // namespace ko::alg

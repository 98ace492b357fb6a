/// @file
/// The variables of an evaluator and their saved copies.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "algebra/cow.h"
#include "algebra/result.h"

namespace ko::alg {

/// The variables by name and a stack of snapshots of them.
///
/// A copy has variables of its own, so that a reference to one stays this object's alone;
/// snapshots never change and are shared with the copies.
class variables_t {
public:
    using map_t = std::map<std::string, result_t>;

    /// The value, created as the integer 0 when missing.
    result_t& operator[](const std::string& name) { return values[name]; }
    /// @return the value, or null
    const result_t* find(const std::string& name) const;
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
    using snapshots_t = std::vector<std::shared_ptr<const map_t>>;

    bool has_snapshot() const { return snapshots.get() != nullptr && !snapshots.get()->empty(); }
    void restore(map_t& restored);

    map_t values;
    cow_t<snapshots_t> snapshots;
};

} // namespace ko::alg

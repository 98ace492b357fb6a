/// @file
/// The variables of an evaluator, their saved copies, and the journal of script functions.
///
/// A program that runs keeps the cells of its variables. They are good for as long as the
/// generation stands, a number of the evaluator's family: it changes whenever cells may have
/// moved, or must be moved before they are written to because a copy shares them.
///
/// A script function works on a copy of the variables, as far as anyone can tell. What it does
/// is journaled instead: a scope begins with the length of the journal, every cell that changes
/// inside is put down with what it was, and the end of the scope puts it all back, latest first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "algebra/cow.h"
#include "algebra/identity.h"
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
    /// @param numbers the family that the generations are taken from; not owned
    explicit variables_t(family_t& numbers);
    variables_t(const variables_t& other);
    variables_t& operator=(const variables_t&) = delete;
    variables_t(variables_t&&) = delete;
    /// Takes the variables and snapshots of a copy that nobody has used yet.
    variables_t& operator=(variables_t&& other) noexcept;
    ~variables_t() = default;

    /// The value, created as the integer 0 when missing.
    result_t& operator[](std::string_view name);
    /// @return the value, or null
    const result_t* find(std::string_view name) const { return values.find(name); }
    /// Stores a value; a failure leaves the variable as it was.
    void assign(std::string_view name, result_t value);
    /// Removes a variable.
    /// @return false when there is none
    bool erase(std::string_view name);
    /// Appends the names of the variables in ascending order.
    void names_get(std::vector<std::string>& out) const { values.names_get(out); }

    void push();
    /// Restores the last snapshot; without one, nothing happens.
    void pop();
    /// Restores the last snapshot but for the values of variables that are still there.
    /// @throws ko::exception_t there is no snapshot
    void pop_diff();
    /// Takes the variables of `other` and leaves the snapshots alone.
    void copy_values(const variables_t& other);

    /// @name For programs that keep cells
    /// @{

    /// Tells the cells that are good now from those of any other time and evaluator of the
    /// same family.
    std::uint64_t generation_get() const { return generation; }
    /// @return the cell to read, which may be absent, or null
    const cell_t* cell_find(std::string_view name) const { return values.cell_find(name); }
    /// The cell to write, created absent when missing.
    cell_t& cell(std::string_view name);

    /// Forgets the names of variables that are gone, once there may be many, and while no
    /// journal leads to their cells. Programs then look up their cells again.
    void tidy() {
        if (values.is_littered() && journal.empty()) {
            generation = family->number_make();
            values.tidy();
        }
    }

    std::size_t journal_size() const { return journal.size(); }
    /// Puts a cell down before it changes; its value is moved away.
    void journal_put(cell_t& cell) {
        journal.emplace_back();
        journal.back().cell = &cell;
        journal.back().was_present = cell.is_present;
        journal.back().value = std::move(cell.value);
    }
    /// Puts back all cells that were put down since the journal had `size` entries.
    void journal_undo(std::size_t size) noexcept;
    /// Gives `copy` the variables as they are now, and puts back here all cells that were put
    /// down since the journal had `size` entries. Either both are done, or neither.
    void journal_split(variables_t& copy, std::size_t size);
    /// @}

private:
    using snapshots_t = std::vector<variable_tree_t>;

    /// What a cell was.
    struct entry_t {
        cell_t* cell = nullptr;
        bool was_present = false;
        result_t value;
    };

    bool has_snapshot() const { return snapshots.get() != nullptr && !snapshots.get()->empty(); }
    variable_tree_t copy() const;
    void restore(variable_tree_t& restored);
    void journal_move(variable_tree_t& restored);

    variable_tree_t values;
    cow_t<snapshots_t> snapshots;
    std::vector<entry_t> journal;
    family_t* family;
    mutable std::uint64_t generation;
    bool referenced = false; ///< whether a reference to one of the values may be in use
};

} // namespace ko::alg

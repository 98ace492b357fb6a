#include "algebra/variables.h"

#include <utility>

#include "exception/exception.h"

namespace ko::alg {

variables_t::variables_t(family_t& numbers)
    : family(&numbers), generation(numbers.number_make()) {}

variables_t::variables_t(const variables_t& other)
    : values(other.copy()), snapshots(other.snapshots), family(other.family),
      generation(family->number_make()) {}

/// The journal is that of the programs that run here.
variables_t& variables_t::operator=(variables_t&& other) noexcept {
    std::swap(values, other.values);
    snapshots = std::move(other.snapshots);
    family = other.family;
    generation = other.generation;
    referenced = false;
    return *this;
}

/// The nodes of the copy are shared with this object, so that none may be written to before the
/// generation has changed.
variable_tree_t variables_t::copy() const {
    if (referenced) {
        return values.clone();
    }
    generation = family->number_make();
    return values;
}

cell_t& variables_t::cell(std::string_view name) {
    bool moved = false;
    cell_t& found = values.cell(name, moved);
    if (moved) {
        generation = family->number_make();
    }
    return found;
}

result_t& variables_t::operator[](std::string_view name) {
    cell_t& found = cell(name);
    if (!found.is_present) {
        found.value = result_t();
        found.is_present = true;
    }
    referenced = true;
    return found.value;
}

void variables_t::assign(std::string_view name, result_t value) {
    cell_t& found = cell(name);
    found.value = std::move(value);
    found.is_present = true;
}

bool variables_t::erase(std::string_view name) {
    if (find(name) == nullptr) {
        return false;
    }
    tidy(); // a host may add and erase ever new names and evaluate nothing
    cell_t& found = cell(name);
    found.value = result_t();
    found.is_present = false;
    return true;
}

void variables_t::push() {
    variable_tree_t snapshot = copy();
    snapshots.write().push_back(std::move(snapshot));
}

void variables_t::pop() {
    if (has_snapshot()) {
        variable_tree_t restored = snapshots.get()->back();
        restore(restored);
    }
}

void variables_t::pop_diff() {
    if (!has_snapshot()) {
        throw exception_t("algebra_t::memory_pop_diff() -- stack is empty");
    }
    variable_tree_t restored = snapshots.get()->back();
    restored.update_from(values);
    restore(restored);
}

/// Makes `restored` the variables and drops the last snapshot.
void variables_t::restore(variable_tree_t& restored) {
    snapshots.write().pop_back();
    std::swap(values, restored);
    generation = family->number_make();
    referenced = false;
}

void variables_t::copy_values(const variables_t& other) {
    variable_tree_t copied = other.copy();
    std::swap(values, copied);
    generation = family->number_make();
    referenced = false;
}

void variables_t::journal_split(variables_t& copy, std::size_t size) {
    copy.snapshots = snapshots;
    copy.generation = copy.family->number_make();
    copy.referenced = false;
    if (referenced) {
        copy.values = values.clone(); // the cells here must stay where they are
    } else {
        variable_tree_t restored = values;
        journal_move(restored);
        std::swap(values, restored);
        std::swap(copy.values, restored);
        generation = family->number_make();
    }
    journal_undo(size);
}

/// Makes the entries of the journal lead to cells of a copy of the variables, which shares its
/// nodes with them so far.
void variables_t::journal_move(variable_tree_t& restored) {
    std::vector<cell_t*> cells;
    cells.reserve(journal.size());
    bool moved = false;
    for (const entry_t& entry : journal) {
        cells.push_back(&restored.cell(entry.cell->name, moved));
    }
    for (std::size_t i = 0; i < journal.size(); ++i) {
        journal[i].cell = cells[i];
    }
}

void variables_t::journal_undo(std::size_t size) noexcept {
    while (journal.size() > size) {
        entry_t& entry = journal.back();
        entry.cell->value = std::move(entry.value);
        entry.cell->is_present = entry.was_present;
        journal.pop_back();
    }
}

} // namespace ko::alg

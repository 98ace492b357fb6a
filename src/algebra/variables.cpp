#include "algebra/variables.h"

#include <utility>

#include "exception/exception.h"

namespace ko::alg {

variables_t::variables_t(const variables_t& other)
    : values(other.copy()), snapshots(other.snapshots) {}

variables_t& variables_t::operator=(const variables_t& other) {
    return *this = variables_t(other);
}

result_t& variables_t::operator[](const std::string& name) {
    result_t& value = values.write(name);
    referenced = true;
    return value;
}

void variables_t::assign(const std::string& name, result_t value) {
    values.write(name) = std::move(value);
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
    referenced = false;
}

void variables_t::copy_values(const variables_t& other) {
    values = other.copy();
    referenced = false;
}

} // namespace ko::alg

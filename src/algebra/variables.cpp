#include "algebra/variables.h"

#include <utility>

#include "exception/exception.h"

namespace ko::alg {

const result_t* variables_t::find(const std::string& name) const {
    const auto found = values.find(name);
    return found == values.end() ? nullptr : &found->second;
}

void variables_t::assign(const std::string& name, result_t value) {
    values.insert_or_assign(name, std::move(value));
}

void variables_t::push() {
    auto snapshot = std::make_shared<const map_t>(values);
    snapshots.write().push_back(std::move(snapshot));
}

void variables_t::pop() {
    if (has_snapshot()) {
        map_t restored = *snapshots.get()->back();
        restore(restored);
    }
}

void variables_t::pop_diff() {
    if (!has_snapshot()) {
        throw exception_t("algebra_t::memory_pop_diff() -- stack is empty");
    }
    map_t restored = *snapshots.get()->back();
    auto value = values.begin();
    for (auto& [name, saved] : restored) {
        while (value != values.end() && value->first < name) {
            ++value;
        }
        if (value != values.end() && value->first == name) {
            saved = value->second;
        }
    }
    restore(restored);
}

/// Makes `restored` the variables and drops the last snapshot.
void variables_t::restore(map_t& restored) {
    snapshots.write().pop_back();
    values.swap(restored);
}

void variables_t::copy_values(const variables_t& other) {
    map_t copy = other.values;
    values.swap(copy);
}

} // namespace ko::alg

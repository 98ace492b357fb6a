/// @file
/// From the atoms of one table to those of another.
#pragma once

#include <unordered_map>

#include "lxml/atom_table.h"

namespace ko::lxml {

/// Translates atoms; a text that the target lacks is added when its atom is first met. Both
/// tables are borrowed. Atoms count from 0, so that no file can make them collide in the map.
class atom_map_t {
public:
    atom_map_t(const atom_table_t& from_table, atom_table_t& to_table)
        : from(from_table), to(to_table) {}

    /// @param id an atom; an unknown one stands for the empty text
    int get(int id) {
        const std::string& text = from.text_get(id);
        if (&from == &to || text.empty()) {
            return text.empty() ? 0 : id;
        }
        const auto known = ids.find(id);
        return known != ids.end() ? known->second : ids[id] = to.get(text);
    }

private:
    const atom_table_t& from;
    atom_table_t& to;
    std::unordered_map<int, int> ids;
};

} // namespace ko::lxml

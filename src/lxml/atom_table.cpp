#include "lxml/atom_table.h"

namespace ko::lxml {

const std::string str_empty;

atom_table_t::atom_table_t() : next_id(0) {
    get(str_empty);
}

atom_table_t::~atom_table_t() = default;

int atom_table_t::get(const std::string& text) {
    const int known = find(text);
    if (known >= 0) {
        return known;
    }
    by_id.push_back(text);
    try {
        by_name.emplace(by_id.back(), next_id);
    } catch (...) {
        by_id.pop_back();
        throw;
    }
    return next_id++;
}

int atom_table_t::find(const std::string& text) const {
    const auto found = by_name.find(text);
    return found == by_name.end() ? -1 : found->second;
}

const std::string& atom_table_t::text_get(int id) const {
    return id < 0 || id >= next_id ? str_empty : by_id[static_cast<std::size_t>(id)];
}

} // namespace ko::lxml

#include "lxml/node.h"

#include "exception/exception.h"

namespace ko::lxml {

node_t::node_t(atom_table_t* table, int name_id, int ns_id)
    : atoms(table), name(name_id), ns(ns_id) {
    if (table == nullptr) {
        throw exception_t(std::string("node_t::node_t() -- atom table is null"));
    }
}

node_t::~node_t() = default;

const std::string& node_t::name_get() const {
    return atoms->text_get(name);
}

const std::string& node_t::ns_get() const {
    return atoms->text_get(ns);
}

} // namespace ko::lxml

#include "lxml/attribute.h"

namespace ko::lxml {

attribute_t::attribute_t(atom_table_t* table, int name_id, int ns_id, const std::string& text)
    : node_t(table, name_id, ns_id), value(text) {}

attribute_t::~attribute_t() = default;

} // namespace ko::lxml

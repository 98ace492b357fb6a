#include "lxml/named_children.h"

#include "lxml/element.h"

namespace ko::lxml {

child_list_t::const_iterator named_children_t::next(child_list_t::const_iterator at) const {
    while (at != children.end() && ((*at)->name != name || (*at)->ns != ns)) {
        ++at;
    }
    return at;
}

} // namespace ko::lxml

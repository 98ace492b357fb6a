#include "xml_preprocessor/block/switch_block.h"

#include "xml_preprocessor/attributes.h"

namespace ko::xpp {

bool switch_block_t::start() {
    const std::string value = imp.evaluate_string(attribute_text(names().condition));
    for (lxml::element_t* branch : element.children) {
        if (chosen(*branch, value)) {
            body_set(*branch);
            return true;
        }
    }
    return false;
}

bool switch_block_t::chosen(const lxml::element_t& branch, const std::string& value) const {
    if (branch.ns != names().xpp_ns) {
        return false;
    }
    // The first "default" is taken even where a "case" behind it matches: callers rely on it.
    if (branch.name == names().default_) {
        return true;
    }
    return branch.name == names().case_ &&
           imp.evaluate_string(attribute_required(branch, names().expression).value) == value;
}

} // namespace ko::xpp

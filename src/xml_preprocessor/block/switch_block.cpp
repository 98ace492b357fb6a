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
    const keywords_ptr_t branch_keywords = imp.keywords_for(branch, children_keywords());
    const string_table_t& atoms = branch_keywords->get();
    if (branch.ns != atoms.xpp_ns) {
        return false;
    }
    // The first "default" is taken even where a "case" behind it matches: callers rely on it.
    if (branch.name == atoms.default_) {
        return true;
    }
    return branch.name == atoms.case_ &&
           imp.evaluate_string(attribute_required(branch, atoms.expression).value) == value;
}

} // namespace ko::xpp

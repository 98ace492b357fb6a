#include "xml_preprocessor/block/element_block.h"

namespace ko::xpp {

bool element_block_t::start() {
    lxml::element_t* copy = imp.document.element_create(element.name_get(), element.ns_get());
    out->append(copy);
    copy->text = element.text;
    copy->cdata = element.cdata;
    attributes_copy(*copy);
    out = copy;
    return true;
}

void element_block_t::attributes_copy(lxml::element_t& copy) const {
    for (const lxml::attribute_t* attribute : element.attributes) {
        copy.attribute_set(attribute->name_get(), imp.value_of(*attribute, names()));
    }
}

} // namespace ko::xpp

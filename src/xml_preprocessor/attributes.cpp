#include "xml_preprocessor/attributes.h"

#include <algorithm>

#include "exception/exception.h"

namespace ko::xpp {

const lxml::attribute_t* attribute_find(const lxml::element_t& element, int name) {
    // Atom 0, no namespace, comes first in the order, so that of several the first is wanted.
    constexpr std::size_t gone_through_max = 16;
    if (element.attributes.size() > gone_through_max) {
        if (const lxml::attribute_t* plain = element.attribute_get(name, 0)) {
            return plain;
        }
    }
    const auto named = [name](const lxml::attribute_t* attribute) {
        return attribute->name == name;
    };
    const auto found = std::find_if(element.attributes.begin(), element.attributes.end(), named);
    return found == element.attributes.end() ? nullptr : *found;
}

const lxml::attribute_t& attribute_required(const lxml::element_t& element, int name) {
    const lxml::attribute_t* attribute = attribute_find(element, name);
    if (attribute == nullptr) {
        throw exception_t("attribute " + element.atoms->text_get(name) + " missing in element " +
                          element.name_get());
    }
    return *attribute;
}

bool attribute_true(const lxml::element_t& element, int name) {
    const lxml::attribute_t* attribute = attribute_find(element, name);
    return attribute != nullptr && attribute->value == "true";
}

std::string attribute_shown(const std::string& name, const std::string& value) {
    return name + "=\"" + value + "\"";
}

} // namespace ko::xpp

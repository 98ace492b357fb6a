#include "xml_preprocessor/block/specify_block.h"

#include <string_view>

#include "exception/diagnosis.h"
#include "xml_preprocessor/attributes.h"

namespace ko::xpp {

bool specify_block_t::start() {
    index = attribute_text(names().index);
    // A comma at the end thus makes one more, empty piece: callers rely on it.
    values = attribute_value(names().values) + ",";
    return again();
}

bool specify_block_t::again() {
    const std::size_t comma = values.find(',', position);
    if (comma == std::string::npos) {
        return false;
    }
    imp.evaluate_void(index + " = " + values.substr(position, comma - position));
    position = comma + 1;
    return true;
}

void specify_block_t::failed() noexcept {
    const lxml::attribute_t* tag = attribute_find(element, element.atoms->find("namespace"));
    diagnose("Caught exception in ", element.name_get(), " : ",
             tag != nullptr ? std::string_view(tag->value) : "none");
}

} // namespace ko::xpp

#include "xml_preprocessor/block/repeat_block.h"

namespace ko::xpp {

bool repeat_block_t::start() {
    index = attribute_text(names().index);
    const std::string& first_text = attribute_text(names().first);
    const std::string& last_text = attribute_text(names().last);
    value = imp.evaluate_int(first_text);
    last = imp.evaluate_int(last_text);
    if (value > last) {
        return false;
    }
    imp.algebra.assign(index, value);
    return true;
}

bool repeat_block_t::again() {
    if (value == last) {
        return false;
    }
    ++value;
    imp.algebra.assign(index, value);
    return true;
}

} // namespace ko::xpp

#include "expat_parser/entity_limit.h"

#include <algorithm>

namespace ko::xml {

namespace {

/// @param reference what follows an ampersand
bool is_plain(std::string_view reference) {
    constexpr std::string_view plain[] = {"#", "amp;", "lt;", "gt;", "quot;", "apos;"};
    return std::any_of(std::begin(plain), std::end(plain), [=](std::string_view begin) {
        return reference.substr(0, begin.size()) == begin;
    });
}

} // namespace

bool refers_to_entity(std::string_view value) {
    std::size_t at = value.find('&');
    while (at != std::string_view::npos) {
        if (!is_plain(value.substr(at + 1))) {
            return true;
        }
        at = value.find('&', at + 1);
    }
    return false;
}

} // namespace ko::xml

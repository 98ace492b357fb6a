#include "expat_parser/entity_limit.h"

#include <algorithm>
#include <iterator>

namespace ko::xml {

namespace {

/// @param name what stands between an ampersand and a semicolon
bool is_plain(std::string_view name) {
    constexpr std::string_view predefined[] = {"amp", "lt", "gt", "quot", "apos"};
    return name.substr(0, 1) == "#" ||
           std::find(std::begin(predefined), std::end(predefined), name) != std::end(predefined);
}

} // namespace

bool refers_to_entity(std::string_view value) {
    std::size_t at = value.find('&');
    while (at != std::string_view::npos) {
        const std::string_view rest = value.substr(at + 1);
        // None of these can stand in a name.
        const std::size_t end = rest.find_first_of("&;<>\"'= \t\r\n");
        if (end != std::string_view::npos && rest[end] == ';' && !is_plain(rest.substr(0, end))) {
            return true;
        }
        at = value.find('&', at + 1);
    }
    return false;
}

} // namespace ko::xml

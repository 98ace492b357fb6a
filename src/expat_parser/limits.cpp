#include "expat_parser/limits.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <expat.h>

namespace ko::xml {

namespace {

/// @param name what stands between an ampersand and a semicolon
bool is_plain(std::string_view name) {
    static constexpr std::string_view predefined[] = {"amp", "lt", "gt", "quot", "apos"};
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

const char* limits_t::entity_declared(std::string_view value) {
    static_assert(entity_references_max == 1000, "the message names the limit");
    return refers_to_entity(value) && ++referring_entities > entity_references_max
               ? "more than 1000 entities that refer to entities"
               : nullptr;
}

const char* limits_t::attribute_declared(const char* element) {
    static_assert(declared_attributes_max == 1000, "the message names the limit");
    return ++declared_attributes[element] > declared_attributes_max
               ? "more than 1000 attributes declared for an element type"
               : nullptr;
}

const char* limits_t::namespace_declared(const char* prefix, const char* uri) {
    static_assert(namespace_name_max == 4096, "the message names the limit");
    const std::size_t size = uri == nullptr ? 0 : std::strlen(uri);
    if (size > namespace_name_max) {
        return "namespace name longer than 4096 bytes";
    }
    return charge(attribute_cost + size + (prefix == nullptr ? 0 : std::strlen(prefix)));
}

const char* limits_t::element_started(const char* const* attributes) {
    // The attributes that were written come first.
    const char* const* const defaults = attributes + XML_GetSpecifiedAttributeCount(parser);
    const char* const* end = defaults;
    std::uint64_t cost = element_cost;
    for (; *end != nullptr; end += 2) {
        cost += std::strlen(end[0]) + std::strlen(end[1]);
    }
    return charge(cost + static_cast<std::uint64_t>(end - attributes) / 2 * attribute_cost);
}

const char* limits_t::charge(std::uint64_t cost) {
    static_assert(growth_factor == 100 && growth_free == 8388608, "the message names the limit");
    cost_so_far += cost;
    if (cost_so_far > cost_max) {
        // During the event of a start tag the tag counts as read.
        const auto read = static_cast<std::uint64_t>(XML_GetCurrentByteIndex(parser)) +
                          static_cast<std::uint64_t>(XML_GetCurrentByteCount(parser));
        cost_max = growth_free + growth_factor * read;
    }
    return cost_so_far > cost_max
               ? "entities and attribute defaults make more than 8 MiB and 100 times the input"
               : nullptr;
}

} // namespace ko::xml

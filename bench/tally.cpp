#include "tally.h"

#include <expat.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace bench {

namespace {

constexpr std::uint64_t factor = 0x100000001b3;

std::uint64_t mixed(std::uint64_t value, std::string_view text) {
    for (const char c : text) {
        value = (value ^ static_cast<unsigned char>(c)) * factor;
    }
    return value;
}

void start(void* tally, const char* name, const char** attributes) {
    static_cast<tally_t*>(tally)->element(name);
    for (; *attributes != nullptr; attributes += 2) {
        static_cast<tally_t*>(tally)->attribute(attributes[0], attributes[1]);
    }
}

void characters(void* tally, const char* text, int length) {
    static_cast<tally_t*>(tally)->text({text, static_cast<std::size_t>(length)});
}

} // namespace

void tally_t::add(std::uint64_t kind, std::string_view name, std::string_view value) {
    sum += mixed(mixed(kind * factor, name) * factor, value);
}

// By character, since a text comes in pieces that differ between the libraries.
void tally_t::text(std::string_view text) {
    for (const char c : text) {
        if (std::strchr(" \t\r\n", c) == nullptr) {
            sum += static_cast<unsigned char>(c);
        }
    }
}

double tally_of(std::string_view xml) {
    tally_t tally;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetUserData(parser.get(), &tally);
    XML_SetElementHandler(parser.get(), start, nullptr);
    XML_SetCharacterDataHandler(parser.get(), characters);
    if (XML_Parse(parser.get(), xml.data(), static_cast<int>(xml.size()), 1) != XML_STATUS_OK) {
        throw std::runtime_error("what was written is not well formed");
    }
    return tally.number();
}

} // namespace bench

/// @file
/// What a document may cost beyond its size.
///
/// Five things let a small document become large or slow inside expat or in the tree built from
/// it, and each has a bound here:
///
/// - Entities inside entities. Before 2.7.0, unless a distribution has mended it, expat calls
///   itself for an entity inside another one: a long chain of them would take the whole stack. No
///   chain is longer than the number of entities that refer to one, whatever their order.
/// - Attributes that a document type declares. Expat looks through those of a type for each
///   further one and for each of its start tags.
/// - Long namespace names. Expat copies the name into the name of each element and attribute.
/// - Attributes in a namespace. Expat makes such names for a whole start tag before anybody can
///   look at it; what it holds at once is bounded (`expat_parser/memory.h`).
/// - Growth: elements out of entities, attributes and namespaces out of defaults. Each element,
///   attribute and namespace declaration is charged what it costs about in memory. What is
///   written in the document itself never costs more than `growth_factor` for each of its bytes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace ko::xml {

/// Entities of one document type that may refer to entities.
constexpr unsigned entity_references_max = 1000;
/// Attributes that a document type may declare for one element type, each as often as it stands.
constexpr unsigned declared_attributes_max = 1000;
/// Bytes of a namespace name.
constexpr std::size_t namespace_name_max = 4096;
/// What any document may cost.
constexpr std::uint64_t growth_free = 8 << 20;
/// What each byte of a document may cost beyond that.
constexpr std::uint64_t growth_factor = 100;

/// What expat may hold of any document.
constexpr std::uint64_t memory_free = 8 << 20;
/// What it may hold for each byte of a document beyond that. What is written takes less than 20,
/// what entities put into attributes up to 200.
constexpr std::uint64_t memory_factor = 250;

/// What is charged for an element, and for an attribute or a namespace declaration; the texts of
/// what a default adds come on top.
constexpr std::uint64_t element_cost = 128;
constexpr std::uint64_t attribute_cost = 64;

/// @param value the text of an entity in which expat has replaced the character references
/// @return whether the text refers to an entity other than the five that XML defines
bool refers_to_entity(std::string_view value);

/// The counters of one parse. Each function takes note of something and gives the message of the
/// limit that it breaks, or null.
class limits_t {
public:
    explicit limits_t(XML_ParserStruct* expat) : parser(expat) {}

    const char* entity_declared(std::string_view value);
    const char* attribute_declared(const char* element);
    const char* namespace_declared(const char* prefix, const char* uri);
    /// To be called during the event of a start tag.
    const char* element_started(const char* const* attributes);

private:
    const char* charge(std::uint64_t cost);

    XML_ParserStruct* parser;
    unsigned referring_entities = 0;
    std::map<std::string, unsigned> declared_attributes; ///< by element type
    std::uint64_t cost_so_far = 0;
    std::uint64_t cost_max = growth_free;
};

} // namespace ko::xml

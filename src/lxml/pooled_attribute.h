/// @file
/// Attributes in the memory of a document.
#pragma once

#include <memory>
#include <new>
#include <string_view>

#include "lxml/attribute.h"
#include "lxml/pool.h"

namespace ko::lxml {

/// An attribute that lies in the pool of a document. It is made and freed by the library; a host
/// that has taken it out of its element deletes it like any other.
class pooled_attribute_t final : public attribute_t {
public:
    /// Makes an attribute in the pool in which `neighbour` lies.
    static attribute_t* make(const void* neighbour, atom_table_t* table, int name_id, int ns_id,
                             std::string_view text);
    /// Frees an attribute that `make` made and no host holds.
    static void free(attribute_t* a) noexcept;
    /// Frees what such an attribute has outside the pool, which goes with all that lies in it:
    /// nothing but its value.
    static void leave(attribute_t* a) noexcept { std::destroy_at(&a->value); }
    /// Whether an attribute is of this kind and lies in the pool of `neighbour`.
    static bool is_beside(const void* neighbour, const attribute_t* a) noexcept;

    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
    /// What `delete` of a host calls. NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads)
    static void operator delete(void* place) noexcept;

private:
    pooled_attribute_t(atom_table_t* table, int name_id, int ns_id, std::string_view text);
};

} // namespace ko::lxml

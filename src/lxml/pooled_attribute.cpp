#include "lxml/pooled_attribute.h"

#include <typeinfo>

namespace ko::lxml {

pooled_attribute_t::pooled_attribute_t(atom_table_t* table, int name_id, int ns_id,
                                       std::string_view text)
    : attribute_t(table, {ns_id, name_id}, text) {}

attribute_t* pooled_attribute_t::make(const void* neighbour, atom_table_t* table, int name_id,
                                      int ns_id, std::string_view text) {
    pool_t& pool = *pool_t::of(neighbour);
    void* const place = pool.allocate(sizeof(pooled_attribute_t));
    try {
        return new (place) pooled_attribute_t(table, name_id, ns_id, text);
    } catch (...) {
        pool.release(place, sizeof(pooled_attribute_t));
        throw;
    }
}

void pooled_attribute_t::free(attribute_t* a) noexcept {
    static_cast<pooled_attribute_t*>(a)->pooled_attribute_t::~pooled_attribute_t();
    pool_t::of(a)->release(a, sizeof(pooled_attribute_t));
}

bool pooled_attribute_t::is_beside(const void* neighbour, const attribute_t* a) noexcept {
    return typeid(*a) == typeid(pooled_attribute_t) && pool_t::of(a) == pool_t::of(neighbour);
}

// NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): hosts only delete.
void pooled_attribute_t::operator delete(void* place) noexcept {
    pool_t::release_lent(place, sizeof(pooled_attribute_t));
}

} // namespace ko::lxml

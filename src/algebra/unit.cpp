#include "algebra/unit.h"

namespace ko::alg {

unit_t::~unit_t() = default;

void unit_t::links_forget(const family_ptr_t& of, std::uint64_t now) {
    names.assign(program->names.size(), name_link_t());
    if (family != of) {
        calls.assign(program->targets.size(), call_link_t());
        family = of;
    }
    generation = now;
}

unit_ptr_t unit_make() {
    unit_ptr_t made(new unit_t);
    made->program = std::make_shared<program_t>();
    return made;
}

unit_ptr_t unit_share(unit_t* unit) {
    unit_ptr_t made;
    if (unit != nullptr) {
        made.reset(new unit_t);
        made->program = unit->program;
        made->is_shared = unit->is_shared = true;
    }
    return made;
}

} // namespace ko::alg

#include "xml_preprocessor/nesting.h"

#include "exception/exception.h"

namespace ko::xpp {

nesting_t::nesting_t(unsigned& levels) : count(levels) {
    ++count;
}

nesting_t::~nesting_t() {
    --count;
}

void nesting_t::check(unsigned limit, const std::string& directive,
                      const std::string& which) const {
    if (limit != 0 && count > limit) {
        throw exception_t(directive + " nested more than " + std::to_string(limit) +
                          " levels deep: " + which);
    }
}

} // namespace ko::xpp

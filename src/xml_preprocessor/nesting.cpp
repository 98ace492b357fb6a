#include "xml_preprocessor/nesting.h"

#include "exception/exception.h"

namespace ko::xpp {

void nesting_t::fail(unsigned limit, const char* directive, const std::string& which) {
    throw exception_t(std::string(directive) + " nested more than " + std::to_string(limit) +
                      " levels deep: " + which);
}

} // namespace ko::xpp

#include "algebra/budget.h"

#include <string>

#include "exception/exception.h"

namespace ko::alg {

void budget_t::bounds_take(const budget_t& other) {
    limits = other.limits;
    interrupt = other.interrupt;
}

void budget_t::fail_steps() const {
    throw exception_t("algebra_t -- evaluation exceeds the limit of " +
                      std::to_string(limits.steps) + " steps");
}

void budget_t::fail_text() const {
    throw exception_t("algebra_t -- evaluation exceeds the limit of " +
                      std::to_string(limits.text_bytes) + " text bytes");
}

void budget_t::fail_interrupted() {
    throw exception_t(std::string("algebra_t -- evaluation interrupted"));
}

} // namespace ko::alg

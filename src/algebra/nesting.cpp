#include "algebra/nesting.h"

#include "exception/exception.h"

namespace ko::alg {

unsigned nesting_t::depth_with_origin() const {
    const std::shared_ptr<const origin_t> source = origin.lock();
    return source == nullptr ? depth : depth + source->depth;
}

unsigned nesting_t::levels_of_nested(const limits_t& limits) const {
    const std::shared_ptr<const origin_t> source = origin.lock();
    if (called == nullptr && source == nullptr) {
        return 0;
    }
    check(depth_get(), limits, nested_e::host, called == nullptr ? source->function : *called);
    return 1;
}

nesting_t::origin_ptr_t nesting_t::origin_of_call() const {
    if (call_origin == nullptr) {
        call_origin =
            std::make_shared<const origin_t>(origin_t{depth_get(), *called, this, called_budget});
    }
    return call_origin;
}

void nesting_t::origin_take(const origin_ptr_t& taken) noexcept {
    const std::shared_ptr<const origin_t> call = taken.lock();
    if (call == nullptr || call->caller != this) {
        origin = taken;
        has_origin = call != nullptr;
    }
}

void nesting_t::origin_take_unless_called(const nesting_t& source) {
    const origin_ptr_t taken = source.origin_for_copy();
    if (called == nullptr && !taken.expired()) {
        origin = taken;
        has_origin = true;
    }
}

budget_t* nesting_t::budget_of_origin() const {
    const std::shared_ptr<const origin_t> source = origin.lock();
    return source == nullptr ? nullptr : source->budget;
}

void nesting_t::fail(const limits_t& limits, nested_e kind, const std::string& name) {
    static constexpr const char* kinds[] = {"script function", "function", "assignment to",
                                            "evaluation by function"};
    throw exception_t("algebra_t -- " + std::string(kinds[static_cast<unsigned>(kind)]) + " '" +
                      name + "' nested more than " + std::to_string(limits.nesting) +
                      " levels deep");
}

} // namespace ko::alg

#include "algebra/nesting.h"

#include <utility>

#include "exception/exception.h"

namespace ko::alg {

nesting_t::call_t::call_t(nesting_t& caller, const std::string& name, budget_t& budget)
    : state(caller), outer(std::exchange(caller.called, &name)),
      outer_budget(std::exchange(caller.called_budget, &budget)),
      outer_origin(std::move(caller.call_origin)) {}

nesting_t::call_t::~call_t() {
    state.called = outer;
    state.called_budget = outer_budget;
    state.call_origin = std::move(outer_origin);
}

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

std::weak_ptr<const nesting_t::origin_t> nesting_t::origin_for_copy() const {
    if (called == nullptr) {
        return origin;
    }
    if (call_origin == nullptr) {
        call_origin =
            std::make_shared<const origin_t>(origin_t{depth_get(), *called, this, called_budget});
    }
    return call_origin;
}

void nesting_t::origin_take(const nesting_t& source) {
    const std::weak_ptr<const origin_t> taken = source.origin_for_copy();
    const std::shared_ptr<const origin_t> call = taken.lock();
    if (call == nullptr || call->caller != this) {
        origin = taken;
        has_origin = call != nullptr;
    }
}

void nesting_t::origin_take_unless_called(const nesting_t& source) {
    const std::weak_ptr<const origin_t> taken = source.origin_for_copy();
    if (called == nullptr && !taken.expired()) {
        origin = taken;
        has_origin = true;
    }
}

budget_t* nesting_t::origin_budget() const {
    const std::shared_ptr<const origin_t> source = has_origin ? origin.lock() : nullptr;
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

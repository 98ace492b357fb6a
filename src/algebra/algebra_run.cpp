// How an evaluator evaluates: the quick way, the machine, or the tokens of a caller's list.
#include <cmath>
#include <utility>

#include "algebra/algebra_imp.h"
#include "algebra/token.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Adds levels to the nesting for as long as the object lives.
class levels_t {
public:
    levels_t(nesting_t& nested, unsigned levels) : nesting(nested), count(levels) {
        if (count != 0) {
            nesting.enter();
        }
    }
    levels_t(const levels_t&) = delete;
    levels_t& operator=(const levels_t&) = delete;
    ~levels_t() {
        if (count != 0) {
            nesting.leave();
        }
    }

private:
    nesting_t& nesting;
    const unsigned count;
};

} // namespace

result_t algebra_t::evaluate() {
    imp_t& own = imp_t::of(*this);
    unit_t* const unit = own.program.get();
    if (unit != nullptr && unit->is_quick) {
        if (const float value = own.machine_get().calculate_reals(*unit); !std::isnan(value)) {
            return value;
        }
    }
    return own.evaluate();
}

result_t algebra_t::imp_t::evaluate() {
    if (program == nullptr) {
        return {};
    }
    machine_t& runner = machine_get();
    if (number_t value; runner.calculate(*program, value)) {
        return value.value();
    }
    const levels_t levels(nesting, nesting.levels_of_evaluation(budget.limits));
    bool returned = false;
    return runner.perform(*program, returned);
}

result_t algebra_t::imp_t::evaluate(const list_t& tokens) {
    const levels_t levels(nesting, nesting.levels_of_evaluation(budget.limits));
    if (tokens.empty()) {
        return {};
    }
    if (tokens.front() == nullptr) {
        throw exception_t("algebra_t::evaluate() -- null token");
    }
    try {
        return tokens.front()->evaluate(*owner);
    } catch (return_exception_t& returned) {
        return std::move(returned.value);
    }
}

} // namespace ko::alg

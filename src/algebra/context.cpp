#include "algebra/context.h"

#include "algebra/machine.h"
#include "exception/diagnosis.h"
#include "exception/exception.h"

namespace ko::alg {

context_t::context_t(algebra_t& evaluator)
    : owner(&evaluator), family(std::make_shared<family_t>()), variables(*family),
      macros(*family), functions(*family) {}

context_t::context_t(algebra_t& evaluator, const context_t& other)
    : owner(&evaluator), family(other.family), variables(other.variables), macros(other.macros),
      functions(other.functions), resolver(other.resolver), output(other.output),
      program(unit_share(other.program.get())), nesting(other.nesting.origin_for_copy()) {
    budget.bounds_take(other.budget);
}

context_t::~context_t() = default;

machine_t& context_t::machine_make() {
    machine = std::make_unique<machine_t>(*this);
    return *machine;
}

lending_t::lending_t(const context_t& context)
    : lent(context.drawn == nullptr ? context.lent : context.drawn->lent), before(lent) {
    lent = true;
}

lending_t::~lending_t() {
    lent = before;
}

result_t context_t::variable_get(const std::string& name) const {
    if (const result_t* const found = variables.find(name)) {
        return *found;
    }
    result_t value;
    if (!resolve(name, value)) {
        throw exception_t("label_t::evaluate() -- access to undefined term, '%s'", name.c_str());
    }
    return value;
}

bool context_t::resolve(const std::string& name, result_t& value) const {
    if (resolver == nullptr) {
        return false;
    }
    const lending_t lending(*this);
    return resolver(name, value);
}

void context_t::line_write(const std::string& line) const noexcept {
    if (output == nullptr) {
        diagnose(line);
        return;
    }
    try {
        const lending_t lending(*this);
        output(line + '\n');
    } catch (...) {
        // The host's output may fail.
    }
}

} // namespace ko::alg

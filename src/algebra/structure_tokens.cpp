#include "algebra/structure_tokens.h"

#include <iterator>

#include "algebra/machine.h"
#include "exception/exception.h"

namespace ko::alg {

assign_t::assign_t() : two_operands_t("=", -11, "assign_t") {}

void assign_t::step(machine_t& machine, const frame_t& frame) const {
    if (frame.step == 0) {
        machine.evaluate(child(1));
        return;
    }
    child(0).token->assign(machine.algebra, machine.values.back());
    machine.finish();
}

branch_t* assign_t::shell() const {
    return new assign_t;
}

sequencer_t::sequencer_t() : two_operands_t(",", -13, "binary_t") {}

void sequencer_t::evaluate(algebra_t& algebra, std::vector<result_t>& values) const {
    machine_t(algebra).values_of(*this, values);
}

void sequencer_t::step(machine_t& machine, const frame_t& frame) const {
    if (!frame.list) {
        throw exception_t("sequencer_t::evaluate() -- syntax error");
    }
    if (frame.step < 2) {
        machine.collect(child(frame.step));
        return;
    }
    machine.finish();
}

branch_t* sequencer_t::shell() const {
    return new sequencer_t;
}

conditional_assignment_t::conditional_assignment_t() : branch_t("?:", -10) {}

bool conditional_assignment_t::construct(list_t& list, position_t& position, std::string& error) {
    bind();
    const position_t first = next_of(list, position);
    const position_t second = next_of(list, first);
    const char* failure = nullptr;
    if (position == list.begin()) {
        failure = "expected test operand";
    } else if (first == list.end()) {
        failure = "expected first operand";
    } else if (second == list.end()) {
        failure = "expected second operand";
    } else if ((*std::prev(position))->unbound != 0) {
        failure = "test operand does not evaluate to a term";
    } else if ((*first)->unbound != 0) {
        failure = "first operand does not evaluate to a term";
    } else if ((*second)->unbound != 0) {
        failure = "second operand does not evaluate to a term";
    }
    if (failure != nullptr) {
        error = std::string("conditional_assignment_t::construct() -- ") + failure;
        return false;
    }
    take(0, list, std::prev(position));
    take(1, list, first);
    position = std::next(second);
    take(2, list, second);
    return true;
}

void conditional_assignment_t::step(machine_t& machine, const frame_t& frame) const {
    if (frame.step == 0) {
        machine.evaluate(child(0));
    } else if (frame.step == 1) {
        const bool holds = machine.values.back().int_get() != 0;
        machine.values.pop_back();
        machine.evaluate(child(holds ? 1 : 2));
    } else {
        machine.finish();
    }
}

branch_t* conditional_assignment_t::shell() const {
    return new conditional_assignment_t;
}

} // namespace ko::alg

/// @file
/// The tokens that give an expression its structure: assignment, condition, comma.
#pragma once

#include "algebra/operator_tokens.h"

namespace ko::alg {

/// An assignment: target and value.
class assign_t : public two_operands_t {
public:
    assign_t();

    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;
};

/// A comma between arguments; it has a value in list mode only.
class sequencer_t : public two_operands_t {
public:
    sequencer_t();

    using two_operands_t::evaluate;
    void evaluate(algebra_t& algebra, std::vector<result_t>& values) const override;
    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;
};

/// A condition: test and two values, one of which is evaluated.
class conditional_assignment_t : public branch_t {
public:
    conditional_assignment_t();

    bool construct(list_t& list, position_t& position, std::string& error) override;
    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;
};

} // namespace ko::alg

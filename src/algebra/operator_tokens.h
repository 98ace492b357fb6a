/// @file
/// The tokens of operators with a spelling and a function of `result_t`: unary and binary ones.
#pragma once

#include <string_view>

#include "algebra/branch.h"

namespace ko::alg {

/// A unary operator; constant data.
struct unary_kind_t {
    const char* spelling;
    result_t (*apply)(const result_t& operand);
};

/// Strength of all unary operators.
constexpr int unary_strength = 2;

/// @return the unary operator of that spelling, or null
const unary_kind_t* unary_kind_find(std::string_view spelling);

/// A negation, plus or not.
class unary_t : public branch_t {
public:
    explicit unary_t(const unary_kind_t& unary_kind);

    bool construct(list_t& list, position_t& position, std::string& error) override;
    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;

private:
    const unary_kind_t& kind;
};

/// A binary operator; constant data.
struct binary_kind_t {
    const char* spelling;
    int strength;
    /// Null for the sum, which `add_to` makes in place.
    result_t (*apply)(const result_t& left, const result_t& right);
};

/// @return the binary operator of that spelling, or null
const binary_kind_t* binary_kind_find(std::string_view spelling);

/// Takes the tokens before and after `position` as the operands 0 and 1 of a branch.
/// Its messages begin with the name of a class.
class two_operands_t : public branch_t {
public:
    two_operands_t(const std::string& spelling, int binding_strength, const char* name);

    bool construct(list_t& list, position_t& position, std::string& error) override;

private:
    const char* const class_name;
};

/// A binary operator with its operands. Both are evaluated always, also those of "&&" and "||";
/// callers rely on it.
class binary_t : public two_operands_t {
public:
    explicit binary_t(const binary_kind_t& binary_kind);

    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;

private:
    const binary_kind_t& kind;
};

} // namespace ko::alg

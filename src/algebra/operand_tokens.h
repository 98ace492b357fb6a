/// @file
/// The tokens without operands: the leaves of an expression tree.
#pragma once

#include <string>

#include "algebra/token.h"

namespace ko::alg {

/// Strength of a token that takes no operands, or has taken them.
constexpr int bound_strength = -15;

/// Common part of the leaves: nothing to bind.
class operand_t : public token_t {
public:
    explicit operand_t(const std::string& spelling);

    bool construct(list_t& list, std::list<token_t*>::iterator& position,
                   std::string& error) override;
    using token_t::evaluate;
};

/// A parenthesis or colon before binding; a part of no tree.
class blank_token_t : public operand_t {
public:
    using operand_t::operand_t;

    result_t evaluate(algebra_t& algebra) const override;
    void assign(algebra_t& algebra, const result_t& new_value) const override;
    token_t* replicate() const override;
};

/// An integer literal.
class int_t : public operand_t {
public:
    int_t(const std::string& spelling, int number);

    result_t evaluate(algebra_t& algebra) const override;
    void assign(algebra_t& algebra, const result_t& new_value) const override;
    token_t* replicate() const override;

private:
    int value;
};

/// A float literal.
class float_t : public operand_t {
public:
    float_t(const std::string& spelling, float number);

    result_t evaluate(algebra_t& algebra) const override;
    void assign(algebra_t& algebra, const result_t& new_value) const override;
    token_t* replicate() const override;

private:
    float value;
};

/// A string literal; its text is its content.
class string_t : public operand_t {
public:
    explicit string_t(const std::string& content);

    bool is_string() const override;
    result_t evaluate(algebra_t& algebra) const override;
    /// Assigns to the variable that the content names; callers rely on it.
    void assign(algebra_t& algebra, const result_t& new_value) const override;
    token_t* replicate() const override;

private:
    std::string value;
};

/// A variable.
class label_t : public operand_t {
public:
    using operand_t::operand_t;

    result_t evaluate(algebra_t& algebra) const override;
    void assign(algebra_t& algebra, const result_t& new_value) const override;
    token_t* replicate() const override;
};

} // namespace ko::alg

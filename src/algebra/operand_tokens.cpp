#include "algebra/operand_tokens.h"

#include <memory>

#include "algebra/algebra_imp.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Gives the copy of a leaf what its original has now, a host may have changed it.
token_t* completed(std::unique_ptr<token_t> copy, const token_t& original) {
    copy->text = original.text;
    copy->unbound = original.unbound;
    copy->strength = original.strength;
    return copy.release();
}

} // namespace

operand_t::operand_t(const std::string& spelling) : token_t(spelling, bound_strength, 0) {}

bool operand_t::construct(list_t&, std::list<token_t*>::iterator&, std::string&) {
    unbound = 0;
    strength = bound_strength;
    --depth;
    return true;
}

result_t blank_token_t::evaluate(algebra_t&) const {
    return {};
}

void blank_token_t::assign(algebra_t&, const result_t&) const {}

token_t* blank_token_t::replicate() const {
    return completed(std::make_unique<blank_token_t>(text), *this);
}

int_t::int_t(const std::string& spelling, int number) : operand_t(spelling), value(number) {}

result_t int_t::evaluate(algebra_t&) const {
    return value;
}

void int_t::assign(algebra_t&, const result_t&) const {
    throw exception_t("non lvalue");
}

token_t* int_t::replicate() const {
    return completed(std::make_unique<int_t>(text, value), *this);
}

float_t::float_t(const std::string& spelling, float number)
    : operand_t(spelling), value(number) {}

result_t float_t::evaluate(algebra_t&) const {
    return value;
}

void float_t::assign(algebra_t&, const result_t&) const {
    throw exception_t("non lvalue");
}

token_t* float_t::replicate() const {
    return completed(std::make_unique<float_t>(text, value), *this);
}

string_t::string_t(const std::string& content) : operand_t(content), value(content) {}

bool string_t::is_string() const {
    return true;
}

result_t string_t::evaluate(algebra_t&) const {
    return value;
}

void string_t::assign(algebra_t& algebra, const result_t& new_value) const {
    algebra.assign(value, new_value);
}

token_t* string_t::replicate() const {
    return completed(std::make_unique<string_t>(value), *this);
}

result_t label_t::evaluate(algebra_t& algebra) const {
    const result_t* const variable = algebra_t::imp_t::of(algebra).memory.find(text);
    if (variable == nullptr) {
        throw exception_t("label_t::evaluate() -- access to undefined term, '%s'", text.c_str());
    }
    return *variable;
}

void label_t::assign(algebra_t& algebra, const result_t& new_value) const {
    algebra.assign(text, new_value);
}

token_t* label_t::replicate() const {
    return completed(std::make_unique<label_t>(text), *this);
}

} // namespace ko::alg

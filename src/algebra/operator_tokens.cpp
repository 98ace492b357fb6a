#include "algebra/operator_tokens.h"

#include <algorithm>
#include <iterator>

#include "algebra/machine.h"
#include "algebra/result_sum.h"

namespace ko::alg {

namespace {

// The formatter takes the names of operators for expressions.
// clang-format off
constexpr unary_kind_t unary_kinds[] = {
    {"-", &operator-},
    {"+", &operator+},
    {"!", &operator!},
};

constexpr binary_kind_t binary_kinds[] = {
    {"*", 0, &operator*},
    {"/", 0, &operator/},
    {"%", 0, &operator%},
    {"-", -1, &operator-},
    {"+", -1, nullptr},
    {"<<", -2, &operator<<},
    {">>", -2, &operator>>},
    {"<", -3, &operator<},
    {"<=", -3, &operator<=},
    {">", -3, &operator>},
    {">=", -3, &operator>=},
    {"==", -4, &operator==},
    {"!=", -4, &operator!=},
    {"&", -5, &operator&},
    {"|", -7, &operator|},
    {"&&", -8, &operator&&},
    {"||", -9, &operator||},
};
// clang-format on

template <class K, std::size_t n>
const K* kind_find(const K (&kinds)[n], std::string_view spelling) {
    const K* const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                       [&](const K& k) { return k.spelling == spelling; });
    return kind == std::end(kinds) ? nullptr : kind;
}

} // namespace

const unary_kind_t* unary_kind_find(std::string_view spelling) {
    return kind_find(unary_kinds, spelling);
}

const binary_kind_t* binary_kind_find(std::string_view spelling) {
    return kind_find(binary_kinds, spelling);
}

unary_t::unary_t(const unary_kind_t& unary_kind)
    : branch_t(unary_kind.spelling, unary_strength), kind(unary_kind) {}

bool unary_t::construct(list_t& list, position_t& position, std::string& error) {
    bind();
    const position_t right = next_of(list, position);
    if (right == list.end()) {
        error = "unary_t::construct() -- expected right operand";
        return false;
    }
    if ((*right)->unbound != 0) {
        error = "unary_t::construct() -- right operand does not evaluate to a term";
        return false;
    }
    position = std::next(right);
    take(0, list, right);
    return true;
}

void unary_t::step(machine_t& machine, const frame_t& frame) const {
    if (frame.step == 0) {
        machine.evaluate(child(0));
        return;
    }
    result_t& value = machine.values.back();
    value = kind.apply(value);
    machine.finish();
}

branch_t* unary_t::shell() const {
    return new unary_t(kind);
}

two_operands_t::two_operands_t(const std::string& spelling, int binding_strength,
                               const char* name)
    : branch_t(spelling, binding_strength), class_name(name) {}

bool two_operands_t::construct(list_t& list, position_t& position, std::string& error) {
    bind();
    const position_t right = next_of(list, position);
    const char* failure = nullptr;
    if (position == list.begin()) {
        failure = "expected left operand";
    } else if (right == list.end()) {
        failure = "expected right operand";
    } else if ((*std::prev(position))->unbound != 0) {
        failure = "left operand does not evaluate to a term";
    } else if ((*right)->unbound != 0) {
        failure = "right operand does not evaluate to a term";
    }
    if (failure != nullptr) {
        error = std::string(class_name) + "::construct() -- " + failure;
        return false;
    }
    take(0, list, std::prev(position));
    position = std::next(right);
    take(1, list, right);
    return true;
}

binary_t::binary_t(const binary_kind_t& binary_kind)
    : two_operands_t(binary_kind.spelling, binary_kind.strength, "binary_t"), kind(binary_kind) {}

void binary_t::step(machine_t& machine, const frame_t& frame) const {
    if (frame.step < 2) {
        machine.evaluate(child(frame.step));
        return;
    }
    result_t& left = machine.values[frame.base];
    const result_t& right = machine.values.back();
    if (kind.apply == nullptr) {
        add_to(left, right);
    } else {
        left = kind.apply(left, right);
    }
    machine.values.pop_back();
    machine.finish();
}

branch_t* binary_t::shell() const {
    return new binary_t(kind);
}

} // namespace ko::alg

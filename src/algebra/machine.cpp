#include "algebra/machine.h"

#include <iterator>

#include "algebra/algebra.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Room that spares most expressions a second allocation.
constexpr std::size_t initial_room = 8;

} // namespace

machine_t::machine_t(algebra_t& evaluator) : algebra(evaluator) {
    values.reserve(initial_room);
    frames.reserve(initial_room);
}

result_t machine_t::value_of(const branch_t& root) {
    run(root, false);
    return std::move(values.back());
}

void machine_t::values_of(const branch_t& root, std::vector<result_t>& out) {
    run(root, true);
    out.insert(out.end(), std::make_move_iterator(values.begin()),
               std::make_move_iterator(values.end()));
}

void machine_t::run(const branch_t& root, bool list) {
    push(root, list);
    while (!frames.empty()) {
        const frame_t frame = frames.back();
        ++frames.back().step;
        frame.branch->step(*this, frame);
    }
}

void machine_t::push(const branch_t& branch, bool list) {
    frames.push_back({&branch, 0, list, values.size()});
}

void machine_t::evaluate(const child_t& child) {
    if (child.branch != nullptr) {
        push(*child.branch, false);
    } else if (child.token != nullptr) {
        values.push_back(child.token->evaluate(algebra));
    } else {
        fail_missing();
    }
}

void machine_t::collect(const child_t& child) {
    if (child.branch != nullptr) {
        push(*child.branch, true);
    } else if (child.token != nullptr) {
        child.token->evaluate(algebra, values);
    } else {
        fail_missing();
    }
}

void machine_t::finish() {
    frames.pop_back();
}

void machine_t::finish(const frame_t& frame, result_t&& value) {
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(frame.base), values.end());
    values.push_back(std::move(value));
    frames.pop_back();
}

void machine_t::fail_missing() const {
    const std::string& error = algebra.parse_error_get();
    throw exception_t(error.empty() ? std::string("syntax error -- missing operand") : error);
}

} // namespace ko::alg

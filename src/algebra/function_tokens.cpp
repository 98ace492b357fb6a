#include "algebra/function_tokens.h"

#include <iterator>
#include <utility>

#include "algebra/algebra_imp.h"
#include "algebra/machine.h"
#include "exception/exception.h"

namespace ko::alg {

namespace {

/// Functions bind before every operator.
constexpr int function_strength = 3;

} // namespace

call_t::call_t(const std::string& name) : branch_t(name, function_strength) {}

bool call_t::arguments_take(list_t& list, position_t& position, std::string& error,
                            const char* missing, const char* unbound_message) {
    const position_t arguments = std::next(position);
    if (arguments == list.end()) {
        error = missing;
        return false;
    }
    if ((*arguments)->unbound != 0) {
        error = unbound_message;
        return false;
    }
    position = std::next(arguments);
    take(0, list, arguments);
    return true;
}

external_function_t::external_function_t(const function_prototype_t& function)
    : call_t(function.name), prototype(function) {}

bool external_function_t::construct(list_t& list, position_t& position, std::string& error) {
    bind();
    if (position == list.end()) {
        error = "external_function_t::construct() -- bad iterator";
        return false;
    }
    if (prototype.argument_count == 0) {
        ++position;
        return true;
    }
    return arguments_take(list, position, error, "external function %s -- not enough arguments",
                          "external function %s -- parse error");
}

void external_function_t::step(machine_t& machine, const frame_t& frame) const {
    if (prototype.argument_count != 0) {
        if (frame.step == 0) {
            machine.collect(child(0));
            return;
        }
        count_check(machine.values.size() - frame.base);
    }
    machine.finish(frame, call(machine.algebra, machine.values, frame.base));
}

void external_function_t::count_check(std::size_t found) const {
    if (static_cast<int>(found) != prototype.argument_count) {
        throw exception_t("external function %s -- %d arguments found, %d expected", text.c_str(),
                          static_cast<int>(found), prototype.argument_count);
    }
}

/// Calls the function with the values from `base` on.
result_t external_function_t::call(algebra_t& algebra, std::vector<result_t>& values,
                                   std::size_t base) const {
    const call_scope_t scope(algebra, text);
    const auto argument = [&](std::size_t i) {
        return std::move(values.at(base + i));
    };
    if (prototype.function0 != nullptr) {
        return prototype.function0(algebra);
    }
    if (prototype.function1 != nullptr) {
        return prototype.function1(algebra, argument(0));
    }
    if (prototype.function2 != nullptr) {
        return prototype.function2(algebra, argument(0), argument(1));
    }
    if (prototype.function3 != nullptr) {
        return prototype.function3(algebra, argument(0), argument(1), argument(2));
    }
    if (prototype.function_list != nullptr) {
        const auto begin = values.begin() + static_cast<std::ptrdiff_t>(base);
        return prototype.function_list(
            algebra, {std::make_move_iterator(begin), std::make_move_iterator(values.end())});
    }
    throw exception_t("external_function_t::evaluate() -- no prototype for function '%s'",
                      prototype.name.c_str());
}

branch_t* external_function_t::shell() const {
    return new external_function_t(prototype);
}

internal_function_t::internal_function_t(const std::string& name,
                                         std::shared_ptr<script_table_t> scripts)
    : call_t(name), table(std::move(scripts)) {}

bool internal_function_t::construct(list_t& list, position_t& position, std::string& error) {
    bind();
    if (position == list.end()) {
        error = "internal_function_t::construct() -- bad iterator";
        return false;
    }
    without_arguments = function().parameters.empty();
    if (without_arguments) {
        ++position;
        return true;
    }
    return arguments_take(list, position, error, "internal function %s -- not enough arguments",
                          "internal function %s -- no arguments or parse error");
}

/// The function as it is defined now.
const function_t& internal_function_t::function() const {
    const function_t* const found = table->find(text);
    if (found == nullptr) {
        throw exception_t("internal function %s -- no longer defined", text.c_str());
    }
    return *found;
}

void internal_function_t::step(machine_t& machine, const frame_t& frame) const {
    if (frame.step == 0 && !without_arguments && !function().parameters.empty()) {
        machine.collect(child(0));
        return;
    }
    // The arguments may have redefined the function.
    const function_t& called = function();
    const std::size_t found = machine.values.size() - frame.base;
    const std::size_t expected = called.parameters.size();
    if (expected != 0 && found != expected) {
        throw exception_t("internal function %s -- %d arguments found, %d expected", text.c_str(),
                          static_cast<int>(found), static_cast<int>(expected));
    }
    const call_scope_t scope(machine.algebra, text);
    machine.finish(frame, script_call(machine.algebra, called, machine.values, frame.base));
}

void internal_function_t::rebind(const std::shared_ptr<script_table_t>& from,
                                 const std::shared_ptr<script_table_t>& to) {
    if (table == from) {
        table = to;
    }
}

branch_t* internal_function_t::shell() const {
    auto copy = std::make_unique<internal_function_t>(text, table);
    copy->without_arguments = without_arguments;
    return copy.release();
}

void calls_rebind(list_t& tokens, const std::shared_ptr<script_table_t>& from,
                  const std::shared_ptr<script_table_t>& to) {
    std::vector<branch_t*> pending;
    for (token_t* const token : tokens) {
        if (auto* const branch = dynamic_cast<branch_t*>(token)) {
            pending.push_back(branch);
        }
    }
    while (!pending.empty()) {
        branch_t* const branch = pending.back();
        pending.pop_back();
        branch->branches_get(pending);
        if (auto* const call = dynamic_cast<internal_function_t*>(branch)) {
            call->rebind(from, to);
        }
    }
}

} // namespace ko::alg

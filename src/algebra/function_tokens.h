/// @file
/// The tokens of function calls.
#pragma once

#include <memory>

#include "algebra/branch.h"
#include "algebra/function.h"
#include "algebra/function_table.h"

namespace ko::alg {

/// A call: takes the token after it as its arguments, unless the function has none.
class call_t : public branch_t {
protected:
    explicit call_t(const std::string& name);

    /// Takes the arguments; the messages are kept with their "%s" as they are.
    bool arguments_take(list_t& list, position_t& position, std::string& error,
                        const char* missing, const char* unbound_message);
};

/// A call of a host or built-in function. It has a copy of the function's record.
class external_function_t : public call_t {
public:
    explicit external_function_t(const function_prototype_t& function);

    bool construct(list_t& list, position_t& position, std::string& error) override;
    void step(machine_t& machine, const frame_t& frame) const override;

protected:
    branch_t* shell() const override;

private:
    void count_check(std::size_t found) const;
    result_t call(algebra_t& algebra, std::vector<result_t>& values, std::size_t base) const;

    const function_prototype_t prototype;
};

/// A call of a script function.
///
/// It shares the table that it was parsed with, and finds the function there at each call: the
/// body is the one defined last, and the table lives on when its evaluator is gone.
class internal_function_t : public call_t {
public:
    internal_function_t(const std::string& name, std::shared_ptr<script_table_t> scripts);

    bool construct(list_t& list, position_t& position, std::string& error) override;
    void step(machine_t& machine, const frame_t& frame) const override;

    /// Makes a call of `from` one of `to`.
    void rebind(const std::shared_ptr<script_table_t>& from,
                const std::shared_ptr<script_table_t>& to);

protected:
    branch_t* shell() const override;

private:
    const function_t& function() const;

    std::shared_ptr<script_table_t> table;
    bool without_arguments = false; ///< bound when the function had no parameters
};

/// Makes every call of `from` in `tokens` one of `to`.
void calls_rebind(list_t& tokens, const std::shared_ptr<script_table_t>& from,
                  const std::shared_ptr<script_table_t>& to);

} // namespace ko::alg

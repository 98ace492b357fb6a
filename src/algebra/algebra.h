/// @file
/// The expression evaluator.
#pragma once

#include <atomic>
#include <cstddef>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "algebra/bounds.h"
#include "algebra/function.h"
#include "algebra/result.h"
#include "algebra/token.h"
#include "export.h"

namespace ko::alg {

/// What kept a text from having a value.
struct KO_API error_t {
    std::string message;    ///< the message of the exception that another call would throw
    std::string statement;  ///< the statement as it was read: without comments, macros replaced
    std::size_t offset = 0; ///< where in it the token begins that failed, in bytes; its size
                            ///< where no token did
};

/// The expression evaluator: variables, functions, macros and one parsed program.
///
/// @par Owns
/// All of these; a copy is complete and independent. Functions by pointer and the flag of
/// `interrupt_set` are borrowed.
/// @par Lives
/// Programs in lists of the caller's may outlive it. A host function may parse with the evaluator
/// that calls it, assign to it and copy it, but not destroy it.
/// @par Threads
/// An object is used by one thread at a time; two objects may be used by two threads, a copy and
/// its source among them.
/// @par After an exception
/// It can be used and destroyed as before; variables that the failed expression had assigned keep
/// their new values.
/// @code
/// alg::algebra_t algebra;
/// algebra.assign("channels", 8);
/// algebra.macro_define("db(factor)", "20 * log10(factor)");
/// std::cout << algebra.evaluate("channels * 2 + 1") << '\n'; // (i) 17
/// std::cout << algebra.evaluate("db(0.5)") << '\n';          // (f) -6.0206
/// @endcode
class KO_API algebra_t {
public:
    class KO_LOCAL imp_t;

    /// An evaluator with the built-in functions, no variables and no macros.
    algebra_t();
    /// Copies everything but the numeric-only flag and the parse error text, which start afresh.
    algebra_t(const algebra_t& other);
    /// The same copy into this object, which keeps its numeric-only flag and parse error text.
    /// Assigned to itself, an evaluator is unchanged.
    algebra_t& operator=(const algebra_t& other);
    /// Takes what a copy would have, at no cost; references to the variables of `other` stay
    /// valid.
    ///
    /// Of `other` nothing is left: it can be destroyed or assigned to, and any other use of it
    /// throws a `ko::exception_t`. An evaluator that is evaluating is copied instead,
    /// and an assignment always copies: lists keep the script functions of what is assigned to.
    algebra_t(algebra_t&& other) noexcept;
    virtual ~algebra_t();

    /// @name Programs
    /// @{

    /// Parses the first statement of `text` into this evaluator's program.
    /// @return false when it is blank or not well formed; see `parse_error_get`
    /// @throws ko::exception_t an unterminated quote or comment, or endless macros
    bool parse(const std::string& text);
    bool parse(const char* text); ///< the same; null throws a `ko::exception_t`
    /// Parses the first statement of `text` into a list of the caller's, replacing its tokens.
    bool parse(const std::string& text, list_t& tokens);
    bool parse(const char* text, list_t& tokens); ///< the same; null throws

    /// Evaluates the program; the integer 0 when there is none.
    result_t evaluate();
    /// Evaluates a list that `parse` filled: its first token, against this evaluator.
    ///
    /// Calls of script functions in it are those of the evaluator that parsed it, as they are
    /// defined now or were when it was destroyed. The list must not be changed meanwhile; parsing
    /// into it is a `ko::exception_t`.
    result_t evaluate(const list_t& tokens);
    /// Parses and evaluates the first statement of `text`.
    /// @throws ko::exception_t the parse error text, or what the evaluation reports
    result_t evaluate(const std::string& text);
    result_t evaluate(const char* text); ///< the same; null throws a `ko::exception_t`
    /// Parses and evaluates the first statement of `text`, without an exception and without a
    /// line on standard output when it fails.
    /// @param value receives the value; unchanged on failure
    /// @param error receives what failed; empty on success
    /// @return true on success
    /// @throws std::bad_alloc and whatever else is not a `ko::exception_t`
    bool evaluate(const std::string& text, result_t& value, error_t& error);
    bool evaluate(const char* text, result_t& value, error_t& error); ///< the same; null throws
    /// Parses and evaluates the first statement of `text`; a failure gives `text` itself as a
    /// string.
    ///
    /// An exception on the way is reported as one line on standard output, without its message;
    /// a parse that fails without one is not reported. Only exceptions that are not a
    /// `ko::exception_t` escape.
    result_t evaluate_safe(const std::string& text);
    result_t evaluate_safe(const char* text); ///< the same; null throws a `ko::exception_t`

    /// Turns the numeric-only mode on or off: names, commas and assignment are then not read.
    void numeric_only_set(bool on);
    /// The message of the last parse that failed; a success does not clear it.
    const std::string& parse_error_get() const;

    /// The names that a list which `parse` filled reads and calls, also after a parse that
    /// failed.
    ///
    /// A name that is only assigned to is not read. What texts say that it evaluates, and the
    /// bodies of the script functions that it calls, are not looked into.
    names_t names_get(const list_t& tokens) const;

    /// Sends what `func_output` and `evaluate_safe` write to `output`, standard output by default
    /// and again after an empty one. Copies of the evaluator made afterwards take it along, and
    /// so do evaluations inside of evaluations. What it throws ends `func_output`. It must not
    /// use the evaluators that take part, which would throw a `ko::exception_t`.
    void output_set(output_t output);
    /// @}

    /// @name Bounds
    /// @{

    /// Sets what an outermost evaluation may use, from the next one on. Copies take the limits
    /// along.
    ///
    /// An evaluation that goes beyond a limit ends with a `ko::exception_t` that names the limit,
    /// as it would with any other failure: what it has assigned stays.
    void limits_set(const limits_t& limits);
    limits_t limits_get() const;
    /// Makes evaluations end, with a `ko::exception_t`, soon after `flag` has become true, from
    /// whatever thread. Copies take the flag along.
    /// @param flag of the caller's, who keeps it alive; null for none
    void interrupt_set(const std::atomic<bool>* flag);
    /// @}

    /// @name Functions
    /// Defines a host function, or replaces the function of that name, built-in ones included.
    /// Programs parsed earlier keep the function they were parsed with.
    /// @{

    /// Defines a function of a fixed number of arguments.
    void define(const std::string& name, function0_t function);
    void define(const std::string& name, function1_t function);
    void define(const std::string& name, function2_t function);
    void define(const std::string& name, function3_t function);
    /// Defines a function that gets its arguments in a list.
    /// @param name what calls it
    /// @param function borrowed code
    /// @param count number of arguments that a call must have
    void define(const std::string& name, function_list_t function, int count);
    /// @param count_min least number of arguments that a call must have
    /// @param count_max largest number of arguments that a call may have
    /// @throws ko::exception_t the least number is larger than the largest
    void define(const std::string& name, host_function_t function, unsigned count_min,
                unsigned count_max);
    /// @}

    /// Removes a host function; a built-in one of that name shows again. Programs parsed earlier
    /// keep the function they were parsed with.
    /// @return whether there was one
    bool undefine(const std::string& name);
    /// The names that an expression can call: host, built-in and script functions, in ascending
    /// order.
    std::vector<std::string> function_names() const;

    /// @name Macros
    /// @{

    /// Defines a script function when `key` is "name(p1, ...)" and `value` parses; otherwise the
    /// macro `key`, whole words of which are replaced by `value` before a text is parsed.
    /// @throws ko::exception_t an empty key, or one that is not a letter followed by letters,
    ///         digits and "_"
    void macro_define(const std::string& key, const std::string& value);
    /// The same; null throws a `ko::exception_t`.
    void macro_define(const std::string& key, const char* value);
    void macro_define(const char* key, const char* value); ///< the same; null throws
    /// Removes a macro; an unknown key is ignored.
    void macro_undefine(const std::string& key);
    /// Replaces the macros in `in`.
    /// @param in the text
    /// @param out receives the result; may be the same object as `in`
    /// @throws ko::exception_t when the replacements do not come to an end
    void macro_decode(const std::string& in, std::string& out);
    /// Appends every macro definition ever made, in order, then every script function as
    /// "name( p1, p2 )" and its body.
    void macros_get(std::list<std::pair<std::string, std::string>>& out) const;
    /// Removes all macros and all script functions, and forgets their definitions.
    void macros_clear();
    /// @}

    /// @name Variables
    /// @{

    /// Saves a copy of all variables on a stack.
    void memory_push();
    /// Restores the variables last saved; without any, nothing happens.
    void memory_pop();
    /// Restores the set of variables last saved, those still there keeping their current values.
    /// @throws ko::exception_t when nothing is saved
    void memory_pop_diff();
    /// Replaces the variables by a copy of those of `other`.
    void memory_copy(const algebra_t& other);

    /// Stores a value, creating the variable or replacing its whole value.
    void assign(const std::string& name, int value);
    void assign(const std::string& name, long value);
    void assign(const std::string& name, float value);
    void assign(const std::string& name, double value);
    void assign(const std::string& name, unsigned value); ///< as `result_t` is made of it
    void assign(const std::string& name, unsigned long value);
    void assign(const std::string& name, long long value);
    void assign(const std::string& name, unsigned long long value);
    void assign(const std::string& name, const std::string& value); ///< the text, not evaluated
    void assign(const std::string& name, const char* value);        ///< the text, not evaluated
    void assign(const std::string& name, const result_t& value);
    /// Evaluates the first statement of `expression` and stores its value.
    ///
    /// The outcome of the parse is ignored: what it left is evaluated, and a blank expression
    /// stores the integer 0.
    void eval_and_assign(const std::string& name, const std::string& expression);
    /// The same; null throws a `ko::exception_t`.
    void eval_and_assign(const std::string& name, const char* expression);

    /// A copy of a variable's value.
    /// @throws ko::exception_t when there is no such variable; the message ends in a line feed
    result_t get(const std::string& name) const;
    /// True when there is a variable of that name.
    bool find(const std::string& name) const;
    /// Removes a variable. A reference to it is then no longer valid.
    /// @return whether there was one
    bool erase(const std::string& name);
    /// The names of the variables, in ascending order of their bytes.
    std::vector<std::string> variable_names() const;
    /// Has `resolver` asked for the value of every name that is read and is no variable, before
    /// it is reported as undefined; an empty one ends that. `get`, `find`, `defined` and `exists`
    /// do not ask. Copies of the evaluator made afterwards take it along, and so do evaluations
    /// inside of evaluations. What it throws ends the evaluation. It must not use the evaluators
    /// that take part in the evaluation, which would throw a `ko::exception_t`.
    void resolver_set(resolver_t resolver);
    /// The stored value, created as the integer 0 when missing.
    ///
    /// The reference stays valid until a `memory_pop`, `memory_pop_diff`, `memory_copy`, the
    /// `erase` of the variable, an assignment to the evaluator or its destruction. Until then a
    /// copy of the evaluator copies each variable; where no reference is out, copies share them.
    /// A script function makes such a copy when a host function is called in it.
    result_t& operator[](const std::string& name);
    /// @}

private:
    friend struct ko::layout_t;

    KO_LOCAL imp_t& state() const;

    imp_t* imp;
};

/// Evaluates an expression with an evaluator of its own.
/// @param text the expression
/// @param value receives the result; unchanged on failure
/// @param throw_errors true throws what false reports by the result
/// @return true on success
/// @throws ko::exception_t in any case what parsing throws (an unterminated quote, say)
KO_API bool algebra(const std::string& text, result_t& value, bool throw_errors);
KO_API bool algebra(const char* text, result_t& value, bool throw_errors); ///< null throws
/// Evaluates an expression and gives its float reading.
KO_API bool algebra(const std::string& text, float& value);
KO_API bool algebra(const char* text, float& value); ///< null throws a `ko::exception_t`

} // namespace ko::alg

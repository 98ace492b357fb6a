/// @file
/// Records of the functions that an expression can call.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "algebra/result.h"
#include "export.h"

namespace ko::alg {

class algebra_t;

/// @name Kinds of host function
/// The first argument is the evaluator that makes the call.
/// @{
using function0_t = result_t (*)(algebra_t&);                               ///< without arguments
using function1_t = result_t (*)(algebra_t&, result_t);                     ///< with one
using function2_t = result_t (*)(algebra_t&, result_t, result_t);           ///< with two
using function3_t = result_t (*)(algebra_t&, result_t, result_t, result_t); ///< with three
using function_list_t = result_t (*)(algebra_t&,
                                     std::vector<result_t>); ///< with all of them in a list
/// Anything that can be called, with state of its own: it is copied into the evaluator, into the
/// programs that call it and into copies of the evaluator, all of which share one object.
using host_function_t = std::function<result_t(algebra_t&, const std::vector<result_t>&)>;
/// @}

/// Asked for the value of a name: true when it has set `value`, false when it does not know it.
using resolver_t = std::function<bool(const std::string& name, result_t& value)>;

/// Receives a text that an evaluator writes, line ends included.
using output_t = std::function<void(const std::string& text)>;

/// A host or built-in function: a plain record of which exactly one pointer is set.
struct KO_API function_prototype_t {
    std::string name;                        ///< name in expressions
    int argument_count = 0;                  ///< number of arguments of a call
    function0_t function0 = nullptr;         ///< takes no argument
    function1_t function1 = nullptr;         ///< takes one
    function2_t function2 = nullptr;         ///< takes two
    function3_t function3 = nullptr;         ///< takes three
    function_list_t function_list = nullptr; ///< takes all of them in a vector
};

/// A function written in the expression language: a copyable record that owns its strings.
struct KO_API function_t {
    std::string name;                  ///< name in expressions
    std::string body;                  ///< expression that a call evaluates
    std::list<std::string> parameters; ///< parameter names in written order

    /// Reads a definition.
    ///
    /// The body is checked by parsing it with a new evaluator that has the built-in functions
    /// only.
    /// @param key "name(p1, p2, ...)"
    /// @param body_text the expression
    /// @param error receives the message when the result is false
    /// @return true when both are well formed; name, body and parameters are then set
    /// @throws ko::exception_t when the check of the body throws, as for an unterminated quote
    bool parse(const std::string& key, const std::string& body_text, std::string& error);
};

} // namespace ko::alg

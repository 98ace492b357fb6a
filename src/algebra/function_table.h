/// @file
/// The functions that an evaluator knows.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "algebra/cow.h"
#include "algebra/function.h"

namespace ko::alg {

/// The script functions of one evaluator, by name.
///
/// The evaluator and the calls that it parsed share it, so that a call finds what was defined
/// last and outlives the evaluator.
class script_table_t {
public:
    /// Adds a function, or replaces the one of that name.
    void define(const function_t& function);
    /// @return the function, or null; valid until the table changes
    const function_t* find(const std::string& name) const;

private:
    cow_t<std::map<std::string, function_t>> functions;
};

/// All functions of one evaluator: those that the host defined, the built-in ones beneath them,
/// and the script functions. Copies share the tables until one of them is changed.
class function_table_t {
public:
    using macros_t = std::list<std::pair<std::string, std::string>>;

    function_table_t();
    function_table_t(const function_table_t& other);
    function_table_t& operator=(const function_table_t& other);
    ~function_table_t();

    /// Adds a host function, or replaces the function of that name wholesale.
    void host_define(const function_prototype_t& function);
    /// Finds a host function, else a built-in one.
    /// @return false when there is none
    bool external_find(const std::string& name, function_prototype_t& function) const;

    /// Defines a script function.
    /// @return false when key and body are no definition
    bool script_define(const std::string& key, const std::string& body);
    /// The script functions; never null.
    const std::shared_ptr<script_table_t>& scripts_get() const { return scripts; }
    /// Appends every script function ever defined, as "name( p1, p2 )" and its body.
    void script_definitions_get(macros_t& out) const;

private:
    cow_t<std::map<std::string, function_prototype_t>> hosts;
    cow_t<std::list<std::pair<std::string, function_t>>> script_list;
    std::shared_ptr<script_table_t> scripts;
};

} // namespace ko::alg

/// @file
/// The functions that an evaluator knows.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "algebra/cow.h"
#include "algebra/function.h"
#include "algebra/identity.h"

namespace ko::alg {

/// A host function. Programs share it, so that they keep the one that they were parsed with.
struct host_record_t {
    function_prototype_t prototype;
    /// Takes the place of the pointers where it is set.
    std::function<result_t(algebra_t&, const std::vector<result_t>&)> closure;
    int count_min = 0; ///< of arguments
    int count_max = 0;
};

/// The script functions of one evaluator, by name.
///
/// The evaluator and the calls that it parsed share it, so that a call finds what was defined
/// last and outlives the evaluator.
class script_table_t {
public:
    /// @param numbers the family that the identities are taken from; not owned
    explicit script_table_t(family_t& numbers) : family(&numbers) {}
    script_table_t(const script_table_t&) = default;
    script_table_t& operator=(const script_table_t& other);
    ~script_table_t() = default;

    /// Adds a function, or replaces the one of that name.
    void define(const function_t& function);
    /// @return the function, or null; valid as long as the identity, or the revision, stands
    const function_t* find(std::string_view name) const;
    bool is_empty() const { return functions.get() == nullptr; }
    /// Removes all functions.
    void clear();
    /// Appends the names in ascending order.
    void names_get(std::vector<std::string>& out) const;
    /// Tells what the table holds from what any table of the family has held.
    std::uint64_t identity_get() const { return identity; }
    /// Tells what the table holds from what this object has held at any other time; never 0.
    std::uint64_t revision_get() const { return revision; }

private:
    void changed() noexcept;

    cow_t<std::map<std::string, function_t, std::less<>>> functions;
    family_t* family;
    std::uint64_t identity = 0;
    std::uint64_t revision = 1;
};

/// All functions of one evaluator but the built-in ones: those that the host defined and the
/// script functions. Copies share the tables until one of them is changed.
class function_table_t {
public:
    using macros_t = std::list<std::pair<std::string, std::string>>;

    /// @param numbers the family that the identities are taken from; not owned
    explicit function_table_t(family_t& numbers) : family(&numbers) {}
    function_table_t(const function_table_t& other);
    function_table_t& operator=(const function_table_t& other);
    ~function_table_t();

    /// Adds a host function, or replaces the function of that name wholesale.
    void host_define(host_record_t function);
    /// Removes a host function.
    /// @return false when there is none
    bool host_undefine(const std::string& name);
    /// Whether there may be host functions.
    bool has_hosts() const { return hosts.get() != nullptr; }
    /// @return the host function, or null
    std::shared_ptr<const host_record_t> host_find(std::string_view name) const;
    /// Appends the names of the host functions in ascending order.
    void host_names_get(std::vector<std::string>& out) const;
    /// Appends the names of the script functions.
    void script_names_get(std::vector<std::string>& out) const;

    /// Defines a script function.
    /// @return false when key and body are no definition
    bool script_define(const std::string& key, const std::string& body);
    /// @return the script function, or null
    const function_t* script_find(std::string_view name) const {
        return scripts == nullptr || scripts->is_empty() ? nullptr : scripts->find(name);
    }
    /// The script functions; never null. Made when somebody first asks for them.
    const std::shared_ptr<script_table_t>& scripts_get() const {
        return scripts == nullptr ? scripts_make() : scripts;
    }
    /// Their identity, for which nothing has to be made.
    std::uint64_t scripts_identity_get() const {
        return scripts == nullptr ? 0 : scripts->identity_get();
    }
    /// Removes all script functions and their recorded definitions.
    void scripts_clear();
    /// Appends every script function ever defined, as "name( p1, p2 )" and its body.
    void script_definitions_get(macros_t& out) const;

    /// Tells the host functions from those of any other time, and of other evaluators of the
    /// family.
    std::uint64_t identity_get() const { return identity; }

private:
    using hosts_t = std::map<std::string, std::shared_ptr<const host_record_t>, std::less<>>;

    const std::shared_ptr<script_table_t>& scripts_make() const;

    cow_t<hosts_t> hosts;
    cow_t<std::list<std::pair<std::string, function_t>>> script_list;
    mutable std::shared_ptr<script_table_t> scripts;
    family_t* family;
    std::uint64_t identity = 0;
};

} // namespace ko::alg

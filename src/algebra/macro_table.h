/// @file
/// Macros: words that are replaced by a text before an expression is read.
///
/// Substitution replaces, 48 times at most, the first whole-word occurrence of the macro that
/// comes first in key order, values being searched again. An occurrence stands between characters
/// that belong to no word, so a replacement neither makes nor breaks an occurrence outside the
/// value it puts in. One scan of the text therefore finds all occurrences, and each replacement
/// adds those of its value alone.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <utility>

#include "algebra/cow.h"
#include "algebra/identity.h"

namespace ko::alg {

/// The macros of one evaluator. Copies share their tables until one of them is changed.
class macro_table_t {
public:
    using definitions_t = std::list<std::pair<std::string, std::string>>;

    /// @param numbers the family that the identities are taken from; not owned
    explicit macro_table_t(family_t& numbers) : family(&numbers) {}

    /// Adds or replaces a macro.
    /// @throws ko::exception_t an empty or ill-formed key; nothing is changed then
    void define(const std::string& key, const std::string& value);
    /// Removes a macro; its definitions stay listed.
    void undefine(const std::string& key);

    /// Replaces the macros in `text`.
    /// @throws ko::exception_t at the 49th replacement; `text` is unchanged then
    void substitute(std::string& text) const;

    /// Removes all macros and their definitions.
    void clear();
    /// Tells the macros from those of any other time, and of other evaluators of the family.
    std::uint64_t identity_get() const { return identity; }
    /// Appends every definition ever made, in order.
    void definitions_get(definitions_t& out) const;

private:
    using macros_t = std::map<std::string, std::string, std::less<>>;

    cow_t<macros_t> macros;
    cow_t<definitions_t> definitions;
    family_t* family;
    std::uint64_t identity = 0;
};

} // namespace ko::alg

/// @file
/// The directives and their attributes, in one table.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// What the value of a directive's attribute is.
enum class attribute_kind_t {
    expression, ///< always evaluated
    text,       ///< never evaluated
    variable,   ///< a text that names a variable, which is set
    either      ///< evaluated when it is in the namespace of expressions, else a text
};

struct attribute_rule_t {
    std::string name;
    attribute_kind_t kind;
    bool required;
};

struct directive_rule_t {
    std::string name;
    std::vector<attribute_rule_t> attributes;
    std::string parent; ///< the directive whose child it must be, if any
};

/// All directives.
const std::vector<directive_rule_t>& directives();
/// The directive of that name, or null.
const directive_rule_t* directive_find(const std::string& name);
/// The attribute of that name, or null.
const attribute_rule_t* attribute_find(const directive_rule_t& rule, const std::string& name);

/// "; did you mean "repeat"?" with the candidate that is nearest to a misspelt word; the empty
/// text when none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates);

/// How many characters must be added, left out, replaced or swapped with their neighbour to make
/// one word of the other.
std::size_t edit_distance(const std::string& a, const std::string& b);

} // namespace tool

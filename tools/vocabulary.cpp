#include "vocabulary.h"

#include <algorithm>

namespace tool {

namespace {

constexpr auto expression = attribute_kind_t::expression;
constexpr auto text = attribute_kind_t::text;
constexpr auto variable = attribute_kind_t::variable;
constexpr auto either = attribute_kind_t::either;

template <class T> const T* find(const std::vector<T>& rules, const std::string& name) {
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&](const T& rule) { return rule.name == name; });
    return found == rules.end() ? nullptr : &*found;
}

/// How far a word may be from what it was meant to be.
std::size_t tolerance(const std::string& word) {
    return word.size() < 4 ? 1 : 2;
}

/// Words longer than this are not compared: the time grows with the square.
constexpr std::size_t compared_max = 64;

/// How many candidates are looked at.
constexpr std::size_t candidates_max = 1000;

} // namespace

const std::vector<directive_rule_t>& directives() {
    static const std::vector<directive_rule_t> table{
        {"for",
         {{"initialize", expression, true},
          {"condition", expression, true},
          {"update", expression, true}},
         ""},
        {"repeat",
         {{"index", variable, true}, {"first", expression, true}, {"last", expression, true}},
         ""},
        {"if", {{"condition", expression, true}}, ""},
        {"switch", {{"condition", expression, true}}, ""},
        {"case", {{"expression", expression, true}}, "switch"},
        {"default", {}, "switch"},
        {"evaluate", {{"expression", expression, true}}, ""},
        {"define", {{"name", text, true}}, ""},
        {"insert", {{"name", either, true}}, ""},
        {"specify",
         {{"index", variable, true}, {"values", either, true}, {"namespace", text, false}},
         ""},
        {"include", {{"file", text, true}, {"searchpath", text, false}}, ""},
        {"pragma", {{"process_include", text, false}, {"include_comments", text, false}}, ""},
        {"plugin", {{"name", text, true}}, ""},
    };
    return table;
}

const directive_rule_t* directive_find(const std::string& name) {
    return find(directives(), name);
}

const attribute_rule_t* attribute_find(const directive_rule_t& rule, const std::string& name) {
    return find(rule.attributes, name);
}

std::size_t edit_distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> above(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        above[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, above[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
        std::swap(before, above);
        std::swap(above, row);
    }
    return above[b.size()];
}

std::string suggestion(const std::string& word, const std::vector<std::string>& candidates) {
    const std::string* nearest = nullptr;
    std::size_t distance = tolerance(word) + 1;
    const std::size_t count = std::min(candidates.size(), candidates_max);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& candidate = candidates[i];
        const bool comparable = word.size() <= compared_max && candidate.size() <= compared_max;
        const std::size_t d = comparable ? edit_distance(word, candidate) : distance;
        if (d < distance && d < word.size()) {
            distance = d;
            nearest = &candidate;
        }
    }
    return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

} // namespace tool

#include "algebra/macro_table.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "algebra/limits.h"
#include "algebra/words.h"
#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

using macro_map_t = std::map<std::string, std::string, std::less<>>;

/// One run of `macro_table_t::substitute`.
class substitution_t {
public:
    substitution_t(const macro_map_t& macro_map, std::string& target)
        : macros(macro_map), text(target) {}

    void run();

private:
    /// An occurrence of a macro in the text, in the order of replacement.
    struct occurrence_t {
        macro_map_t::const_iterator macro;
        std::size_t position;

        bool operator<(const occurrence_t& other) const {
            const int order = macro->first.compare(other.macro->first);
            return order != 0 ? order < 0 : position < other.position;
        }
    };

    void words_find(std::string_view part, std::size_t offset);
    void occurrence_add(std::string_view word, std::size_t position);
    void replace_first();
    void shift_behind(std::size_t position, std::size_t taken, std::size_t put);

    const macro_map_t& macros;
    std::string& text;
    std::set<occurrence_t> occurrences;
    std::size_t replacements = 0;
};

void substitution_t::run() {
    words_find(text, 0);
    while (!occurrences.empty()) {
        replace_first();
    }
}

/// Adds the occurrences in `part`, which begins at `offset` of the text.
void substitution_t::words_find(std::string_view part, std::size_t offset) {
    const auto is_legal = [](char c) {
        return label_legals.has(c);
    };
    auto end = part.begin();
    for (;;) {
        const auto begin = std::find_if(end, part.end(), is_legal);
        if (begin == part.end()) {
            return;
        }
        end = std::find_if_not(begin, part.end(), is_legal);
        const auto position = static_cast<std::size_t>(begin - part.begin());
        occurrence_add(part.substr(position, static_cast<std::size_t>(end - begin)),
                       offset + position);
    }
}

/// Every occurrence costs a replacement, so too many of them need not be carried out.
void substitution_t::occurrence_add(std::string_view word, std::size_t position) {
    const auto macro = macros.find(word);
    if (macro == macros.end()) {
        return;
    }
    occurrences.insert({macro, position});
    if (replacements + occurrences.size() >= replacements_max) {
        throw exception_t("algebra_t::macro_substitution() -- more than 50 macros substituted: "
                          "aborting due to suspicion of recursion.");
    }
}

void substitution_t::replace_first() {
    const occurrence_t first = *occurrences.begin();
    const std::string& value = first.macro->second;
    const std::size_t taken = first.macro->first.size();
    occurrences.erase(occurrences.begin());
    ++replacements;
    text.replace(first.position, taken, value);
    shift_behind(first.position, taken, value.size());
    words_find(value, first.position);
}

/// Moves the occurrences behind a replacement of `taken` characters by `put`.
void substitution_t::shift_behind(std::size_t position, std::size_t taken, std::size_t put) {
    std::set<occurrence_t> shifted;
    for (const occurrence_t& occurrence : occurrences) {
        const bool behind = occurrence.position > position;
        shifted.insert(
            {occurrence.macro, behind ? occurrence.position - taken + put : occurrence.position});
    }
    occurrences.swap(shifted);
}

bool is_well_formed(const std::string& key) {
    return ascii::is_alpha(key.front()) &&
           std::all_of(key.begin(), key.end(), [](char c) { return label_legals.has(c); });
}

} // namespace

void macro_table_t::define(const std::string& key, const std::string& value) {
    if (key.empty()) {
        throw exception_t("algebra_t::macro_define() -- empty macro key");
    }
    if (!is_well_formed(key)) {
        throw exception_t("algebra_t::macro_define() -- ill-formed macro key");
    }
    definitions_t addition{{key, value}};
    definitions_t& list = definitions.write();
    macros.write().insert_or_assign(key, value);
    list.splice(list.end(), addition);
    identity = family->number_make();
}

void macro_table_t::clear() {
    macros = {};
    definitions = {};
    identity = family->number_make();
}

void macro_table_t::undefine(const std::string& key) {
    if (macros.get() != nullptr && macros.get()->count(key) != 0) {
        macros.write().erase(key);
        identity = family->number_make();
    }
}

void macro_table_t::substitute(std::string& text) const {
    if (macros.get() == nullptr) {
        return;
    }
    std::string result = text;
    substitution_t(*macros.get(), result).run();
    text.swap(result);
}

void macro_table_t::definitions_get(definitions_t& out) const {
    if (definitions.get() != nullptr) {
        out.insert(out.end(), definitions.get()->begin(), definitions.get()->end());
    }
}

} // namespace ko::alg

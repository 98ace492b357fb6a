#include "algebra/label_scan.h"

#include <algorithm>

#include "algebra/character_tables.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

std::string::const_iterator first_nonwhite_of(const std::string& text) {
    return std::find_if_not(text.begin(), text.end(), ascii::is_space);
}

} // namespace

bool valid_label_get(std::string& text, std::string& label) {
    label.clear();
    const auto begin = first_nonwhite_of(text);
    if (begin == text.end() || !(ascii::is_alpha(*begin) || *begin == '_')) {
        return false;
    }
    const auto end =
        std::find_if_not(begin, text.cend(), [](char c) { return label_legals.has(c); });
    label.assign(begin, end);
    text.erase(text.cbegin(), end);
    return true;
}

bool char_get(std::string& text, char c) {
    const auto begin = first_nonwhite_of(text);
    if (begin == text.end() || *begin != c) {
        return false;
    }
    text.erase(text.cbegin(), begin + 1);
    return true;
}

} // namespace ko::alg

#include "algebra/label_scan.h"

#include <algorithm>

#include "algebra/words.h"
#include "str/ascii.h"

namespace ko::alg {

namespace {

std::string_view without_white_start(std::string_view text) {
    const auto white = std::find_if_not(text.begin(), text.end(), ascii::is_space) - text.begin();
    text.remove_prefix(static_cast<std::size_t>(white));
    return text;
}

} // namespace

bool valid_label_get(std::string_view& text, std::string& label) {
    label.clear();
    const std::string_view start = without_white_start(text);
    if (start.empty() || !(ascii::is_alpha(start.front()) || start.front() == '_')) {
        return false;
    }
    const auto end =
        std::find_if_not(start.begin(), start.end(), [](char c) { return label_legals.has(c); });
    const auto length = static_cast<std::size_t>(end - start.begin());
    label.assign(start, 0, length);
    text = start.substr(length);
    return true;
}

bool char_get(std::string_view& text, char c) {
    const std::string_view start = without_white_start(text);
    if (start.empty() || start.front() != c) {
        return false;
    }
    text = start.substr(1);
    return true;
}

} // namespace ko::alg

#include <algorithm>

#include "str/ascii.h"
#include "str/str.h"

namespace ko::str {

std::string to_upper(const std::string& text) {
    std::string result = text;
    std::transform(result.begin(), result.end(), result.begin(), ascii::to_upper);
    return result;
}

std::string to_lower(const std::string& text) {
    std::string result = text;
    std::transform(result.begin(), result.end(), result.begin(), ascii::to_lower);
    return result;
}

bool all_whitespace(const std::string& text) {
    return std::all_of(text.begin(), text.end(), ascii::is_space);
}

void strip_trailing_whitespace(std::string& text) {
    const auto last = std::find_if_not(text.rbegin(), text.rend(), ascii::is_space);
    text.erase(last.base(), text.end());
}

void strip_leading_whitespace(std::string& text) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), ascii::is_space));
}

char first_nonwhite(const std::string& text) {
    const auto found = std::find_if_not(text.begin(), text.end(), ascii::is_space);
    return found == text.end() ? '\0' : *found;
}

} // namespace ko::str

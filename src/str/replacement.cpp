#include <algorithm>

#include "str/pattern.h"
#include "str/str.h"

namespace ko::str {

void replace(std::string& text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
}

void replace(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) {
        return;
    }
    const pattern_t pattern(from);
    std::string result;
    std::size_t copied = 0;
    std::size_t found = pattern.find_in(text, 0);
    while (found != std::string::npos) {
        result.append(text, copied, found - copied).append(to);
        copied = found + from.size();
        found = pattern.find_in(text, copied);
    }
    result.append(text, copied, std::string::npos);
    text.swap(result);
}

} // namespace ko::str

#include "str/byte_set.h"
#include "str/pattern.h"
#include "str/str.h"

namespace ko::str {

bool starts_with(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool ends_with(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int find_delimited_not(const std::string& text, const std::string& word,
                       const std::string& delims) {
    if (word.empty()) {
        return -1;
    }
    const byte_set_t delimiters(delims);
    const pattern_t pattern(word);
    std::size_t found = pattern.find_in(text, 0);
    while (found != std::string::npos) {
        const std::size_t end = found + word.size();
        const bool free_before = found == 0 || !delimiters.has(text[found - 1]);
        const bool free_after = end == text.size() || !delimiters.has(text[end]);
        if (free_before && free_after) {
            return static_cast<int>(found);
        }
        found = pattern.find_in(text, end);
    }
    return -1;
}

} // namespace ko::str

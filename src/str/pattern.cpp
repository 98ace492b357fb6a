#include "str/pattern.h"

namespace ko::str {

pattern_t::pattern_t(const std::string& pattern_text) : text(pattern_text) {
    borders.reserve(text.size());
    borders.push_back(0);
    while (borders.size() < text.size()) {
        borders.push_back(advance(borders.back(), text[borders.size()]));
    }
}

std::size_t pattern_t::advance(std::size_t state, char c) const {
    while (state != 0 && text[state] != c) {
        state = borders[state - 1];
    }
    return text[state] == c ? state + 1 : 0;
}

std::size_t pattern_t::find_in(const std::string& haystack, std::size_t pos) const {
    std::size_t state = 0;
    while (pos < haystack.size()) {
        state = advance(state, haystack[pos]);
        ++pos;
        if (state == text.size()) {
            return pos - state;
        }
    }
    return std::string::npos;
}

} // namespace ko::str

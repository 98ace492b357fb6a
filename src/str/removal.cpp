#include <algorithm>
#include <vector>

#include "str/byte_set.h"
#include "str/pattern.h"
#include "str/str.h"

namespace ko::str {

void strip(std::string& text, char c) {
    text.erase(std::remove(text.begin(), text.end(), c), text.end());
}

void strip_all(std::string& text, const std::string& set) {
    const byte_set_t removed(set);
    const auto is_removed = [&](char c) {
        return removed.has(c);
    };
    text.erase(std::remove_if(text.begin(), text.end(), is_removed), text.end());
}

// One scan gives what searching from the start after each removal gives: the first occurrence is
// the one that ends first, and nothing before it can be part of another until it is gone. The
// states of the scan are kept per character, so that a removal takes the scan back to where it
// stood before the occurrence began.
void strip(std::string& text, const std::string& part) {
    if (part.empty()) {
        return;
    }
    const pattern_t pattern(part);
    std::string kept;
    std::vector<std::size_t> states{0};
    for (const char c : text) {
        kept.push_back(c);
        states.push_back(pattern.advance(states.back(), c));
        if (states.back() == pattern.size()) {
            kept.resize(kept.size() - pattern.size());
            states.resize(states.size() - pattern.size());
        }
    }
    text.swap(kept);
}

void strip_after(std::string& text, std::string part) {
    if (part.empty()) {
        return;
    }
    const std::size_t found = pattern_t(part).find_in(text, 0);
    if (found != std::string::npos) {
        text.erase(found);
    }
}

void keep_after_last(std::string& text, const std::string& set) {
    const byte_set_t ends(set);
    const auto last =
        std::find_if(text.rbegin(), text.rend(), [&](char c) { return ends.has(c); });
    text.erase(text.begin(), last.base());
}

} // namespace ko::str

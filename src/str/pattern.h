/// @file
/// Substring search in linear time (Knuth, Morris, Pratt).
///
/// The state of a scan is the number of characters of the pattern that end at the scan's place:
/// the length of the longest prefix of the pattern that is a suffix of what was read. On a
/// mismatch the scan falls back to the next shorter such prefix, `borders[state - 1]`, so no
/// character of the text is read twice.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ko::str {

/// A text to be searched for. It refers to the text it was made of, which must outlive it, and
/// which must not be empty.
class pattern_t {
public:
    explicit pattern_t(const std::string& text);

    /// The state after reading `c` in `state`, which must lie below `size()`; a full match is the
    /// state `size()`.
    std::size_t advance(std::size_t state, char c) const;

    std::size_t size() const { return text.size(); }

    /// The first occurrence in `haystack` from `pos` on, or `std::string::npos`.
    std::size_t find_in(const std::string& haystack, std::size_t pos) const;

private:
    const std::string& text;
    /// For each prefix, the length of its longest proper prefix that is also its suffix.
    std::vector<std::size_t> borders;
};

} // namespace ko::str

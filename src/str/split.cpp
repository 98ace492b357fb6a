#include <algorithm>

#include "str/byte_set.h"
#include "str/str.h"

namespace ko::str {

std::string get_clump(std::string& text) {
    const byte_set_t blank(" ");
    const std::size_t begin = blank.find_not_in(text, 0);
    const std::size_t end = blank.find_in(text, begin);
    std::string clump = text.substr(begin, end - begin);
    text.erase(0, end);
    return clump;
}

std::string get_clump(std::string& text, std::string delims) {
    const byte_set_t separators(delims);
    const std::size_t begin = separators.find_not_in(text, 0);
    const std::size_t end = separators.find_in(text, begin);
    std::string clump = text.substr(begin, end - begin);
    text.erase(0, separators.find_not_in(text, end));
    return clump;
}

int get_line(const std::string& text, unsigned int pos, std::string& line) {
    const std::size_t begin = std::min<std::size_t>(pos, text.size());
    const std::size_t end = byte_set_t("\r\n").find_in(text, begin);
    int next = -1;
    if (end < text.size()) {
        const bool pair = text.compare(end, 2, "\r\n") == 0;
        next = static_cast<int>(end + (pair ? 2 : 1));
    }
    line = text.substr(begin, end - begin);
    return next;
}

} // namespace ko::str

#include "tokenizer/tokenizer.h"

#include <algorithm>

#include "str/byte_set.h"

namespace ko {

unsigned tokenizer_t::tokenize(const std::string& line, const std::string& delims) {
    const str::byte_set_t delimiters(delims);
    const std::size_t end = std::min(line.find('\0'), line.size());
    // Filled apart and swapped in at the end: `line` may be one of the old tokens.
    std::vector<std::string> tokens;
    std::size_t pos = delimiters.find_not_in(line, 0);
    while (pos < end) {
        const bool quoted = line[pos] == '"';
        const std::size_t begin = quoted ? pos + 1 : pos;
        const std::size_t stop = quoted ? line.find('"', begin) : delimiters.find_in(line, begin);
        const std::size_t token_end = std::min(stop, end);
        if (token_end > begin) {
            tokens.emplace_back(line, begin, token_end - begin);
        }
        pos = delimiters.find_not_in(line, quoted ? token_end + 1 : token_end);
    }
    swap(tokens);
    return static_cast<unsigned>(size());
}

} // namespace ko

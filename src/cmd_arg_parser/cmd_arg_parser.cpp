#include "cmd_arg_parser/cmd_arg_parser.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>

#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::util {

namespace {

bool is_hexadecimal(const std::string& word) {
    return word.size() > 2 && word[0] == '0' && ascii::to_lower(word[1]) == 'x';
}

/// The value of a hexadecimal digit, or -1.
int digit_value(char c) {
    if (ascii::is_digit(c)) {
        return c - '0';
    }
    const char lower = ascii::to_lower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// What "%x" reads with a `long` of 32 bits: the digits after the prefix, clamped to 32 bits; the
/// zero of the prefix when there are none.
std::uint32_t hexadecimal_get(const std::string& word) {
    constexpr std::uint64_t limit = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t value = 0;
    for (std::size_t i = 2; i < word.size() && digit_value(word[i]) >= 0; ++i) {
        value = std::min(value * 16 + static_cast<unsigned>(digit_value(word[i])), limit);
    }
    return static_cast<std::uint32_t>(value);
}

/// Reads a number at the start of `word` as a stream of the "C" locale does: a number out of
/// range is clamped and counts as a failure, a word without a number gives 0, and one of white
/// space alone leaves `value` as it was.
template <class T> bool decimal_read(const std::string& word, T& value) {
    std::istringstream stream(word);
    stream.imbue(std::locale::classic());
    // Else an allocation failure within would read as a word without a number.
    stream.exceptions(std::ios_base::badbit);
    stream >> value;
    return !stream.fail();
}

/// The nearest float; a plain cast of what lies beyond the largest one would be undefined.
float to_float(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    constexpr double rounds_to_infinity = largest + 0x1p103;
    const double magnitude = std::fabs(value);
    if (magnitude > largest) {
        const float end = magnitude < rounds_to_infinity ? std::numeric_limits<float>::max()
                                                         : std::numeric_limits<float>::infinity();
        return value < 0 ? -end : end;
    }
    return static_cast<float>(value);
}

/// Reads an `int` and stores it back truncated, whether one was read or not.
template <class T> bool next_truncated(cmd_arg_parser_t& parser, T& value) {
    // What is not read comes back as it was. NOLINTNEXTLINE(bugprone-signed-char-misuse)
    int number = static_cast<int>(value);
    const bool is_read = parser.next(number);
    value = static_cast<T>(number);
    return is_read;
}

} // namespace

cmd_arg_parser_t::cmd_arg_parser_t(int count, char** argv) : argc(count), cursor(0) {
    if (argc >= 1 && argv == nullptr) {
        throw exception_t("ko::util::cmd_arg_parser_t::cmd_arg_parser_t() -- argv is null");
    }
    for (int i = 0; i < argc; ++i) {
        if (argv[i] == nullptr) {
            throw exception_t(
                "ko::util::cmd_arg_parser_t::cmd_arg_parser_t() -- argv[%d] is null", i);
        }
        if (i == 0) {
            program = argv[i];
        } else {
            args.emplace_back(argv[i]);
        }
    }
}

bool cmd_arg_parser_t::find(const std::string& word) {
    const auto found = std::find(args.begin(), args.end(), word);
    if (found == args.end()) {
        return false;
    }
    cursor = static_cast<std::size_t>(found - args.begin()) + 1;
    return true;
}

bool cmd_arg_parser_t::next_str(std::string& value) {
    if (cursor == args.size() || args[cursor].compare(0, 1, "-") == 0) {
        return false;
    }
    value = args[cursor];
    ++cursor;
    return true;
}

bool cmd_arg_parser_t::next(int& value) {
    std::string word;
    if (!next_str(word)) {
        return false;
    }
    if (is_hexadecimal(word)) {
        value = static_cast<int>(hexadecimal_get(word));
        return true;
    }
    return decimal_read(word, value);
}

bool cmd_arg_parser_t::next(float& value) {
    std::string word;
    return next_str(word) && decimal_read(word, value);
}

bool cmd_arg_parser_t::next(double& value) {
    float number = to_float(value);
    const bool is_read = next(number);
    // Stored back whether a number was read or not; callers rely on it (quirk "single doubles").
    value = static_cast<double>(number);
    return is_read;
}

bool cmd_arg_parser_t::next(unsigned int& value) {
    return next_truncated(*this, value);
}

bool cmd_arg_parser_t::next(long& value) {
    return next_truncated(*this, value);
}

bool cmd_arg_parser_t::next(unsigned long& value) {
    // By way of 32 bits, so that a longer type is not filled with the sign.
    unsigned int number = static_cast<unsigned int>(value);
    const bool is_read = next(number);
    value = number;
    return is_read;
}

bool cmd_arg_parser_t::next(char& value) {
    return next_truncated(*this, value);
}

bool cmd_arg_parser_t::next(unsigned char& value) {
    return next_truncated(*this, value);
}

bool cmd_arg_parser_t::next(short& value) {
    return next_truncated(*this, value);
}

bool cmd_arg_parser_t::next(unsigned short& value) {
    return next_truncated(*this, value);
}

} // namespace ko::util

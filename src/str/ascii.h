/// @file
/// Character classes of the "C" locale, whatever locale the host has set. A byte from 128 up is
/// in none of them.
#pragma once

namespace ko::ascii {

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool is_lower(char c) {
    return c >= 'a' && c <= 'z';
}

constexpr bool is_upper(char c) {
    return c >= 'A' && c <= 'Z';
}

constexpr bool is_alpha(char c) {
    return is_lower(c) || is_upper(c);
}

constexpr bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool is_print(char c) {
    return c >= ' ' && c <= '~';
}

constexpr char to_upper(char c) {
    return is_lower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char to_lower(char c) {
    return is_upper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace ko::ascii

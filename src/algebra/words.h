/// @file
/// Sets of characters.
#pragma once

#include <array>
#include <string_view>

namespace ko::alg {

/// A constant set of bytes.
class character_table_t {
public:
    constexpr explicit character_table_t(std::string_view members) : table() {
        for (const char member : members) {
            table[static_cast<unsigned char>(member)] = true;
        }
    }

    constexpr bool has(char c) const { return table[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> table;
};

/// Characters of names, and of the words that macros replace.
constexpr character_table_t
    label_legals("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_");
constexpr character_table_t decimal_legals("0123456789");
constexpr character_table_t hex_legals("0123456789abcdefABCDEF");
constexpr character_table_t octal_legals("01234567");

} // namespace ko::alg

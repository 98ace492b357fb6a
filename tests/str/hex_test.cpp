#include <gtest/gtest.h>

#include "str/str.h"
#include "support/throws.h"

namespace {

std::string to_hex(std::string bytes) {
    return ko::str::bin2ascii(bytes.data(), static_cast<unsigned>(bytes.size()));
}

/// Four bytes, first all 0x55, after reading `hex` into the first `size` of them.
std::string from_hex(std::string hex, unsigned size) {
    std::string bytes(4, '\x55');
    ko::str::ascii2bin(hex, bytes.data(), size);
    return bytes;
}

TEST(bin2ascii, writes_upper_case_digits_high_nibble_first) {
    EXPECT_EQ(to_hex("\x0A\xFF"), "0AFF");
    EXPECT_EQ(to_hex("\x01\x23\x45\x67\x89\xAB\xCD\xEF"), "0123456789ABCDEF");
    EXPECT_EQ(to_hex(""), "");
}

TEST(ascii2bin, reads_both_cases) {
    EXPECT_EQ(from_hex("0aff", 2), "\x0A\xFF\x55\x55");
    EXPECT_EQ(from_hex("0AfF", 2), "\x0A\xFF\x55\x55");
}

TEST(ascii2bin, undoes_bin2ascii_for_every_byte) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes.push_back(static_cast<char>(i));
    }
    std::string hex = to_hex(bytes);
    std::string back(256, '\0');
    ko::str::ascii2bin(hex, back.data(), 256);
    EXPECT_EQ(back, bytes);
}

TEST(ascii2bin, writes_no_more_than_text_and_size_allow) {
    EXPECT_EQ(from_hex("010203", 2), "\x01\x02\x55\x55");
    EXPECT_EQ(from_hex("01", 4), "\x01\x55\x55\x55");
    EXPECT_EQ(from_hex("", 4), "\x55\x55\x55\x55");
}

TEST(ascii2bin, ignores_a_trailing_odd_character) {
    EXPECT_EQ(from_hex("012", 4), "\x01\x55\x55\x55");
    EXPECT_EQ(from_hex("1", 4), "\x55\x55\x55\x55");
}

TEST(ascii2bin, validates_nothing) {
    EXPECT_EQ(from_hex("?/", 1).front(), '\xFF'); // 63 and 47, below 64
    EXPECT_EQ(from_hex("@@", 1).front(), '\x99'); // 64: 0 + 9
    EXPECT_EQ(from_hex("0G", 1).front(), '\x10'); // 7 + 9
    EXPECT_EQ(from_hex("0o", 1).front(), '\x18'); // 15 + 9
    EXPECT_EQ(from_hex("o0", 1).front(), '\x80'); // the high nibble keeps four bits
}

TEST(ascii2bin, takes_bytes_from_128_up_as_large) {
    EXPECT_EQ(from_hex("\x80\x81", 1).front(), '\x9A');
    EXPECT_EQ(from_hex("\xF6\xFF", 1).front(), '\xF8'); // 15 and 24 overlap in one bit
}

TEST(hex, takes_null_data_when_there_is_nothing_to_do) {
    std::string none;
    std::string odd = "1";
    std::string some = "0aff";
    EXPECT_EQ(ko::str::bin2ascii(nullptr, 0), "");
    EXPECT_NO_THROW(ko::str::ascii2bin(none, nullptr, 4));
    EXPECT_NO_THROW(ko::str::ascii2bin(odd, nullptr, 4));
    EXPECT_NO_THROW(ko::str::ascii2bin(some, nullptr, 0));
}

TEST(hex, refuses_null_data_otherwise) {
    std::string some = "0aff";
    EXPECT_THROWS(ko::str::bin2ascii(nullptr, 1), "ko::str::bin2ascii() -- data is null");
    EXPECT_THROWS(ko::str::ascii2bin(some, nullptr, 1), "ko::str::ascii2bin() -- data is null");
}

} // namespace

#include <gtest/gtest.h>

#include "support/throws.h"
#include "tokenizer/tokenizer.h"

namespace {

using pieces_t = std::vector<std::string>;

pieces_t pieces_of(const ko::in_place_tokenizer_t& tokenizer) {
    return pieces_t(tokenizer.begin(), tokenizer.end());
}

/// Splits `text`, which holds the bytes that the split leaves afterwards.
pieces_t split(std::string& text, char separator) {
    return pieces_of(ko::in_place_tokenizer_t(text.data(), separator));
}

TEST(in_place_tokenizer, lists_the_strings_of_a_block) {
    EXPECT_EQ(pieces_of(ko::in_place_tokenizer_t("one\0two\0\0three")), (pieces_t{"one", "two"}));
    EXPECT_EQ(pieces_of(ko::in_place_tokenizer_t("one\0")), pieces_t{"one"});
}

TEST(in_place_tokenizer, gives_no_entries_for_an_empty_block) {
    EXPECT_EQ(pieces_of(ko::in_place_tokenizer_t("")), pieces_t{});
}

TEST(in_place_tokenizer, points_into_the_block) {
    const char block[] = "ab\0c\0";
    const ko::in_place_tokenizer_t tokenizer(block);
    EXPECT_EQ(tokenizer.size(), 2U);
    EXPECT_EQ(tokenizer.front(), block);
    EXPECT_EQ(tokenizer.back(), block + 3);
}

TEST(in_place_tokenizer, puts_zero_bytes_for_the_separators) {
    std::string text = "a,,b,";
    EXPECT_EQ(split(text, ','), (pieces_t{"a", "b"}));
    EXPECT_EQ(text, std::string("a\0\0b\0", 5));
}

TEST(in_place_tokenizer, gives_no_entry_for_empty_pieces) {
    std::string text = ",,ab,c";
    EXPECT_EQ(split(text, ','), (pieces_t{"ab", "c"}));
    EXPECT_EQ(text, std::string("\0\0ab\0c", 6));
    std::string separators = ",,,";
    EXPECT_EQ(split(separators, ','), pieces_t{});
    std::string empty;
    EXPECT_EQ(split(empty, ','), pieces_t{});
}

TEST(in_place_tokenizer, gives_a_text_without_separators_whole) {
    std::string text = "a b";
    EXPECT_EQ(split(text, ','), pieces_t{"a b"});
    EXPECT_EQ(split(text, '\0'), pieces_t{"a b"});
    EXPECT_EQ(text, "a b");
}

TEST(in_place_tokenizer, takes_a_separator_from_128_up) {
    std::string text = "a\xFF"
                       "b";
    EXPECT_EQ(split(text, '\xFF'), (pieces_t{"a", "b"}));
}

TEST(in_place_tokenizer, points_into_the_text) {
    char text[] = ";ab;c";
    const ko::in_place_tokenizer_t tokenizer(text, ';');
    EXPECT_EQ(tokenizer.front(), text + 1);
    EXPECT_EQ(tokenizer.back(), text + 4);
}

TEST(in_place_tokenizer, refuses_null) {
    const std::string name = "ko::in_place_tokenizer_t::in_place_tokenizer_t() -- ";
    const char* no_block = nullptr;
    EXPECT_THROWS(ko::in_place_tokenizer_t tokenizer(no_block), name + "block is null");
    EXPECT_THROWS(ko::in_place_tokenizer_t tokenizer(nullptr, ','), name + "text is null");
}

} // namespace

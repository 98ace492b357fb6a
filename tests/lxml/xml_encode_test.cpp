#include <gtest/gtest.h>

#include "lxml/lxml.h"

namespace {

using ko::lxml::xml_encode;

TEST(xml_encode, replaces_the_four_characters_of_markup) {
    EXPECT_EQ(xml_encode("a<b & \"c\""), "a&lt;b &amp; &quot;c&quot;");
    EXPECT_EQ(xml_encode("]]>"), "]]&gt;");
}

TEST(xml_encode, copies_the_apostrophe) {
    EXPECT_EQ(xml_encode("it's"), "it's");
}

TEST(xml_encode, writes_a_reference_for_every_other_byte) {
    EXPECT_EQ(xml_encode("\n"), "&#10;");
    EXPECT_EQ(xml_encode("\t\r"), "&#9;&#13;");
    EXPECT_EQ(xml_encode("\xC3"), "&#195;");
    EXPECT_EQ(xml_encode("\xC3\xA4"), "&#195;&#164;");
    EXPECT_EQ(xml_encode("\xFF"), "&#255;");
}

TEST(xml_encode, copies_printable_ascii_alone) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const bool markup = text.find_first_of("\"&<>") != std::string::npos;
        const bool copied = byte >= ' ' && byte <= '~' && !markup;
        EXPECT_EQ(xml_encode(text) == text, copied) << byte;
        const bool referred = xml_encode(text) == "&#" + std::to_string(byte) + ";";
        EXPECT_EQ(referred, !copied && !markup) << byte;
    }
}

TEST(xml_encode, ends_at_a_zero_byte) {
    EXPECT_EQ(xml_encode(std::string("a\0b", 3)), "a");
    EXPECT_EQ(xml_encode(""), "");
    const std::string before(1000, 'a');
    EXPECT_EQ(xml_encode(before + std::string("\0<", 2) + before), before);
}

} // namespace

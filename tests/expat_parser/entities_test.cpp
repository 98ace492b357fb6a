#include <gtest/gtest.h>

#include <string>

#include "recorder.h"
#include "support/expat_failure.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/utf16.h"

namespace {

using namespace ko::errorcode;
using test::events_of;
using test::events_t;
using test::throws;
using test::utf16;

std::string entity(const std::string& name, const std::string& value) {
    return "<!ENTITY " + name + " '" + value + "'>";
}

/// A document with these declarations on its second line, which uses an entity twice.
std::string with_entities(const std::string& declarations, const std::string& used) {
    return "<!DOCTYPE a [\n" + declarations + "]><a b='&" + used + ";'>&" + used + ";</a>";
}

/// The declaration of an entity that stands for another one.
/// @param begin what stands before the name of the other one
std::string link(const std::string& name, int number, const std::string& begin) {
    return entity(name + std::to_string(number), begin + name + std::to_string(number - 1) + ";");
}

/// NAME0, which stands for "x", and so many entities each of which stands for the one before.
std::string chain(int length, const std::string& name = "e", const std::string& begin = "&") {
    std::string text = entity(name + "0", "x");
    for (int i = 1; i <= length; ++i) {
        text += link(name, i, begin);
    }
    return text;
}

/// The same, each declared before the one that it stands for.
std::string chain_forward(int length) {
    std::string text;
    for (int i = length; i > 0; --i) {
        text += link("e", i, "&");
    }
    return text + entity("e0", "x");
}

std::string refusal(std::size_t column) {
    return "more than 1000 entities that refer to entities line=2 column=" +
           std::to_string(column) + ": xml parse error";
}

testing::AssertionResult is_refused(const std::string& text, std::size_t column) {
    return throws([&] { events_of(text); }, xml_parse_error, refusal(column));
}

const events_t all_replaced = {"start a b=x", "text x", "end a"};

TEST(entities, that_refer_to_entities_may_be_a_thousand) {
    EXPECT_EQ(events_of(with_entities(chain(1000), "e1000")), all_replaced);
    EXPECT_EQ(events_of(with_entities(chain_forward(1000), "e1000")), all_replaced);
}

TEST(entities, may_be_a_thousand_deep_in_the_default_of_an_attribute) {
    EXPECT_EQ(
        events_of("<!DOCTYPE a [" + chain(1000) + "<!ATTLIST a b CDATA '&e1000;'>]><a>x</a>"),
        all_replaced);
}

TEST(entities, may_be_a_thousand_deep_from_text_into_an_attribute) {
    EXPECT_EQ(events_of("<!DOCTYPE a [" + chain(999) + entity("f", "<c b=\"&e999;\"/>") +
                        "]><a>&f;</a>"),
              (events_t{"start a", "start c b=x", "end c", "end a"}));
}

TEST(entities, that_refer_to_entities_are_refused_beyond_a_thousand) {
    const struct {
        std::string name;
        std::string begin;
    } cases[] = {{"e", "&"}, {"lt", "&"}, {"e", "&amp;&"}, {"e", "&#38;"}, {"e", "a&#x26;"}};
    for (const auto& [name, begin] : cases) {
        const std::size_t column =
            chain(1000, name, begin).size() + ("<!ENTITY " + name + "1001 ").size();
        const std::string text = with_entities(chain(1001, name, begin), name + "0");
        EXPECT_TRUE(is_refused(text, column)) << name << begin;
        EXPECT_TRUE(is_refused(utf16(text, false), column)) << name << begin;
    }
}

TEST(entities, that_refer_to_later_ones_are_refused_beyond_a_thousand) {
    const std::string declarations = chain_forward(50000);
    EXPECT_TRUE(
        is_refused(with_entities(declarations, "e50000"), declarations.find("'&e48999;'")));
}

TEST(entities, that_are_too_many_stay_an_error) {
    const test::temp_dir_t dir;
    const std::string name = dir.write("a.xml", with_entities(chain(1001), "e0"));
    ko::xml::expat_parser_t parser(true);
    const std::string message =
        refusal(chain(1000).size() + std::string("<!ENTITY e1001 ").size());
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROWS(parser.parse(name), xml_parse_error, message);
    }
}

TEST(entities, that_refer_to_no_entity_may_be_any_number) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
        const std::string number = std::to_string(i);
        text += entity("e" + number, "a&amp;b&lt;&gt;&quot;&apos;&#38;#65;&#66;");
        text += entity("% p" + number, "&e0;");
        text += "<!ENTITY x" + number + " SYSTEM 'file'>";
        text += entity("c" + number, "<![CDATA[a &#38; b]]>");
    }
    EXPECT_EQ(events_of(with_entities(text, "e1999")),
              (events_t{"start a b=a&b<>\"'AB", "text a&b<>\"'AB", "end a"}));
}

TEST(entities, count_where_they_are_first_declared) {
    std::string text = entity("e", "x");
    for (int i = 0; i < 2000; ++i) {
        text += entity("e", "&f;");
    }
    EXPECT_EQ(events_of(with_entities(text, "e")), all_replaced);
}

TEST(entities, in_a_circle_are_an_error) {
    const std::string text = with_entities(entity("e", "&f;") + entity("f", "&e;"), "e");
    EXPECT_THROWS(events_of(text), xml_parse_error, test::parse_error_message(text));
}

} // namespace

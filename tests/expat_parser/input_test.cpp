#include <gtest/gtest.h>

#include "recorder.h"
#include "support/expat_failure.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/utf16.h"

namespace {

using namespace ko::errorcode;
using test::events_of;
using test::events_t;
using test::parse_error_message;
using test::recorder_t;
using test::throws_code;
using test::utf16;

const events_t umlaut = {"start a", "text \xC3\xA4", "end a"};

TEST(expat_parser_input, of_every_encoding_becomes_utf8) {
    EXPECT_EQ(events_of("<a>\xC3\xA4</a>"), umlaut);
    EXPECT_EQ(events_of("\xEF\xBB\xBF<a>\xC3\xA4</a>"), umlaut);
    EXPECT_EQ(events_of("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"), umlaut);
    EXPECT_EQ(events_of(utf16("<a>\xE4</a>", false)), umlaut);
    EXPECT_EQ(events_of(utf16("<a>\xE4</a>", true)), umlaut);
}

TEST(expat_parser_input, in_an_unknown_encoding_is_an_error) {
    const char* const text = "<?xml version='1.0' encoding='x-none'?><a/>";
    EXPECT_TRUE(
        throws_code([&] { events_of(text); }, xml_parse_error, parse_error_message(text)));
}

TEST(expat_parser_input, with_broken_bytes_is_an_error) {
    const std::string cases[] = {
        std::string("<a>\0</a>", 8),
        std::string("<a b='\0'/>", 10),
        std::string("<a/>\0", 5),
        "<a>\xC3",
        "<a>\xC3</a>",
        "<a>\xF0\x9F\x98</a>",
        "<a>\x80</a>",
        "<a>\xC0\xAF</a>",
        "<a>\xED\xA0\x80</a>",
        utf16("<a>x</a>", false).substr(0, 15),
        utf16("<a>x</a>", true).substr(0, 11),
        std::string("\xFF\xFE<\0a\0>\0\x00\xD8<\0/\0a\0>\0", 18),
    };
    for (const std::string& text : cases) {
        ASSERT_NE(test::expat_failure(text), "") << text;
        EXPECT_TRUE(
            throws_code([&] { events_of(text); }, xml_parse_error, parse_error_message(text)));
    }
}

/// A document type with ten levels of an entity that stands ten times for the next one.
std::string billion_laughs() {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 '" + std::string(1000, 'x') + "'>";
    for (int i = 1; i < 10; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) {
            text += inner;
        }
        text += "'>";
    }
    return text + "]>";
}

TEST(expat_parser_input, that_explodes_is_an_error) {
    const XML_Expat_Version version = XML_ExpatVersionInfo();
    if (version.major == 2 && version.minor < 4) {
        GTEST_SKIP() << "this expat has no protection";
    }
    for (const char* element : {"<a>&e9;</a>", "<a b='&e9;'/>"}) {
        ko::xml::expat_parser_t parser(true);
        std::string message;
        try {
            parser.parse_buffer(billion_laughs() + element);
        } catch (const ko::errorcode_t& e) {
            EXPECT_EQ(e.code_get(), xml_parse_error);
            message = e.what();
        }
        EXPECT_EQ(message, std::string(XML_ErrorString(XML_ERROR_AMPLIFICATION_LIMIT_BREACH)) +
                               " " + parser.position_describe() + ": xml parse error");
    }
}

TEST(expat_parser_input, never_fetches_an_external_entity) {
    const test::temp_dir_t dir;
    const std::string secret = dir.write("secret.txt", "secret");
    EXPECT_EQ(events_of("<!DOCTYPE a [<!ENTITY e SYSTEM '" + secret + "'>]><a>x&e;y</a>"),
              (events_t{"start a", "text xy", "end a"}));
}

TEST(expat_parser_input, never_fetches_an_external_document_type) {
    const test::temp_dir_t dir;
    const std::string type = dir.write("a.dtd", "<!ATTLIST a b CDATA 'secret'>");
    EXPECT_EQ(events_of("<!DOCTYPE a SYSTEM '" + type + "'><a/>"),
              (events_t{"start a", "end a"}));
}

TEST(expat_parser_input, never_fetches_an_external_parameter_entity) {
    const test::temp_dir_t dir;
    const std::string type = dir.write("a.dtd", "<!ATTLIST a b CDATA 'secret'>");
    EXPECT_EQ(events_of("<!DOCTYPE a [<!ENTITY % p SYSTEM '" + type + "'>%p;]><a/>"),
              (events_t{"start a", "end a"}));
}

TEST(expat_parser_input, with_an_external_entity_in_an_attribute_is_an_error) {
    const test::temp_dir_t dir;
    const std::string text = "<!DOCTYPE a [<!ENTITY e SYSTEM '" +
                             dir.write("secret.txt", "secret") + "'>]><a b='&e;'/>";
    EXPECT_TRUE(
        throws_code([&] { events_of(text); }, xml_parse_error, parse_error_message(text)));
}

/// A document type with these declarations of entities, and uses of an entity.
std::string with_entities(const std::string& declarations, const std::string& used) {
    return "<!DOCTYPE a [" + declarations + "]><a b='&" + used + ";'>&" + used + ";</a>";
}

std::string entity(const std::string& name, const std::string& value) {
    return "<!ENTITY " + name + " '" + value + "'>";
}

std::string reference(int number) {
    return "&e" + std::to_string(number) + ";";
}

/// So many entities each of which stands for the one before; the first one for that before all.
std::string entity_chain(int length) {
    std::string text = entity("e0", "x");
    for (int i = 1; i <= length; ++i) {
        text += entity("e" + std::to_string(i), reference(i - 1));
    }
    return text;
}

/// The same, each declared before the one that it stands for.
std::string entity_chain_forward(int length) {
    std::string text;
    for (int i = length; i > 0; --i) {
        text += entity("e" + std::to_string(i), reference(i - 1));
    }
    return text + entity("e0", "x");
}

const events_t all_entities_replaced = {"start a b=x", "text x", "end a"};

TEST(expat_parser_input, may_have_a_thousand_entities_that_refer_to_entities) {
    EXPECT_EQ(events_of(with_entities(entity_chain(1000), "e1000")), all_entities_replaced);
    EXPECT_EQ(events_of(with_entities(entity_chain_forward(1000), "e1000")),
              all_entities_replaced);
}

TEST(expat_parser_input, with_more_entities_that_refer_to_entities_is_an_error) {
    const std::string forward = entity_chain_forward(50000);
    const struct {
        std::string declarations;
        std::size_t column; ///< of the text of the entity that is one too many
    } cases[] = {
        {entity_chain(1001), entity_chain(1001).rfind("'&")},
        {forward, forward.find("'&e48999;'")},
    };
    for (const auto& [declarations, column] : cases) {
        EXPECT_TRUE(throws_code([&] { events_of(with_entities("\n" + declarations, "e1")); },
                                xml_parse_error,
                                "more than 1000 entities that refer to entities line=2 column=" +
                                    std::to_string(column) + ": xml parse error"));
    }
}

TEST(expat_parser_input, with_too_many_entities_stays_an_error) {
    const test::temp_dir_t dir;
    const std::string name = dir.write("a.xml", with_entities(entity_chain(1001), "e0"));
    ko::xml::expat_parser_t parser(true);
    std::string first;
    std::string second;
    for (std::string* message : {&first, &second}) {
        try {
            parser.parse(name);
        } catch (const ko::errorcode_t& e) {
            *message = e.what();
        }
    }
    EXPECT_EQ(first.substr(0, 46), "more than 1000 entities that refer to entities");
    EXPECT_EQ(second, first);
}

TEST(expat_parser_input, may_have_any_number_of_other_entities) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
        text += entity("e" + std::to_string(i), "a&amp;b&lt;&gt;&quot;&apos;&#38;#65;&#66;");
        text += "<!ENTITY % p" + std::to_string(i) + " '" + reference(i) + "'>";
        text += "<!ENTITY x" + std::to_string(i) + " SYSTEM 'file'>";
    }
    EXPECT_EQ(events_of(with_entities(text, "e1999")),
              (events_t{"start a b=a&b<>\"'AB", "text a&b<>\"'AB", "end a"}));
}

TEST(expat_parser_input, with_entities_in_a_circle_is_an_error) {
    const std::string text = with_entities(entity("e", "&f;") + entity("f", "&e;"), "e");
    EXPECT_TRUE(
        throws_code([&] { events_of(text); }, xml_parse_error, parse_error_message(text)));
}

TEST(expat_parser_input, gets_default_attributes_of_its_own_document_type) {
    EXPECT_EQ(events_of("<!DOCTYPE a [<!ATTLIST a b CDATA 'x'>]><a/>"),
              (events_t{"start a b=x", "end a"}));
}

} // namespace

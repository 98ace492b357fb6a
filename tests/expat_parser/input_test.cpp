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
    EXPECT_THROWS(events_of(text), xml_parse_error, parse_error_message(text));
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
        EXPECT_THROWS(events_of(text), xml_parse_error, parse_error_message(text));
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
    EXPECT_THROWS(events_of(text), xml_parse_error, parse_error_message(text));
}

TEST(expat_parser_input, gets_default_attributes_of_its_own_document_type) {
    EXPECT_EQ(events_of("<!DOCTYPE a [<!ATTLIST a b CDATA 'x'>]><a/>"),
              (events_t{"start a b=x", "end a"}));
}

} // namespace

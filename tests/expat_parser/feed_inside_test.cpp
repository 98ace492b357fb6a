#include "expat_parser/feed.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "errorcode/errorcode.h"
#include "expat_parser/map_exceptions.h"
#include "support/throws.h"

namespace {

using namespace ko::errorcode;

/// An expat parser that gathers character data.
class parser_t {
public:
    parser_t() : handle(XML_ParserCreate(nullptr)) {
        XML_SetUserData(handle, &text);
        XML_SetCharacterDataHandler(handle, [](void* out, const char* s, int size) {
            static_cast<std::string*>(out)->append(s, static_cast<std::size_t>(size));
        });
    }
    ~parser_t() { XML_ParserFree(handle); }

    XML_Parser handle;
    std::string text;
};

TEST(feed, gives_the_same_text_in_pieces_of_any_size) {
    const std::string document = "<a>one \xC3\xA4 two &amp; <b>three</b></a>";
    for (std::size_t limit = 1; limit <= document.size() + 1; ++limit) {
        parser_t parser;
        EXPECT_TRUE(ko::xml::feed(parser.handle, document, limit)) << limit;
        EXPECT_EQ(parser.text, "one \xC3\xA4 two & three") << limit;
    }
}

TEST(feed, ends_the_document_with_the_last_piece) {
    for (std::size_t limit = 1; limit <= 4; ++limit) {
        parser_t parser;
        EXPECT_FALSE(ko::xml::feed(parser.handle, "<a>", limit));
        EXPECT_EQ(XML_GetErrorCode(parser.handle), XML_ERROR_NO_ELEMENTS);
    }
}

TEST(feed, stops_at_the_first_error) {
    parser_t parser;
    EXPECT_FALSE(ko::xml::feed(parser.handle, "<a></b>\n<c/>", 1));
    EXPECT_EQ(XML_GetErrorCode(parser.handle), XML_ERROR_TAG_MISMATCH);
    EXPECT_EQ(XML_GetCurrentLineNumber(parser.handle), 1u);
}

TEST(feed, takes_an_empty_text_as_a_document_without_element) {
    parser_t parser;
    EXPECT_FALSE(ko::xml::feed(parser.handle, "", 1));
    EXPECT_EQ(XML_GetErrorCode(parser.handle), XML_ERROR_NO_ELEMENTS);
}

TEST(feed, keeps_its_pieces_below_the_lengths_that_expat_takes) {
    EXPECT_LT(ko::xml::feed_limit, static_cast<std::size_t>(INT_MAX));
}

TEST(map_exceptions, lets_an_errorcode_out_unchanged) {
    EXPECT_THROWS(ko::xml::map_exceptions([] { throw ko::errorcode_t("text", xml_internal); }),
                  xml_internal, "text");
}

TEST(map_exceptions, turns_a_standard_exception_into_a_rethrown_one) {
    EXPECT_THROWS(ko::xml::map_exceptions([] { throw ko::exception_t(std::string("text")); }),
                  xml_rethrow_exception, "text: xml error");
}

TEST(map_exceptions, turns_anything_else_into_an_unknown_one) {
    EXPECT_THROWS(ko::xml::map_exceptions([] { throw 1; }), xml_unknown_exception,
                  "xml unknown exception");
}

} // namespace

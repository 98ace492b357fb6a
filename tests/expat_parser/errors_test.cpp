#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "recorder.h"
#include "support/expat_failure.h"
#include "support/temp_dir.h"
#include "support/throws.h"

namespace {

using namespace ko::errorcode;
using test::events_t;
using test::expat_failure;
using test::parse_error_message;
using test::recorder_t;
using test::throws;

/// A recorder that throws `error` at the first event that is `line` and notes the position.
template <class E> class thrower_t : public recorder_t {
public:
    thrower_t(const std::string& line, const E& error) {
        on_event = [this, line, error](const std::string& event) {
            if (event == line) {
                position = position_describe();
                throw error;
            }
        };
    }

    std::string position;
};

const char* const three_lines = "<a>\n<b/>\n<c/><d/></a>";

TEST(expat_parser, reports_malformed_text_in_the_words_of_expat) {
    for (const char* text : {"<a></b>", "", "  ", "<a>\n <b>\n</a>", "<a b='1' b='2'/>", "<a/>x",
                             "<a>&none;</a>", "x", "<a b=1/>", "<p:a/>", "<a>]]></a>"}) {
        EXPECT_THROWS(recorder_t().parse_buffer(text), xml_parse_error,
                      parse_error_message(text));
        const test::temp_dir_t dir;
        EXPECT_THROWS(recorder_t().parse(dir.write("a.xml", text)), xml_parse_error,
                      parse_error_message(text));
    }
}

TEST(expat_parser, reports_malformed_text_with_its_position) {
    const std::string message = parse_error_message("<a>\n\n</b>");
    EXPECT_NE(message.find(" line=3 column="), std::string::npos) << message;
}

TEST(expat_parser, delivers_what_stands_before_an_error) {
    recorder_t recorder;
    EXPECT_ANY_THROW(recorder.parse_buffer("<a><b/></c>"));
    EXPECT_EQ(recorder.events, (events_t{"start a", "start b", "end b"}));
}

TEST(expat_parser, throws_the_errorcode_of_a_callback_with_its_whole_text) {
    const ko::errorcode_t error(xml_element_missing, "m");
    thrower_t<ko::errorcode_t> thrower("start c", error);
    EXPECT_ANY_THROW(thrower.parse_buffer(three_lines));
    EXPECT_EQ(thrower.position.rfind("line=3 column=", 0), 0u);
    thrower_t<ko::errorcode_t> again("start c", error);
    EXPECT_THROWS(again.parse_buffer(three_lines), xml_element_missing,
                  "m: xml element missing " + thrower.position + ": xml element missing");
}

TEST(expat_parser, makes_no_callback_after_one_that_threw) {
    thrower_t<ko::errorcode_t> thrower("start c", ko::errorcode_t(xml_element_missing));
    EXPECT_ANY_THROW(thrower.parse_buffer(three_lines));
    EXPECT_EQ(thrower.events,
              (events_t{"start a", "text \n", "start b", "end b", "text \n", "start c"}));
}

TEST(expat_parser, throws_another_exception_of_a_callback_as_rethrown) {
    thrower_t<std::runtime_error> thrower("start b", std::runtime_error("100%s"));
    std::string message;
    try {
        thrower.parse_buffer(three_lines);
    } catch (const ko::errorcode_t& e) {
        EXPECT_EQ(e.code_get(), xml_rethrow_exception);
        message = e.what();
    }
    EXPECT_EQ(message, "100%s " + thrower.position + ": xml error");
}

TEST(expat_parser, throws_what_a_callback_of_any_kind_threw) {
    for (const char* event :
         {"start a", "text x", "start_cdata", "text y", "end_cdata", "end a"}) {
        thrower_t<ko::exception_t> thrower(event, ko::exception_t(std::string("stop")));
        std::string message;
        try {
            thrower.parse_buffer("<a>x<![CDATA[y]]></a>");
        } catch (const ko::errorcode_t& e) {
            message = e.what();
        }
        EXPECT_EQ(message, "stop " + thrower.position + ": xml error") << event;
        EXPECT_EQ(thrower.events.back(), event);
    }
}

TEST(expat_parser, is_only_silenced_by_an_exception_of_unknown_type) {
    thrower_t<int> thrower("start b", 1);
    EXPECT_NO_THROW(thrower.parse_buffer(three_lines));
    EXPECT_EQ(thrower.events, (events_t{"start a", "text \n", "start b"}));
}

/// An exception of the host's own.
struct own_exception_t {
    std::string text;
};

TEST(expat_parser, takes_an_exception_of_any_type_from_a_callback_of_any_kind) {
    const test::temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a>x<![CDATA[y]]></a>");
    for (const char* event :
         {"start a", "text x", "start_cdata", "text y", "end_cdata", "end a"}) {
        thrower_t<own_exception_t> own(event, own_exception_t{std::string(100, 'x')});
        EXPECT_NO_THROW(own.parse(path));
        EXPECT_EQ(own.events.back(), event);
        thrower_t<std::bad_alloc> memory(event, std::bad_alloc());
        EXPECT_EQ(test::code_of([&] { memory.parse(path); }), xml_rethrow_exception);
        EXPECT_EQ(memory.events.back(), event);
    }
}

TEST(expat_parser, is_only_silenced_by_an_errorcode_that_means_no_error) {
    thrower_t<ko::errorcode_t> thrower("start b", ko::errorcode_t(no_error));
    EXPECT_NO_THROW(thrower.parse_buffer(three_lines));
    EXPECT_EQ(thrower.events.back(), "start b");
}

TEST(expat_parser, reports_malformed_text_rather_than_a_callback_of_the_same_call) {
    const char* const text = "<a>\n<b/></c>";
    thrower_t<ko::errorcode_t> thrower("start b", ko::errorcode_t(xml_element_missing));
    EXPECT_THROWS(thrower.parse_buffer(text), xml_parse_error, parse_error_message(text));
    EXPECT_EQ(thrower.events.back(), "start b");
}

TEST(expat_parser, stops_reading_a_file_after_the_piece_with_a_failed_callback) {
    const test::temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a><b/>" + std::string(9000, ' ') + "</c>");
    thrower_t<ko::errorcode_t> thrower("start b", ko::errorcode_t(xml_element_missing));
    try {
        thrower.parse(path);
        ADD_FAILURE() << "threw nothing";
    } catch (const ko::errorcode_t& e) {
        EXPECT_EQ(e.code_get(), xml_element_missing);
        EXPECT_EQ(e.what(), "xml element missing " + thrower.position + ": xml element missing");
    }
}

TEST(expat_parser, reads_one_document_only) {
    const std::string finished = XML_ErrorString(XML_ERROR_FINISHED);
    recorder_t recorder;
    recorder.parse_buffer("<a/>");
    const std::string message = finished + " " + recorder.position_describe();
    EXPECT_THROWS(recorder.parse_buffer("<b/>"), xml_parse_error, message + ": xml parse error");
    const test::temp_dir_t dir;
    EXPECT_THROWS(recorder.parse(dir.write("c.xml", "<c/>")), xml_parse_error,
                  message + ": xml parse error");
    EXPECT_EQ(recorder.events, (events_t{"start a", "end a"}));
}

TEST(expat_parser, reads_no_other_document_after_one_that_failed) {
    const char* const text = "<a></b>";
    recorder_t recorder;
    EXPECT_ANY_THROW(recorder.parse_buffer(text));
    EXPECT_THROWS(recorder.parse_buffer("<b/>"), xml_parse_error, parse_error_message(text));
}

TEST(expat_parser, does_not_go_on_where_a_callback_stopped_it) {
    const test::temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a><b/>" + std::string(9000, ' ') + "</a>");
    thrower_t<ko::errorcode_t> thrower("start b", ko::errorcode_t(xml_element_missing));
    EXPECT_ANY_THROW(thrower.parse(path));
    const auto again = [&] {
        thrower.parse(dir.write("b.xml", "</a>"));
    };
    const std::string finished = XML_ErrorString(XML_ERROR_FINISHED);
    EXPECT_TRUE(throws(again, xml_parse_error,
                       finished + " " + thrower.position_describe() + ": xml parse error"));
}

TEST(expat_parser, refuses_to_be_used_by_its_own_callbacks) {
    recorder_t recorder;
    recorder.on_event = [&](const std::string&) {
        recorder.parse_buffer("<b/>");
    };
    try {
        recorder.parse_buffer("<a/>");
        ADD_FAILURE() << "threw nothing";
    } catch (const ko::errorcode_t& e) {
        EXPECT_EQ(e.code_get(), xml_parse_error);
    }
    EXPECT_EQ(recorder.events, events_t{"start a"});
}

TEST(expat_parser, can_still_read_after_a_file_that_was_not_opened) {
    recorder_t recorder;
    EXPECT_ANY_THROW(recorder.parse("/nowhere/missing.xml"));
    recorder.parse_buffer("<a/>");
    EXPECT_EQ(recorder.events, (events_t{"start a", "end a"}));
}

} // namespace

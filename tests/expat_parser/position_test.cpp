#include <gtest/gtest.h>

#include "recorder.h"

namespace {

using test::recorder_t;

std::string described(const recorder_t& recorder) {
    return "line=" + std::to_string(recorder.line_number_get()) +
           " column=" + std::to_string(recorder.column_number_get());
}

TEST(expat_parser_position, counts_lines_from_1_and_columns_from_0) {
    const recorder_t recorder;
    EXPECT_EQ(recorder.position_describe(), "line=1 column=0");
    EXPECT_EQ(recorder.line_number_get(), 1u);
    EXPECT_EQ(recorder.column_number_get(), 0u);
}

TEST(expat_parser_position, has_no_byte_index_before_a_parse) {
    EXPECT_EQ(recorder_t().byte_index_get(), -1);
}

TEST(expat_parser_position, is_that_of_the_event_in_a_callback) {
    recorder_t recorder;
    std::vector<unsigned long> lines;
    recorder.on_event = [&](const std::string& event) {
        EXPECT_EQ(recorder.position_describe(), described(recorder));
        if (event.rfind("start ", 0) == 0) {
            lines.push_back(recorder.line_number_get());
        }
    };
    recorder.parse_buffer("<a>\n  <b/>\n\n<c/></a>");
    EXPECT_EQ(lines, (std::vector<unsigned long>{1, 2, 4}));
}

TEST(expat_parser_position, gives_the_byte_of_a_start_tag) {
    recorder_t recorder;
    long byte = -1;
    recorder.on_event = [&](const std::string& event) {
        byte = event == "start b" ? recorder.byte_index_get() : byte;
    };
    recorder.parse_buffer("<a>\xC3\xA4<b/></a>");
    EXPECT_EQ(byte, 5);
}

} // namespace

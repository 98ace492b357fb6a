#include "recorder.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace {

using test::events_of;
using test::events_t;
using test::recorder_t;

TEST(expat_parser, reports_prefixed_names_as_uri_local_prefix) {
    EXPECT_EQ(events_of("<p:a xmlns:p='urn:x' p:b='1'/>"),
              (events_t{"start urn:x|a|p urn:x|b|p=1", "end urn:x|a|p"}));
}

TEST(expat_parser, reports_names_of_a_default_namespace_as_uri_local) {
    EXPECT_EQ(events_of("<a xmlns='urn:x' b='1'/>"),
              (events_t{"start urn:x|a b=1", "end urn:x|a"}));
}

TEST(expat_parser, reports_names_without_namespace_as_they_are) {
    EXPECT_EQ(events_of("<a b='1'/>"), (events_t{"start a b=1", "end a"}));
}

TEST(expat_parser, without_namespaces_reports_names_as_written) {
    EXPECT_EQ(events_of("<p:a xmlns:p='urn:x' p:b='1'/>", false),
              (events_t{"start p:a p:b=1 xmlns:p=urn:x", "end p:a"}));
}

TEST(expat_parser, orders_attributes_by_bytes_of_their_names) {
    EXPECT_EQ(events_of("<a b='1' B='2' a='3' b2='4' _='5'/>"),
              (events_t{"start a B=2 _=5 a=3 b=1 b2=4", "end a"}));
}

TEST(expat_parser, calls_back_for_text_and_cdata_in_document_order) {
    EXPECT_EQ(events_of("<a>x<![CDATA[<q>]]>y<b/></a>"),
              (events_t{"start a", "text x", "start_cdata", "text <q>", "end_cdata", "text y",
                        "start b", "end b", "end a"}));
}

TEST(expat_parser, resolves_references_in_text_and_values) {
    EXPECT_EQ(events_of("<a b='&lt;&#65;'>&amp;&#x42;</a>"),
              (events_t{"start a b=<A", "text &B", "end a"}));
}

TEST(expat_parser, drops_comments_instructions_and_the_document_type) {
    EXPECT_EQ(events_of("<?xml version='1.0'?><!DOCTYPE a [<!ELEMENT a ANY>]><!-- c --><?p i?>"
                        "<a><!-- c --><?p i?></a><!-- c -->"),
              (events_t{"start a", "end a"}));
}

TEST(expat_parser, does_nothing_in_its_own_callbacks) {
    ko::xml::expat_parser_t parser(true);
    parser.parse_buffer("<a b='1'>x<![CDATA[y]]>\n<c/></a>");
    EXPECT_EQ(parser.line_number_get(), 2u);
}

TEST(expat_parser, delivers_a_text_run_across_the_read_size_complete) {
    for (const std::size_t length : {4090u, 4096u, 5000u, 20000u}) {
        const std::string run(length, 'x');
        const test::temp_dir_t dir;
        recorder_t recorder;
        recorder.parse(dir.write("a.xml", "<a>" + run + "</a>"));
        EXPECT_EQ(recorder.events, (events_t{"start a", "text " + run, "end a"}));
        EXPECT_GE(recorder.text_calls, 1);
    }
}

TEST(expat_parser, may_deliver_a_run_split_over_reads_in_several_calls) {
    const test::temp_dir_t dir;
    recorder_t recorder;
    recorder.parse(dir.write("a.xml", "<a>" + std::string(3 * 4096, 'x') + "</a>"));
    EXPECT_GE(recorder.text_calls, 2);
}

TEST(expat_parser, gives_the_same_events_for_a_file_and_a_buffer) {
    std::string text = "<a>";
    for (int i = 0; i < 2000; ++i) {
        text += "<b n='" + std::to_string(i) + "'>t</b>\n";
    }
    text += "</a>";
    const test::temp_dir_t dir;
    recorder_t recorder;
    recorder.parse(dir.write("a.xml", text));
    EXPECT_EQ(recorder.events, events_of(text));
}

TEST(expat_parser, compares_attribute_names_as_unsigned_bytes) {
    const ko::xml::expat_parser_t::string_cmp_t less;
    EXPECT_TRUE(less("a", "b"));
    EXPECT_FALSE(less("a", "a"));
    EXPECT_TRUE(less("B", "a"));
    EXPECT_TRUE(less("a", "\xC3\xA4"));
}

} // namespace

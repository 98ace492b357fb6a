#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <tuple>

#include "lxml/lxml.h"
#include "support/expat_failure.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::errorcode;
using namespace ko::lxml;
using test::shape;
using test::temp_dir_t;

class load_options : public testing::Test {
protected:
    /// What a load throws: "FILE:LINE:COLUMN MESSAGE"; "nothing" where it does not.
    template <class A> static std::string error_of(A&& action) {
        try {
            action();
        } catch (const load_error_t& e) {
            return e.file + ":" + std::to_string(e.line) + ":" + std::to_string(e.column) + " " +
                   e.what();
        }
        return "nothing";
    }
    std::string error_of_text(const std::string& text) {
        return error_of([&] { doc.load_from_string(text, options); });
    }
    /// "LINE:COLUMN:BYTE" of an element.
    std::string place(const element_t* e) const {
        const position_t* const at = doc.position_get(e);
        return at == nullptr ? "none"
                             : std::to_string(at->line) + ":" + std::to_string(at->column) + ":" +
                                   std::to_string(at->byte);
    }

    document_t doc;
    load_options_t options;
};

TEST_F(load_options, load_a_file_a_text_and_a_stream) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a><b/></a>");
    EXPECT_TRUE(doc.load(path, options));
    EXPECT_EQ(shape(doc.root), "a(b)");
    EXPECT_EQ(doc.file_name, path);
    EXPECT_TRUE(doc.load_from_string("<c/>", options));
    EXPECT_EQ(shape(doc.root), "c");
    std::istringstream in("<d>" + test::repeated("<e/>", 3000) + "</d>");
    EXPECT_TRUE(doc.load(in, options));
    EXPECT_EQ(doc.root->children.size(), 3000u);
}

TEST_F(load_options, take_what_is_left_of_a_stream) {
    std::istringstream in("rubbish <a/>");
    std::string word;
    in >> word;
    in.get();
    doc.load(in, options);
    EXPECT_EQ(shape(doc.root), "a");
}

TEST_F(load_options, report_a_stream_that_is_bad) {
    std::istringstream in("<a/>");
    in.setstate(std::ios::badbit);
    EXPECT_EQ(error_of([&] { doc.load(in, options); }), ":0:0 xml file read failure");
}

TEST_F(load_options, report_a_stream_that_has_failed) {
    std::istringstream in("<a/>");
    in.setstate(std::ios::failbit);
    EXPECT_EQ(error_of([&] { doc.load(in, options); }), ":0:0 xml file read failure");
}

TEST_F(load_options, report_a_stream_that_breaks_while_it_is_read) {
    class broken_t : public std::streambuf {
        int_type underflow() override { throw std::runtime_error("the device is gone"); }
    } broken;
    std::istream in(&broken);
    EXPECT_EQ(error_of([&] { doc.load(in, options); }), ":0:0 xml file read failure");
    EXPECT_TRUE(in.bad());
}

TEST_F(load_options, note_positions_only_when_asked) {
    doc.load_from_string("<a>\n <b/><c\n/></a>", options);
    EXPECT_EQ(place(doc.root), "none");
    options.positions = true;
    doc.load_from_string("<a>\n <b/><c\n/></a>", options);
    EXPECT_EQ(place(doc.root), "1:0:0");
    EXPECT_EQ(place(doc.root->children.front()), "2:1:5");
    EXPECT_EQ(place(doc.root->children.back()), "2:5:9");
    EXPECT_EQ(place(doc.element_create("made", "")), "none");
}

TEST_F(load_options, give_elements_of_an_entity_the_place_of_the_reference) {
    options.positions = true;
    doc.load_from_string("<!DOCTYPE a [<!ENTITY e '\n<b/>\n<c/>'>]>\n<a>&e;</a>", options);
    EXPECT_EQ(place(doc.root->children.front()), place(doc.root->children.back()));
    EXPECT_EQ(doc.position_get(doc.root->children.back())->column, 3u);
}

TEST_F(load_options, forget_the_position_of_an_element_that_is_freed) {
    options.positions = true;
    doc.load_from_string("<a><b/></a>", options);
    const element_t* const b = doc.root->children.front();
    doc.root->children_delete();
    EXPECT_EQ(doc.position_get(b), nullptr);
    EXPECT_EQ(place(doc.root), "1:0:0");
}

TEST_F(load_options, tell_where_the_error_is) {
    const std::string bad = "<a>\n  </b>";
    EXPECT_EQ(error_of_text(bad), ":2:4 " + test::parse_error_message(bad));
    const temp_dir_t dir;
    const std::string path = dir.write("bad.xml", bad);
    EXPECT_EQ(error_of([&] { doc.load(path, options); }),
              path + ":2:4 " + test::parse_error_message(bad));
    EXPECT_EQ(error_of([&] { doc.load("/nowhere/a.xml", options); }),
              "/nowhere/a.xml:0:0 /nowhere/a.xml: xml file open failure");
}

TEST_F(load_options, throw_what_a_plain_load_throws) {
    EXPECT_THROWS(doc.load_from_string("<a>", options), xml_parse_error,
                  test::parse_error_message("<a>"));
    EXPECT_THROWS(doc.load("/nowhere/a.xml", options), xml_file_open,
                  "/nowhere/a.xml: xml file open failure");
}

TEST_F(load_options, discard_what_a_failed_load_made) {
    doc.load_from_string("<p:a xmlns:p='urn:x'><b/></p:a>");
    doc.file_name = "before";
    EXPECT_NE(error_of_text("<p:c xmlns:p='urn:y'><d><e/></d><f><g>"), "nothing");
    EXPECT_NE(error_of_text("<c><d/></c><e/>"), "nothing");
    EXPECT_NE(error_of([&] { doc.load("/nowhere/a.xml", options); }), "nothing");
    EXPECT_EQ(shape(doc.root), "a(b)");
    EXPECT_EQ(doc.elements.size(), 2u);
    EXPECT_EQ(doc.file_name, "before");
    EXPECT_EQ(doc.uri_prefix_expand("p"), "urn:x");
    EXPECT_EQ(doc.uri_to_prefix.size(), 1u);
}

TEST_F(load_options, keep_what_a_failed_load_made_when_asked) {
    options.discard_on_failure = false;
    EXPECT_NE(error_of_text("<c><d/>"), "nothing");
    EXPECT_EQ(doc.elements.size(), 2u);
    EXPECT_EQ(doc.root, nullptr);
}

TEST_F(load_options, forbid_a_document_type) {
    EXPECT_EQ(error_of_text("<!DOCTYPE a><a/>"), "nothing");
    options.forbid_doctype = true;
    EXPECT_EQ(error_of_text("<a/>"), "nothing");
    const std::string message = "document type declaration is forbidden line=1 column=";
    EXPECT_EQ(error_of_text("<!DOCTYPE a><a/>"), ":1:11 " + message + "11: xml parse error");
    EXPECT_EQ(error_of_text("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"),
              ":1:12 " + message + "12: xml parse error");
}

TEST_F(load_options, limit_the_depth) {
    options.depth_max = 3;
    EXPECT_EQ(error_of_text("<a><b><c/><c/></b><b/></a>"), "nothing");
    EXPECT_EQ(error_of_text("<a><b>\n<c><d/></c></b></a>"),
              ":2:3 elements nested more than 3 levels deep line=2 column=3: xml parse error");
    EXPECT_EQ(shape(doc.root), "a(b(c,c),b)");
    EXPECT_EQ(doc.elements.size(), 5u);
}

TEST_F(load_options, limit_the_number_of_elements) {
    options.elements_max = 3;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(error_of_text("<a><b/><c/></a>"), "nothing");
    }
    EXPECT_EQ(error_of_text("<a><b/><c/><d/></a>"),
              ":1:11 more than 3 elements line=1 column=11: xml parse error");
}

TEST_F(load_options, write_a_line_about_a_failure_when_asked) {
    testing::internal::CaptureStdout();
    EXPECT_NE(error_of([&] { doc.load("/nowhere/a.xml", options); }), "nothing");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    options.quiet = false;
    testing::internal::CaptureStdout();
    EXPECT_NE(error_of([&] { doc.load("/nowhere/a.xml", options); }), "nothing");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Caught exception in /nowhere/a.xml\n");
}

} // namespace

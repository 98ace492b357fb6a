// Small documents that ask for much memory or time, and the limits that they meet.
#include <gtest/gtest.h>

#include <string>

#include "lxml/lxml.h"
#include "recorder.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::errorcode;
using test::events_of;
using test::repeated;

const char* const too_much =
    "entities and attribute defaults make more than 8 MiB and 100 times the input";
const char* const too_long = "namespace name longer than 4096 bytes";
const char* const too_large =
    "names and values take more memory than 8 MiB and 250 times the input";
const char* const too_many = "more than 1000 attributes declared for an element type";

/// The message of the error that reading a text gives, up to its position.
std::string refusal_of(const std::string& text) {
    try {
        ko::xml::expat_parser_t(true).parse_buffer(text);
    } catch (const ko::errorcode_t& e) {
        const std::string message = e.what();
        EXPECT_EQ(e.code_get(), xml_parse_error);
        return message.substr(0, message.find(" line="));
    }
    return "";
}

/// A document type with declarations, and a root with content.
std::string document(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE r [" + declarations + "]><r>" + content + "</r>";
}

/// "NAME0 CDATA 'VALUE' NAME1 CDATA 'VALUE' ..."
std::string defaults(const std::string& name, const std::string& value, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += name + std::to_string(i) + " CDATA '" + value + "' ";
    }
    return text;
}

std::string attlist(const std::string& declared) {
    return "<!ATTLIST a " + declared + ">";
}

TEST(limits, refuse_defaults_that_are_many) {
    const std::string declared = attlist(defaults("n", "", 1000));
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 100))), "");
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 1000))), too_much);
}

TEST(limits, refuse_a_default_that_is_long) {
    const std::string declared = attlist(defaults("n", std::string(20000, 'x'), 1));
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 400))), "");
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 20000))), too_much);
}

TEST(limits, refuse_defaults_that_declare_many_namespaces) {
    const std::string declared = attlist(defaults("xmlns:p", "urn:x", 1000));
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 10))), "");
    EXPECT_EQ(refusal_of(document(declared, repeated("<a/>", 1000))), too_much);
}

TEST(limits, refuse_entities_that_make_many_elements) {
    std::string declared = "<!ENTITY e0 '" + repeated("<a/>", 100) + "'>";
    for (int i = 1; i < 3; ++i) {
        declared += "<!ENTITY e" + std::to_string(i) + " '" +
                    repeated("&e" + std::to_string(i - 1) + ";", 20) + "'>";
    }
    EXPECT_EQ(refusal_of(document(declared, "&e2;")), "");
    EXPECT_EQ(refusal_of(document(declared, "&e2;&e2;")), too_much);
}

TEST(limits, do_not_touch_what_is_written) {
    EXPECT_EQ(refusal_of(document("", repeated("<a/>", 300000))), "");
    EXPECT_EQ(refusal_of(document("", repeated("<a b=''/>", 300000))), "");
    EXPECT_EQ(refusal_of(document("", repeated("<a xmlns='u'/>", 300000))), "");
}

TEST(limits, do_not_touch_a_start_tag_with_many_attributes) {
    std::string text = "<a";
    for (int i = 0; i < 200000; ++i) {
        text += " n" + std::to_string(i) + "=''";
    }
    EXPECT_EQ(refusal_of(text + "/>"), "");
}

TEST(limits, refuse_a_namespace_name_that_is_long) {
    const std::string longest(4096, 'u');
    for (const char* name : {"xmlns", "xmlns:p"}) {
        const std::string begin = std::string("<a ") + name + "='" + longest;
        EXPECT_EQ(refusal_of(begin + "'/>"), "") << name;
        EXPECT_EQ(refusal_of(begin + "u'/>"), too_long) << name;
    }
    EXPECT_EQ(refusal_of(document(attlist("xmlns CDATA '" + longest + "u'"), "<a/>")), too_long);
}

/// A start tag with many attributes in one namespace.
std::string attributes_in(const std::string& uri, int count) {
    std::string text = "<a xmlns:p='" + uri + "'";
    for (int i = 0; i < count; ++i) {
        text += " p:n" + std::to_string(i) + "=''";
    }
    return text + "/>";
}

TEST(limits, refuse_attributes_whose_names_become_long) {
    const std::string uri(4096, 'u');
    EXPECT_EQ(refusal_of(attributes_in(uri, 500)), "");
    EXPECT_EQ(refusal_of(attributes_in(uri, 20000)), too_large);
    EXPECT_EQ(refusal_of(attributes_in("urn:a_name_of_usual_length", 20000)), "");
    EXPECT_EQ(refusal_of(attributes_in(std::string(2000, 'u'), 20000)), "");
}

TEST(limits, refuse_a_long_namespace_name_before_expat_copies_it) {
    const std::string text = attributes_in(std::string(50000, 'u'), 8000);
    EXPECT_EQ(refusal_of(text), too_long);
    EXPECT_EQ(refusal_of(text + "<"), too_long);
}

TEST(limits, do_not_touch_an_attribute_that_entities_fill) {
    const std::string declared = "<!ENTITY e '" + std::string(30000, 'x') + "'>";
    EXPECT_EQ(refusal_of(document(declared, "<a b='" + repeated("&e;", 70) + "'/>")), "");
}

TEST(limits, hold_for_each_document_that_a_callback_reads) {
    test::recorder_t outer;
    outer.on_event = [](const std::string&) {
        EXPECT_EQ(refusal_of(attributes_in(std::string(4096, 'u'), 20000)), too_large);
    };
    outer.parse_buffer("<a><b/>" + repeated("<c/>", 3) + "</a>");
    EXPECT_EQ(outer.events.size(), 10u);
}

TEST(limits, hold_only_for_names_that_are_namespaces) {
    const std::string text = "<a xmlns='" + std::string(5000, 'u') + "'/>";
    EXPECT_EQ(events_of(text, false).size(), 2u);
}

TEST(limits, refuse_many_declared_attributes) {
    const auto implied = [](int count) {
        return attlist(repeated("n CDATA #IMPLIED ", static_cast<std::size_t>(count)));
    };
    EXPECT_EQ(refusal_of(document(implied(1000) + "<!ATTLIST b n CDATA #IMPLIED>", "")), "");
    EXPECT_EQ(refusal_of(document(implied(1001), "")), too_many);
    EXPECT_EQ(refusal_of(document(implied(500) + implied(501), "")), too_many);
}

TEST(limits, tell_where_they_are_met) {
    const std::string text = "<a>\n <b xmlns='" + std::string(5000, 'u') + "'/></a>";
    EXPECT_THROWS(events_of(text), xml_parse_error,
                  std::string(too_long) + " line=2 column=1: xml parse error");
}

TEST(limits, that_are_met_end_the_events) {
    test::recorder_t recorder;
    EXPECT_ANY_THROW(
        recorder.parse_buffer("<a><b xmlns='" + std::string(5000, 'u') + "'/><c/></a>"));
    EXPECT_EQ(recorder.events, test::events_t{"start a"});
}

TEST(limits, that_are_met_leave_a_document_that_can_load) {
    ko::lxml::document_t doc;
    EXPECT_ANY_THROW(doc.load_from_string("<a xmlns='" + std::string(5000, 'u') + "'/>"));
    doc.load_from_string("<b/>");
    EXPECT_EQ(test::shape(doc.root), "b");
}

} // namespace

#include "expat_parser/limits.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ko::xml::refers_to_entity;

TEST(refers_to_entity, is_true_where_the_text_names_an_entity) {
    for (const char* text : {"&e;", "a &e; b", "&lt0;", "&l;", "&ampere;", "&amp;&e;", "&#65;&e;",
                             "& &e;", "&&e;", "&a &e;", "&amp &e;", "&\xC3\xA4;", "&p:e;"}) {
        EXPECT_TRUE(refers_to_entity(text)) << text;
    }
}

TEST(refers_to_entity, is_false_for_any_other_text) {
    for (const char* text :
         {"", "a", "&", "a & b", "a;", "&e", "&e ;", "a&&b", "&amp;&lt;&gt;&quot;&apos;", "&#65;",
          "&#x41;", "http://h/?a=1&b=2;c", "<![CDATA[a & b]]>"}) {
        EXPECT_FALSE(refers_to_entity(text)) << text;
    }
}

} // namespace

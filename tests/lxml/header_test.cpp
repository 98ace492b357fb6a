// Includes the module's header alone, as the smallest host does.
#include "lxml/lxml.h"

#include <gtest/gtest.h>

namespace {

TEST(lxml_header, brings_the_errors_that_it_names) {
    ko::lxml::document_t doc;
    try {
        doc.load_from_string("<a>");
        ADD_FAILURE() << "threw nothing";
    } catch (const ko::errorcode_t& e) {
        EXPECT_EQ(e.code_get(), ko::errorcode::xml_parse_error);
    }
    doc.root = doc.element_create("a", "");
    EXPECT_THROW(doc.root->append(nullptr), ko::exception_t);
}

} // namespace

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "lxml/lxml.h"
#include "support/ordinary_user.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;
using test::loaded_t;
using test::temp_dir_t;

/// The bytes of the file that a document is saved to.
std::string saved(document_t& doc, bool trim = false, bool pretty = false) {
    const temp_dir_t dir;
    doc.save(dir.path("out.xml"), trim, pretty);
    return dir.read("out.xml");
}

TEST(save, writes_what_print_writes_for_the_root) {
    loaded_t tree("<a b='1'> x <c/><p:d xmlns:p='urn:x'>&lt;</p:d></a>");
    for (const bool trim : {false, true}) {
        for (const bool pretty : {false, true}) {
            EXPECT_EQ(saved(tree.doc, trim, pretty), test::printed(tree.doc.root, trim, pretty));
        }
    }
}

TEST(save, of_a_lone_root_is_the_declaration_and_a_tag) {
    loaded_t tree("<r/>");
    EXPECT_EQ(saved(tree.doc, false, true),
              "<?xml version=\"1.0\" standalone=\"yes\"?>\n<r />\n");
}

TEST(save, of_a_document_without_a_root_is_an_empty_file) {
    document_t doc;
    doc.stylesheet = "s.xsl";
    EXPECT_EQ(saved(doc, false, true), "");
}

TEST(save, truncates_the_file) {
    const temp_dir_t dir;
    loaded_t tree("<r/>");
    tree.doc.save(dir.write("a.xml", std::string(10000, 'x')), false, false);
    EXPECT_EQ(dir.read("a.xml"), "<?xml version=\"1.0\" standalone=\"yes\"?><r />");
}

TEST(save, can_be_loaded_again) {
    loaded_t tree("<p:a xmlns:p='urn:x' xml:lang='en' b='&lt;'><c>t&amp;</c><d><![CDATA[q]]></d>"
                  "<e xmlns='urn:y'><f/></e></p:a>");
    const std::string first = saved(tree.doc);
    loaded_t again(first);
    EXPECT_EQ(saved(again.doc), first);
    EXPECT_EQ(again.doc.root->attribute_get_value("b", ""), "<");
    EXPECT_EQ(again.find("c")->text, "t&");
    EXPECT_EQ(again.find("f")->ns_get(), "urn:y");
}

TEST(save, to_a_place_that_cannot_be_opened_is_an_error) {
    const temp_dir_t dir;
    loaded_t tree("<r/>");
    for (const std::string& path : {dir.path(), dir.write("a.xml", "<a/>") + "/b.xml",
                                    std::string("/nowhere/100%s.xml"), std::string()}) {
        EXPECT_THROWS(tree.doc.save(path, false, false), "error opening file " + path);
    }
}

TEST(save, to_a_file_that_must_not_be_written_is_an_error) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "kept");
    chmod(path.c_str(), 0444);
    const test::ordinary_user_t user(dir.path());
    loaded_t tree("<r/>");
    EXPECT_THROWS(tree.doc.save(path, false, false), "error opening file " + path);
    EXPECT_EQ(dir.read("a.xml"), "kept");
}

TEST(save, to_a_full_device_is_an_error) {
    loaded_t small("<r/>");
    loaded_t large("<r>" + std::string(100000, 'x') + "</r>");
    for (const bool pretty : {false, true}) {
        EXPECT_THROWS(small.doc.save("/dev/full", false, pretty), "error writing file /dev/full");
        EXPECT_THROWS(large.doc.save("/dev/full", false, pretty), "error writing file /dev/full");
    }
}

TEST(save, cuts_its_messages_as_the_library_does) {
    loaded_t tree("<r/>");
    const std::string path = "/nowhere/" + std::string(600, 'x');
    EXPECT_THROWS(tree.doc.save(path, false, false),
                  ("error opening file " + path).substr(0, 510));
}

} // namespace

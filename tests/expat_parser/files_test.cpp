#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

#include "recorder.h"
#include "support/expat_failure.h"
#include "support/ordinary_user.h"
#include "support/temp_dir.h"
#include "support/throws.h"

namespace {

using namespace ko::errorcode;
using test::events_t;
using test::recorder_t;
using test::temp_dir_t;

/// The number of descriptors that this process has open.
long open_files() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

TEST(expat_parser_file, that_is_empty_has_no_element) {
    const temp_dir_t dir;
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse(dir.write("empty.xml", "")), xml_parse_error,
                  test::parse_error_message(""));
    EXPECT_EQ(recorder.events, events_t{});
}

TEST(expat_parser_file, that_is_missing_is_an_open_error_with_its_name) {
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse("/nowhere/missing 100%s.xml"), xml_file_open,
                  "/nowhere/missing 100%s.xml: xml file open failure");
    EXPECT_EQ(recorder.events, events_t{});
}

TEST(expat_parser_file, with_an_empty_name_is_an_open_error) {
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse(""), xml_file_open, ": xml file open failure");
}

TEST(expat_parser_file, that_is_a_directory_is_a_read_error) {
    const temp_dir_t dir;
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse(dir.path()), xml_file_read,
                  dir.path() + ": xml file read failure");
    EXPECT_EQ(recorder.events, events_t{});
}

TEST(expat_parser_file, that_must_not_be_read_is_an_open_error) {
    const temp_dir_t dir;
    const std::string path = dir.write("secret.xml", "<a/>");
    chmod(path.c_str(), 0);
    const test::ordinary_user_t user(dir.path());
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse(path), xml_file_open, path + ": xml file open failure");
}

TEST(expat_parser_file, below_another_file_is_an_open_error) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a/>") + "/b.xml";
    recorder_t recorder;
    EXPECT_THROWS(recorder.parse(path), xml_file_open, path + ": xml file open failure");
}

TEST(expat_parser_file, that_is_cut_while_it_is_read_is_a_parse_error) {
    const temp_dir_t dir;
    const std::string path = dir.write("a.xml", "<a>" + std::string(100000, 'x') + "</a>");
    const long before = open_files();
    recorder_t recorder;
    recorder.on_event = [&](const std::string&) {
        std::filesystem::resize_file(path, 0);
    };
    EXPECT_EQ(test::code_of([&] { recorder.parse(path); }), xml_parse_error);
    EXPECT_EQ(recorder.events.size(), 2u);
    EXPECT_EQ(open_files(), before);
}

TEST(expat_parser_file, may_be_a_fifo) {
    const temp_dir_t dir;
    const std::string path = dir.path("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(path) << "<a>" << std::flush << "x</a>"; });
    recorder_t recorder;
    recorder.parse(path);
    writer.join();
    EXPECT_EQ(recorder.events, (events_t{"start a", "text x", "end a"}));
}

TEST(expat_parser_file, is_closed_on_every_way_out) {
    const temp_dir_t dir;
    const long before = open_files();
    recorder_t().parse(dir.write("good.xml", "<a/>"));
    EXPECT_ANY_THROW(recorder_t().parse(dir.write("bad.xml", "<a>")));
    EXPECT_ANY_THROW(recorder_t().parse(dir.path()));
    recorder_t thrower;
    thrower.on_event = [](const std::string&) {
        throw 1;
    };
    thrower.parse(dir.path("good.xml"));
    EXPECT_ANY_THROW(thrower.parse(dir.path("good.xml")));
    EXPECT_EQ(open_files(), before);
}

TEST(expat_parser_file, name_is_kept_until_the_next_parse) {
    const temp_dir_t dir;
    const std::string path = dir.write("good.xml", "<a/>");
    recorder_t recorder;
    EXPECT_EQ(recorder.file_name_get(), "");
    recorder.parse(path);
    EXPECT_EQ(recorder.file_name_get(), path);
    EXPECT_ANY_THROW(recorder.parse("/nowhere/other.xml"));
    EXPECT_EQ(recorder.file_name_get(), "/nowhere/other.xml");
}

TEST(expat_parser_file, name_is_empty_after_a_buffer) {
    recorder_t recorder;
    recorder.parse_buffer("<a/>");
    EXPECT_EQ(recorder.file_name_get(), "");
}

TEST(expat_parser_file, name_is_emptied_by_a_buffer) {
    recorder_t recorder;
    EXPECT_ANY_THROW(recorder.parse("/nowhere/missing.xml"));
    recorder.parse_buffer("<a/>");
    EXPECT_EQ(recorder.file_name_get(), "");
}

} // namespace

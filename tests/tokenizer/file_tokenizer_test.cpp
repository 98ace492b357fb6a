#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "support/ordinary_user.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "tokenizer/tokenizer.h"

namespace {

using tokens_t = std::vector<std::string>;

class file_tokenizer : public testing::Test {
protected:
    tokens_t loaded(const std::string& content) {
        tokenizer.load(folder.write("file", content).c_str());
        return tokenizer;
    }

    std::string saved(const tokens_t& tokens) {
        static_cast<tokens_t&>(tokenizer) = tokens;
        tokenizer.save_as(folder.path("saved").c_str());
        return folder.read("saved");
    }

    static std::ptrdiff_t open_files() {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    }

    test::temp_dir_t folder;
    ko::file_tokenizer_t tokenizer;
};

TEST_F(file_tokenizer, loads_the_lines_that_are_not_empty) {
    EXPECT_EQ(loaded("a\n\nb\n"), (tokens_t{"a", "b"}));
    EXPECT_EQ(loaded("\n\n a b\n"), tokens_t{" a b"});
}

TEST_F(file_tokenizer, needs_no_line_feed_at_the_end) {
    EXPECT_EQ(loaded("a\nb"), (tokens_t{"a", "b"}));
}

TEST_F(file_tokenizer, keeps_carriage_returns) {
    EXPECT_EQ(loaded("a\r\n\r\nb\r\n"), (tokens_t{"a\r", "\r", "b\r"}));
}

TEST_F(file_tokenizer, takes_in_lines_up_to_the_closing_quote) {
    EXPECT_EQ(loaded("\"a\n\nb\"\nc\n"), (tokens_t{"a\n\nb", "c"}));
    EXPECT_EQ(loaded("\"a\"b\nc\"d\n"), (tokens_t{"a", "b", "c\"d"}));
}

TEST_F(file_tokenizer, takes_in_the_last_line_feed_of_an_unterminated_quote) {
    EXPECT_EQ(loaded("a\n\"b\nc\n"), (tokens_t{"a", "b\nc\n"}));
    EXPECT_EQ(loaded("a\n\"b\nc"), (tokens_t{"a", "b\nc\n"}));
    EXPECT_EQ(loaded("\""), tokens_t{"\n"});
}

TEST_F(file_tokenizer, stops_at_a_zero_byte) {
    EXPECT_EQ(loaded(std::string("a\nb\0c\nd\n", 8)), (tokens_t{"a", "b"}));
}

TEST_F(file_tokenizer, loads_an_empty_file) {
    EXPECT_EQ(loaded(""), tokens_t{});
}

TEST_F(file_tokenizer, is_empty_after_loading_a_missing_file) {
    loaded("a\n");
    EXPECT_NO_THROW(tokenizer.load(folder.path("missing").c_str()));
    EXPECT_EQ(tokenizer, tokens_t{});
}

TEST_F(file_tokenizer, is_empty_after_loading_a_folder) {
    loaded("a\n");
    EXPECT_NO_THROW(tokenizer.load(folder.path().c_str()));
    EXPECT_EQ(tokenizer, tokens_t{});
}

TEST_F(file_tokenizer, is_empty_after_loading_what_must_not_be_read) {
    loaded("a\n");
    chmod(folder.path("file").c_str(), 0);
    const test::ordinary_user_t user(folder.path());
    EXPECT_NO_THROW(tokenizer.load(folder.path("file").c_str()));
    EXPECT_EQ(tokenizer, tokens_t{});
}

TEST_F(file_tokenizer, reads_a_fifo_to_its_end) {
    const std::string path = folder.path("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(path) << "a\n" << std::flush << "b\n"; });
    tokenizer.load(path.c_str());
    writer.join();
    EXPECT_EQ(tokenizer, (tokens_t{"a", "b"}));
}

TEST_F(file_tokenizer, leaves_a_file_alone_that_must_not_be_written) {
    loaded("a\n");
    chmod(folder.path("file").c_str(), 0444);
    const test::ordinary_user_t user(folder.path());
    tokenizer.push_back("b");
    EXPECT_NO_THROW(tokenizer.save());
    EXPECT_EQ(folder.read("file"), "a\n");
}

TEST_F(file_tokenizer, closes_what_it_opens) {
    const auto before = open_files();
    loaded("a\n");
    tokenizer.save();
    tokenizer.load(folder.path().c_str());
    tokenizer.save();
    EXPECT_EQ(open_files(), before);
}

TEST_F(file_tokenizer, writes_a_line_feed_after_every_token) {
    EXPECT_EQ(saved({"a", "b"}), "a\nb\n");
    EXPECT_EQ(saved({}), "");
    EXPECT_EQ(saved({"", "\r\xFF"}), "\n\r\xFF\n");
    EXPECT_EQ(saved({std::string("a\0b", 3)}), std::string("a\0b\n", 4));
}

TEST_F(file_tokenizer, saves_to_the_path_that_was_loaded_last) {
    loaded("a\n\nb\n");
    tokenizer.save_as(folder.path("other").c_str());
    tokenizer.push_back("c");
    tokenizer.save();
    EXPECT_EQ(folder.read("file"), "a\nb\nc\n");
    EXPECT_EQ(folder.read("other"), "a\nb\n");
}

TEST_F(file_tokenizer, saves_to_the_path_of_a_load_that_failed) {
    tokenizer.load(folder.path("new").c_str());
    tokenizer.push_back("a");
    tokenizer.save();
    EXPECT_EQ(folder.read("new"), "a\n");
}

TEST_F(file_tokenizer, truncates_the_file_it_writes) {
    folder.write("saved", "a long old content\n");
    EXPECT_EQ(saved({"a"}), "a\n");
}

TEST_F(file_tokenizer, splits_a_token_with_a_line_feed_by_saving_and_loading) {
    loaded("\"a\nb\"\n");
    EXPECT_EQ(tokenizer.size(), 1U);
    tokenizer.save();
    tokenizer.load(folder.path("file").c_str());
    EXPECT_EQ(tokenizer, (tokens_t{"a", "b"}));
}

TEST_F(file_tokenizer, raises_no_error_for_a_path_that_cannot_be_written) {
    tokenizer.push_back("a");
    EXPECT_NO_THROW(tokenizer.save());
    EXPECT_NO_THROW(tokenizer.save_as(folder.path("missing/file").c_str()));
    EXPECT_NO_THROW(tokenizer.save_as(folder.path().c_str()));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_NO_THROW(tokenizer.save_as((folder.write("file", "kept") + "/file").c_str()));
    EXPECT_EQ(folder.read("file"), "kept");
    EXPECT_EQ(tokenizer, tokens_t{"a"});
}

TEST_F(file_tokenizer, raises_no_error_on_a_full_device) {
    tokenizer.push_back(std::string(100000, 'x'));
    EXPECT_NO_THROW(tokenizer.save_as("/dev/full"));
    EXPECT_EQ(tokenizer.size(), 1U);
}

TEST_F(file_tokenizer, loads_by_a_path_that_is_a_token_of_its_own) {
    tokenizer.push_back(folder.write("list", "a\nb\n"));
    tokenizer.load(tokenizer.front().c_str());
    EXPECT_EQ(tokenizer, (tokens_t{"a", "b"}));
}

TEST_F(file_tokenizer, reads_and_writes_large_files) {
    std::string content;
    for (int i = 0; i < 200000; ++i) {
        content += std::to_string(i) + "\n";
    }
    EXPECT_EQ(loaded(content).size(), 200000U);
    tokenizer.save();
    EXPECT_TRUE(folder.read("file") == content);
}

TEST_F(file_tokenizer, refuses_a_null_path) {
    loaded("a\n");
    EXPECT_THROWS(tokenizer.load(nullptr), "ko::file_tokenizer_t::load() -- path is null");
    EXPECT_THROWS(tokenizer.save_as(nullptr), "ko::file_tokenizer_t::save_as() -- path is null");
    EXPECT_EQ(tokenizer, tokens_t{"a"});
}

TEST_F(file_tokenizer, tells_whether_a_file_was_read) {
    EXPECT_TRUE(tokenizer.load(folder.write("file", "a\n").c_str()));
    EXPECT_TRUE(tokenizer.load(folder.write("empty", "").c_str()));
    EXPECT_FALSE(tokenizer.load(folder.path("missing").c_str()));
}

TEST_F(file_tokenizer, tells_an_error_of_reading_from_the_end_of_a_file) {
    // A folder can be opened, and its first byte cannot be read.
    EXPECT_FALSE(tokenizer.load(folder.path().c_str()));
}

TEST_F(file_tokenizer, tells_whether_a_file_was_written) {
    loaded("a\n");
    EXPECT_TRUE(tokenizer.save());
    EXPECT_TRUE(tokenizer.save_as(folder.path("other").c_str()));
    EXPECT_FALSE(tokenizer.save_as(folder.path("missing/file").c_str()));
    EXPECT_FALSE(ko::file_tokenizer_t().save());
}

TEST_F(file_tokenizer, tells_that_a_device_is_full) {
    for (const std::size_t size : {std::size_t(1), std::size_t(100000)}) {
        tokenizer.assign(1, std::string(size, 'x'));
        EXPECT_FALSE(tokenizer.save_as("/dev/full")) << size;
    }
}

} // namespace

// Makes every call to the system fail in turn, and kills the process before every one.

#include "lxml/file_replacement.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <vector>

#include "lxml/lxml.h"
#include "support/allocations.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"
#include "support/watched_calls.h"

namespace {

using namespace ko::lxml;
using test::watched_calls_t;

/// Fails at one call, with a certain error.
class failing_calls_t : public watched_calls_t {
public:
    failing_calls_t(std::size_t number, int code, bool links = true) : last(number), error(code) {
        has_links = links;
    }

protected:
    bool may(const std::string&) override {
        errno = error;
        return made.size() != last;
    }

private:
    std::size_t last;
    int error;
};

/// Kills the process before one call.
class deadly_calls_t : public watched_calls_t {
public:
    explicit deadly_calls_t(std::size_t number, bool links = true) : last(number) {
        has_links = links;
    }

protected:
    bool may(const std::string&) override {
        if (made.size() == last) {
            raise(SIGKILL);
        }
        return true;
    }

private:
    std::size_t last;
};

const std::string old_content = "an old content";

/// How the old file is kept until the new one has its place.
struct way_t {
    bool has_links;
    std::size_t calls;                 ///< those of a whole replacement
    std::vector<std::size_t> unneeded; ///< those that may fail
};

// Owner, link, removing of the second name or copy, closing of what was only read.
const way_t ways[] = {{true, 14, {6, 10, 13, 14}}, {false, 24, {6, 10, 16, 20, 23, 24}}};

class file_replacement : public testing::Test {
protected:
    file_replacement() {
        tree.doc.root->text.assign(70000, 'x');
        std::ostringstream out;
        tree.doc.write(out);
        new_content = out.str();
    }

    void replace(file_calls_t& calls) {
        file_replacement_t replacement(path, calls);
        tree.doc.write(replacement.stream());
        replacement.commit();
    }

    /// @return false when that failed as it should
    bool try_to_replace(file_calls_t& calls) {
        try {
            replace(calls);
            return true;
        } catch (const ko::exception_t& e) {
            const std::string message = e.what();
            EXPECT_TRUE(message == "error opening file " + path ||
                        message == "error writing file " + path)
                << message;
            return false;
        }
    }

    /// Runs a replacement in a process of its own. @return whether it was killed
    bool is_killed_before(std::size_t number, bool has_links = true) {
        const pid_t child = fork();
        if (child == 0) {
            deadly_calls_t calls(number, has_links);
            replace(calls);
            _exit(0);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

    std::ptrdiff_t file_count() const {
        const std::filesystem::directory_iterator files(dir.path());
        return std::distance(begin(files), end(files));
    }

    const test::temp_dir_t dir;
    test::loaded_t tree{"<a/>"};
    const std::string path = dir.path("a.xml");
    std::string new_content;
};

using calls_t = std::vector<std::string>;

TEST_F(file_replacement, makes_its_calls_in_order) {
    dir.write("a.xml", old_content);
    watched_calls_t calls;
    replace(calls);
    EXPECT_EQ(calls.made, (calls_t{"open_folder", "create", "write", "write", "write",
                                   "take_owner", "set_mode", "flush", "close", "link", "rename",
                                   "flush", "remove", "close"}));
}

TEST_F(file_replacement, needs_fewer_calls_for_a_new_file) {
    watched_calls_t calls;
    replace(calls);
    EXPECT_EQ(calls.made, (calls_t{"open_folder", "create", "write", "write", "write", "flush",
                                   "close", "rename", "flush", "close"}));
}

TEST_F(file_replacement, copies_the_old_file_where_it_gets_no_second_name) {
    dir.write("a.xml", old_content);
    watched_calls_t calls;
    calls.has_links = false;
    replace(calls);
    EXPECT_EQ(calls.made,
              (calls_t{"open_folder", "create", "write",  "write",      "write",    "take_owner",
                       "set_mode",    "flush",  "close",  "link",       "create",   "open",
                       "read",        "write",  "read",   "take_owner", "set_mode", "flush",
                       "close",       "close",  "rename", "flush",      "remove",   "close"}));
    EXPECT_EQ(dir.read("a.xml"), new_content);
    EXPECT_EQ(file_count(), 1);
}

TEST_F(file_replacement, that_fails_at_any_call_leaves_the_old_file_and_nothing_else) {
    for (const way_t& way : ways) {
        for (std::size_t number = 1; number <= way.calls; ++number) {
            dir.write("a.xml", old_content);
            failing_calls_t calls(number, EIO, way.has_links);
            const bool is_done = try_to_replace(calls);
            const std::string& call = calls.made[number - 1];
            EXPECT_EQ(is_done, std::count(way.unneeded.begin(), way.unneeded.end(), number) != 0)
                << number << call;
            EXPECT_EQ(dir.read("a.xml"), is_done ? new_content : old_content) << number << call;
            // Where the system does not remove a file, it stays.
            EXPECT_EQ(file_count(), call == "remove" ? 2 : 1) << number << call;
            if (call == "remove") {
                std::filesystem::remove_all(dir.path());
                std::filesystem::create_directory(dir.path());
            }
        }
    }
}

TEST_F(file_replacement, that_fails_says_the_same_for_every_error) {
    dir.write("a.xml", old_content);
    for (const int error : {EIO, ENOSPC, EACCES, EDQUOT}) {
        failing_calls_t opening(2, error);
        EXPECT_THROWS(replace(opening), "error opening file " + path);
        failing_calls_t writing(3, error);
        EXPECT_THROWS(replace(writing), "error writing file " + path);
    }
    EXPECT_EQ(dir.read("a.xml"), old_content);
}

TEST_F(file_replacement, gives_back_the_old_file_with_its_mode) {
    for (const way_t& way : ways) {
        chmod(dir.write("a.xml", old_content).c_str(), 0640);
        failing_calls_t calls(way.calls - 2, EIO, way.has_links);
        EXPECT_THROWS(replace(calls), "error writing file " + path);
        EXPECT_EQ(dir.read("a.xml"), old_content);
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
    }
}

TEST_F(file_replacement, that_fails_at_any_call_leaves_no_file_where_there_was_none) {
    for (std::size_t number = 1; number != 10; ++number) {
        failing_calls_t calls(number, EIO);
        EXPECT_FALSE(try_to_replace(calls)) << number;
        EXPECT_EQ(file_count(), 0) << number;
    }
    failing_calls_t calls(10, EIO);
    EXPECT_TRUE(try_to_replace(calls)) << "closing the folder does not matter";
}

TEST_F(file_replacement, that_is_killed_leaves_the_old_file_or_the_new_one) {
    for (const way_t& way : ways) {
        for (std::size_t number = 1; number <= way.calls; ++number) {
            dir.write("a.xml", old_content);
            EXPECT_TRUE(is_killed_before(number, way.has_links)) << number;
            const bool is_renamed = number > way.calls - 3;
            EXPECT_EQ(dir.read("a.xml"), is_renamed ? new_content : old_content) << number;
        }
        dir.write("a.xml", old_content);
        EXPECT_FALSE(is_killed_before(way.calls + 1, way.has_links));
    }
}

TEST_F(file_replacement, does_not_mind_what_was_left_by_those_that_were_killed) {
    dir.write("a.xml", old_content);
    for (const way_t& way : ways) {
        for (std::size_t number = 1; number != way.calls - 2; ++number) {
            EXPECT_TRUE(is_killed_before(number, way.has_links));
        }
        EXPECT_EQ(dir.read("a.xml"), old_content);
    }
    EXPECT_GT(file_count(), 19);
    watched_calls_t calls;
    replace(calls);
    EXPECT_EQ(dir.read("a.xml"), new_content);
}

/// A system whose calls are interrupted and write little at a time.
class slow_calls_t : public file_calls_t {
public:
    ssize_t write(int file, const char* bytes, std::size_t size) override {
        return is_interrupted()
                   ? -1
                   : file_calls_t::write(file, bytes, std::min<std::size_t>(size, 7));
    }
    int flush(int file) override { return is_interrupted() ? -1 : file_calls_t::flush(file); }

private:
    bool is_interrupted() {
        errno = EINTR;
        return ++count % 2 != 0;
    }

    unsigned count = 0;
};

TEST_F(file_replacement, goes_on_after_a_signal_and_a_short_write) {
    slow_calls_t calls;
    replace(calls);
    EXPECT_EQ(dir.read("a.xml"), new_content);
}

TEST_F(file_replacement, takes_single_characters) {
    file_calls_t calls;
    file_replacement_t replacement(path, calls);
    replacement.stream().put('a').put('\xFF');
    replacement.commit();
    EXPECT_EQ(dir.read("a.xml"), "a\xFF");
}

TEST_F(file_replacement, that_cannot_take_a_single_character_fails) {
    dir.write("a.xml", old_content);
    class full_t : public file_calls_t {
        ssize_t write(int, const char*, std::size_t) override {
            errno = ENOSPC;
            return -1;
        }
    } full;
    file_replacement_t replacement(path, full);
    replacement.stream().put('a');
    EXPECT_THROWS(replacement.commit(), "error writing file " + path);
    EXPECT_EQ(dir.read("a.xml"), old_content);
}

/// Closes files, and says each time that a signal came.
class interrupted_close_t : public file_calls_t {
    int close(int file) override {
        file_calls_t::close(file);
        errno = EINTR;
        return -1;
    }
};

TEST_F(file_replacement, takes_a_file_for_closed_that_a_signal_came_upon) {
    interrupted_close_t calls;
    replace(calls);
    EXPECT_EQ(dir.read("a.xml"), new_content);
}

/// A file system that can neither flush folders nor link files.
class plain_calls_t : public file_calls_t {
public:
    explicit plain_calls_t(int code, bool links = false) : error(code), has_links(links) {}
    int open_folder(const std::string& path) override {
        return folder = file_calls_t::open_folder(path);
    }
    int flush(int file) override {
        errno = error;
        return file == folder ? -1 : file_calls_t::flush(file);
    }
    int link(const std::string& from, const std::string& to) override {
        errno = EPERM;
        return has_links ? file_calls_t::link(from, to) : -1;
    }

private:
    const int error; ///< of a folder that cannot be flushed
    const bool has_links;
    int folder = -1;
};

TEST_F(file_replacement, needs_neither_links_nor_folders_that_can_be_flushed) {
    for (const int error : {EINVAL, ENOTSUP}) {
        dir.write("a.xml", old_content);
        plain_calls_t calls(error);
        replace(calls);
        EXPECT_EQ(dir.read("a.xml"), new_content);
        EXPECT_EQ(file_count(), 1);
    }
}

TEST_F(file_replacement, without_links_that_cannot_flush_the_folder_leaves_the_old_file) {
    dir.write("a.xml", old_content);
    plain_calls_t calls(EIO);
    EXPECT_THROWS(replace(calls), "error writing file " + path);
    EXPECT_EQ(dir.read("a.xml"), old_content);
    EXPECT_EQ(file_count(), 1);
}

TEST_F(file_replacement, copies_a_large_file_in_spite_of_signals) {
    const std::string large(10001, 'z');
    dir.write("a.xml", large);
    class interrupted_t : public plain_calls_t {
    public:
        interrupted_t() : plain_calls_t(EIO) {}
        ssize_t read(int file, char* bytes, std::size_t size) override {
            errno = EINTR;
            return ++count % 2 != 0 ? -1 : file_calls_t::read(file, bytes, size);
        }

    private:
        unsigned count = 0;
    } calls;
    EXPECT_THROWS(replace(calls), "error writing file " + path);
    EXPECT_EQ(dir.read("a.xml"), large);
}

/// A file system in which all fails once a file has been renamed.
class lost_calls_t : public plain_calls_t {
public:
    lost_calls_t() : plain_calls_t(EIO, true) {}
    int rename(const std::string& from, const std::string& to) override {
        return ++renamed == 1 ? file_calls_t::rename(from, to) : -1;
    }
    int remove(const std::string&) override { return -1; }

private:
    int renamed = 0;
};

TEST_F(file_replacement, that_cannot_be_undone_leaves_the_new_file) {
    for (const int files : {1, 2}) { // the second time there is an old one, beside it then
        lost_calls_t calls;
        EXPECT_THROWS(replace(calls), "error writing file " + path);
        EXPECT_EQ(dir.read("a.xml"), new_content);
        EXPECT_EQ(file_count(), files);
    }
}

/// A folder in which the first names are taken.
class crowded_calls_t : public file_calls_t {
public:
    explicit crowded_calls_t(int number) : left(number) {}

    int create(const std::string& path, mode_t mode) override {
        errno = EEXIST;
        return left-- > 0 ? -1 : file_calls_t::create(path, mode);
    }

private:
    int left;
};

TEST_F(file_replacement, tries_another_name_for_one_that_is_taken) {
    crowded_calls_t crowded(99);
    replace(crowded);
    EXPECT_EQ(dir.read("a.xml"), new_content);
    crowded_calls_t full(100);
    EXPECT_THROWS(replace(full), "error opening file " + path);
}

TEST_F(file_replacement, shows_a_secret_to_nobody_while_it_is_written) {
    chmod(dir.write("a.xml", old_content).c_str(), 0600);
    file_calls_t calls;
    const file_replacement_t replacement(path, calls);
    for (const auto& entry : std::filesystem::directory_iterator(dir.path())) {
        EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
    }
}

TEST_F(file_replacement, without_memory_leaves_the_old_file) {
    dir.write("a.xml", old_content);
    file_calls_t calls;
    EXPECT_GT(test::fail_each("save_atomically", [&] { tree.doc.save_atomically(path); }), 5);
    EXPECT_EQ(dir.read("a.xml"), new_content);
    EXPECT_EQ(file_count(), 1);
}

} // namespace

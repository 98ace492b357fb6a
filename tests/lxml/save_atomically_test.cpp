#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "lxml/lxml.h"
#include "support/ordinary_user.h"
#include "support/temp_dir.h"
#include "support/throws.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;

class save_atomically : public testing::Test {
protected:
    void save(const std::string& path) { tree.doc.save_atomically(path, {false, -1}); }

    void expect_failure(const char* action, const std::string& path) {
        EXPECT_THROWS(save(path), "error " + std::string(action) + " file " + path);
    }

    /// The names in the folder.
    std::string listed() const {
        std::string names;
        for (const auto& entry : std::filesystem::directory_iterator(dir.path())) {
            names += " " + entry.path().filename().string();
        }
        return names;
    }

    static mode_t mode_of(const std::string& path) {
        struct stat status = {};
        return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    const test::temp_dir_t dir;
    test::loaded_t tree{"<a>\xC3\xA9</a>"};
};

TEST_F(save_atomically, makes_a_file) {
    save(dir.path("a.xml"));
    EXPECT_EQ(dir.read("a.xml"), "<a>\xC3\xA9</a>");
    EXPECT_EQ(listed(), " a.xml");
}

TEST_F(save_atomically, writes_what_write_writes) {
    std::ostringstream out;
    tree.doc.write(out);
    tree.doc.save_atomically(dir.path("a.xml"));
    EXPECT_EQ(dir.read("a.xml"), out.str());
}

TEST_F(save_atomically, replaces_a_file) {
    save(dir.write("a.xml", "a long old content"));
    EXPECT_EQ(dir.read("a.xml"), "<a>\xC3\xA9</a>");
    EXPECT_EQ(listed(), " a.xml");
}

TEST_F(save_atomically, keeps_the_mode) {
    for (const mode_t mode : {0600U, 0640U, 0755U}) {
        const std::string path = dir.write("a.xml", "");
        chmod(path.c_str(), mode);
        save(path);
        EXPECT_EQ(mode_of(path), mode);
    }
}

TEST_F(save_atomically, gives_a_new_file_the_mode_of_new_files) {
    const mode_t before = umask(027);
    save(dir.path("a.xml"));
    umask(before);
    EXPECT_EQ(mode_of(dir.path("a.xml")), 0640u);
}

TEST_F(save_atomically, keeps_the_owner_where_it_may) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "for the superuser";
    }
    const std::string path = dir.write("a.xml", "");
    ASSERT_EQ(chown(path.c_str(), 12345, 23456), 0);
    save(path);
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345u);
    EXPECT_EQ(status.st_gid, 23456u);
}

TEST_F(save_atomically, follows_a_symbolic_link) {
    dir.write("below/a.xml", "old");
    std::filesystem::create_symlink("below/a.xml", dir.path("link"));
    save(dir.path("link"));
    EXPECT_TRUE(std::filesystem::is_symlink(dir.path("link")));
    EXPECT_EQ(dir.read("below/a.xml"), "<a>\xC3\xA9</a>");
}

TEST_F(save_atomically, takes_a_path_without_a_folder) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    save("a.xml");
    std::filesystem::current_path(before);
    EXPECT_EQ(listed(), " a.xml");
}

TEST_F(save_atomically, takes_the_longest_name) {
    const std::string name(255, 'x');
    save(dir.path(name));
    EXPECT_EQ(listed(), " " + name);
}

TEST_F(save_atomically, of_what_cannot_be_written_leaves_the_old_file) {
    tree.doc.root->text = "\1";
    EXPECT_THROWS(save(dir.write("a.xml", "old")),
                  "document_t::write() -- the text of 'a' cannot be written as XML");
    EXPECT_EQ(dir.read("a.xml"), "old");
    EXPECT_EQ(listed(), " a.xml");
}

TEST_F(save_atomically, to_no_place_for_a_file_is_an_error) {
    const std::string folder = dir.make_dir("folder");
    std::filesystem::create_symlink("nowhere", dir.path("link"));
    for (const std::string& path :
         {std::string(), dir.path(), folder + "/", dir.path("missing/a.xml"), dir.path("new/"),
          dir.write("a.xml", "old") + "/b.xml", dir.path("link"), std::string("/dev/full"),
          dir.path(std::string(256, 'x'))}) {
        expect_failure("opening", path);
    }
    EXPECT_EQ(dir.read("a.xml"), "old");
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(save_atomically, to_a_file_that_must_not_be_written_is_an_error) {
    const std::string path = dir.write("a.xml", "old");
    chmod(path.c_str(), 0444);
    chmod(dir.path().c_str(), 0777);
    const test::ordinary_user_t user(dir.path());
    expect_failure("opening", path);
    EXPECT_EQ(dir.read("a.xml"), "old");
}

TEST_F(save_atomically, in_a_folder_that_must_not_be_written_is_an_error) {
    const std::string path = dir.write("a.xml", "old");
    chmod(path.c_str(), 0666);
    const test::ordinary_user_t user(dir.path());
    expect_failure("opening", path);
    EXPECT_EQ(dir.read("a.xml"), "old");
}

/// Lets no file grow beyond a size.
class file_size_limit_t {
public:
    explicit file_size_limit_t(rlim_t size) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit = {size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    file_size_limit_t(const file_size_limit_t&) = delete;
    file_size_limit_t& operator=(const file_size_limit_t&) = delete;
    ~file_size_limit_t() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    void (*handler)(int);
    rlimit before = {};
};

TEST_F(save_atomically, without_room_for_the_file_is_an_error_and_leaves_the_old_one) {
    const std::string path = dir.write("a.xml", "old");
    tree.doc.root->text.assign(100000, 'x');
    {
        const file_size_limit_t limit(50000);
        expect_failure("writing", path);
    }
    EXPECT_EQ(dir.read("a.xml"), "old");
    EXPECT_EQ(listed(), " a.xml");
}

} // namespace

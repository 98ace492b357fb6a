#include "xml_preprocessor/find_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/ordinary_user.h"
#include "support/temp_dir.h"

namespace {

class find_file : public testing::Test {
protected:
    /// What is found, or "-".
    std::string find(const std::string& name, const std::list<std::string>& dirs) {
        std::string found = "-";
        const bool result = ko::find_file(name, dirs, found);
        EXPECT_EQ(result, found != "-");
        return found;
    }

    test::temp_dir_t dir;
};

TEST_F(find_file, takes_the_first_candidate_that_can_be_read) {
    dir.write("b/f.xml", "");
    dir.write("c/f.xml", "");
    EXPECT_EQ(find("f.xml", {dir.path("a/"), dir.path("b/"), dir.path("c/")}),
              dir.path("b/f.xml"));
}

TEST_F(find_file, puts_no_separator_between_directory_and_name) {
    dir.write("b/f.xml", "");
    EXPECT_EQ(find("f.xml", {dir.path("b")}), "-");
    EXPECT_EQ(find(".xml", {dir.path("b/f")}), dir.path("b/f.xml"));
}

TEST_F(find_file, leaves_the_path_alone_when_there_is_none) {
    EXPECT_EQ(find("f.xml", {}), "-");
    EXPECT_EQ(find("f.xml", {dir.path("a/")}), "-");
}

TEST_F(find_file, tries_the_name_alone_only_for_an_empty_entry) {
    const std::string file = dir.write("f.xml", "");
    EXPECT_EQ(find(file, {}), "-");
    EXPECT_EQ(find(file, {"/nowhere"}), "-");
    EXPECT_EQ(find(file, {"/nowhere", ""}), file);
}

TEST_F(find_file, takes_a_backslash_for_a_character_like_any_other) {
    dir.write("conf\\a.xml", "");
    EXPECT_EQ(find("a.xml", {dir.path("conf\\")}), dir.path("conf\\a.xml"));
}

TEST_F(find_file, passes_over_a_file_that_cannot_be_read) {
    const std::string file = dir.write("a/f.xml", "");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    dir.write("b/f.xml", "");
    const test::ordinary_user_t user(dir.path());
    EXPECT_EQ(find("f.xml", {dir.path("a/"), dir.path("b/")}), dir.path("b/f.xml"));
}

} // namespace

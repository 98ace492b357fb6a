// What the comments of the public headers have to hold. Their examples are run by
// program_test.cpp.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "docs/sources.h"
#include "support/temp_dir.h"

namespace {

std::string header_read(const std::filesystem::path& path) {
    return test::read_file(path.string());
}

TEST(header, of_each_part_shows_an_example) {
    unsigned parts = 0;
    for (const auto& entry : std::filesystem::directory_iterator(docs::top_folder() / "src")) {
        const std::string part = entry.path().filename().string();
        if (entry.is_directory()) {
            EXPECT_NE(header_read(entry.path() / (part + ".h")).find("/// @code"),
                      std::string::npos)
                << part;
            ++parts;
        }
    }
    EXPECT_EQ(parts, 10U);
}

// A class that derives from another public one has what is said there.
TEST(header, says_of_each_class_what_it_owns_and_which_threads_may_use_it) {
    static const std::regex opening(
        "((?:///.*\n)+)class KO_API (\\w+)(?: : public std::[^{]*)? \\{");
    unsigned classes = 0;
    for (const std::filesystem::path& path : docs::sources_in("src")) {
        const std::string text = header_read(path);
        for (std::sregex_iterator found(text.begin(), text.end(), opening), end; found != end;
             ++found) {
            const std::string comment = (*found)[1];
            EXPECT_NE(comment.find("/// @par Owns\n"), std::string::npos) << (*found)[2];
            EXPECT_NE(comment.find("/// @par Threads\n"), std::string::npos) << (*found)[2];
            ++classes;
        }
    }
    EXPECT_GT(classes, 15U);
}

} // namespace

// The files that the pages for contributors name are there.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "support/temp_dir.h"

namespace {

class page_for_contributors : public testing::TestWithParam<const char*> {};

TEST_P(page_for_contributors, names_files_that_are_there) {
    static const std::regex named("`((src|tests|docs|scripts|schema)/[\\w./-]*)`");
    const std::filesystem::path top = std::filesystem::path(KOBASE_TEST_DATA).parent_path();
    const std::string page = test::read_file((top / GetParam()).string());
    unsigned count = 0;
    for (std::sregex_iterator found(page.begin(), page.end(), named), end; found != end;
         ++found) {
        const std::string path = (*found)[1].str();
        EXPECT_TRUE(std::filesystem::exists(top / path)) << path;
        ++count;
    }
    EXPECT_GT(count, 5U);
}

INSTANTIATE_TEST_SUITE_P(docs, page_for_contributors,
                         testing::Values("CONTRIBUTING.md", "docs/internals.md"),
                         [](const auto& page) {
                             return page.index == 0 ? "contributing" : "internals";
                         });

} // namespace

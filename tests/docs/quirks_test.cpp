// The page of quirks names for each the test that holds it.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "support/temp_dir.h"

namespace {

const std::filesystem::path tests_folder = KOBASE_TEST_DATA;

// Adds "suite.name" of every test in a source.
void add_names(const std::string& source, std::set<std::string>& names) {
    static const std::regex opening("\\bTEST(_F|_P)?\\(");
    static const std::regex arguments("\\s*(\\w+),\\s*(\\w+)\\)");
    for (std::sregex_iterator found(source.begin(), source.end(), opening), end; found != end;
         ++found) {
        std::smatch name;
        const auto behind = (*found)[0].second;
        if (std::regex_search(behind, source.end(), name, arguments,
                              std::regex_constants::match_continuous)) {
            names.insert(name[1].str() + "." + name[2].str());
        }
    }
}

std::set<std::string> names_of_tests() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(tests_folder)) {
        if (entry.path().extension() == ".cpp") {
            add_names(test::read_file(entry.path().string()), names);
        }
    }
    return names;
}

TEST(quirks, are_each_held_by_the_test_beside_them) {
    const std::set<std::string> tests = names_of_tests();
    std::istringstream page(
        test::read_file((tests_folder.parent_path() / "docs/quirks.md").string()));
    unsigned rows = 0;
    for (std::string line; std::getline(page, line);) {
        const std::size_t last = line.rfind(" | `");
        if (line.compare(0, 2, "| ") == 0 && last != std::string::npos) {
            const std::string name = line.substr(last + 4, line.size() - last - 7);
            EXPECT_EQ(tests.count(name), 1U) << line;
            ++rows;
        }
    }
    EXPECT_GT(rows, 60U);
}

} // namespace

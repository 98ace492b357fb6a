// The page of quirks names for each the test that holds it, and the comments of the sources name
// the quirk that they are about.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "docs/sources.h"
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

struct quirk_t {
    std::string name;
    std::string test;
};

// The rows "| name | behaviour | `suite.test` |" of the page.
std::vector<quirk_t> quirks_of_the_page() {
    static const std::regex row("\\| (.+?) \\| .* \\| `([\\w.]+)` \\|");
    std::istringstream page(test::read_file((docs::top_folder() / "docs/quirks.md").string()));
    std::vector<quirk_t> quirks;
    std::smatch cells;
    for (std::string line; std::getline(page, line);) {
        if (std::regex_match(line, cells, row)) {
            quirks.push_back({cells[1], cells[2]});
        }
    }
    return quirks;
}

// A source with the lines of each comment joined.
std::string source_read(const std::filesystem::path& path) {
    static const std::regex next_line("\n *///?<? *");
    return std::regex_replace(test::read_file(path.string()), next_line, " ");
}

// The texts behind each "callers rely on", as far as a quirk can stand there.
std::vector<std::string> reliances_of(const std::string& source) {
    static const std::string words = "allers rely on";
    std::vector<std::string> behind;
    for (std::size_t at = 0; (at = source.find(words, at)) != std::string::npos;) {
        at += words.size();
        behind.push_back(source.substr(at, source.find(')', at) - at));
    }
    return behind;
}

TEST(quirks, are_each_held_by_the_test_beside_them) {
    const std::set<std::string> tests = names_of_tests();
    const std::vector<quirk_t> quirks = quirks_of_the_page();
    for (const quirk_t& quirk : quirks) {
        EXPECT_EQ(tests.count(quirk.test), 1U) << quirk.name << ": " << quirk.test;
    }
    EXPECT_GT(quirks.size(), 60U);
}

TEST(quirks, have_names_of_their_own) {
    std::set<std::string> names;
    for (const quirk_t& quirk : quirks_of_the_page()) {
        EXPECT_TRUE(names.insert(quirk.name).second) << quirk.name;
    }
}

TEST(quirks, are_named_where_a_comment_says_that_callers_rely_on_something) {
    static const std::regex named("[^()]{0,50}\\(quirks? \"([^\"]+)\"(?:, \"([^\"]+)\")?");
    std::set<std::string> names = {""};
    for (const quirk_t& quirk : quirks_of_the_page()) {
        names.insert(quirk.name);
    }
    unsigned comments = 0;
    for (const std::filesystem::path& path : docs::sources_in("src")) {
        for (const std::string& text : reliances_of(source_read(path))) {
            std::smatch quirk;
            ASSERT_TRUE(std::regex_match(text, quirk, named)) << path << ": " << text;
            EXPECT_EQ(names.count(quirk[1]), 1U) << path << ": " << quirk[1];
            EXPECT_EQ(names.count(quirk[2]), 1U) << path << ": " << quirk[2];
            ++comments;
        }
    }
    EXPECT_GT(comments, 25U);
}

} // namespace

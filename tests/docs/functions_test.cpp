// The pages of the language know every built-in function.

#include <gtest/gtest.h>

#include <string>

#include "algebra/algebra.h"
#include "docs/sources.h"
#include "support/temp_dir.h"

namespace {

std::string page_text(const char* name) {
    return test::read_file((docs::top_folder() / "docs" / name).string());
}

TEST(functions, stand_in_the_tour_and_in_the_reference_of_the_language) {
    const std::string tour = page_text("expressions.md");
    const std::string reference = page_text("language.md");
    for (const std::string& name : ko::alg::algebra_t().function_names()) {
        EXPECT_NE(tour.find("`" + name + "("), std::string::npos) << name;
        EXPECT_NE(reference.find("`" + name + "("), std::string::npos) << name;
    }
}

TEST(functions, stand_among_the_names_that_are_taken) {
    const std::string page = page_text("surprises.md");
    const std::string names = page.substr(page.find("The taken names:"));
    for (const std::string& name : ko::alg::algebra_t().function_names()) {
        EXPECT_NE(names.find("`" + name + "`"), std::string::npos) << name;
    }
}

} // namespace

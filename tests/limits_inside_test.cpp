#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "algebra/bounds.h"
#include "expat_parser/limits.h"
#include "lxpath/path_parser.h"
#include "xml_preprocessor/limits.h"

namespace {

struct limit_t {
    const char* constant;
    unsigned value;
    const char* message;              ///< before the number
    const char* end = " levels deep"; ///< after the number
};

const limit_t limits[] = {
    {"limits_t::nesting", ko::alg::limits_t().nesting, "script function 'f' nested more than "},
    {"filter_depth_max", ko::lxml::filter_depth_max, "path filters nested more than "},
    {"insert_depth_max", ko::xpp::insert_depth_max, "insert nested more than "},
    {"include_depth_max", ko::xpp::include_depth_max, "include nested more than "},
    {"plugin_depth_max", ko::xpp::plugin_depth_max, "plugin nested more than "},
    {"entity_references_max", ko::xml::entity_references_max, "more than ",
     " entities that refer to entities"},
};

/// The row of the manual's table that begins with a constant.
std::string row_of(const std::string& constant) {
    std::ifstream file(KOBASE_TEST_DATA "/../docs/limits.md");
    std::string line;
    while (std::getline(file, line)) {
        if (line.find("| `" + constant + "` |") != std::string::npos) {
            return line;
        }
    }
    return "no row";
}

TEST(limits, are_those_of_the_manual) {
    for (const limit_t& limit : limits) {
        const std::string value = std::to_string(limit.value);
        const std::string row = row_of(limit.constant);
        EXPECT_NE(row.find("| " + value + " |"), std::string::npos) << row;
        EXPECT_NE(row.find(limit.message + value + limit.end), std::string::npos) << row;
    }
}

} // namespace

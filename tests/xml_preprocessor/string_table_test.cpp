#include "xml_preprocessor/string_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "support/throws.h"

namespace {

using ko::lxml::atom_table_t;
using ko::xpp::string_table_t;

const char* const keywords[] = {"condition",  "case",   "default",    "define", "evaluate",
                                "expression", "file",   "first",      "for",    "if",
                                "include",    "index",  "initialize", "insert", "last",
                                "name",       "plugin", "pragma",     "repeat", "searchpath",
                                "specify",    "switch", "update",     "values", ""};

/// The record as the 27 numbers that it is.
std::vector<int> numbers(const string_table_t& table) {
    static_assert(sizeof(string_table_t) == 27 * sizeof(int), "27 atoms and nothing else");
    std::vector<int> result(27);
    std::memcpy(result.data(), &table, sizeof table);
    return result;
}

TEST(string_table, holds_the_namespaces_and_the_keywords_in_order) {
    atom_table_t atoms;
    string_table_t table;
    table.init(&atoms, "urn:d", "urn:v");
    std::vector<int> expected = {atoms.find("urn:d"), atoms.find("urn:v")};
    for (const char* keyword : keywords) {
        expected.push_back(atoms.find(keyword));
    }
    EXPECT_EQ(numbers(table), expected);
    EXPECT_EQ(table.empty, 0);
}

TEST(string_table, adds_the_texts_in_order_to_a_new_table) {
    atom_table_t atoms;
    string_table_t table;
    table.init(&atoms, "urn:d", "urn:v");
    std::vector<int> expected(27);
    for (int i = 0; i < 26; ++i) {
        expected[static_cast<std::size_t>(i)] = i + 1;
    }
    EXPECT_EQ(numbers(table), expected);
}

TEST(string_table, takes_the_atoms_that_are_already_there) {
    atom_table_t atoms;
    const int known = atoms.get("values");
    string_table_t table;
    table.init(&atoms, "urn:d", "urn:v");
    EXPECT_EQ(table.values, known);
}

TEST(string_table, filled_twice_has_the_same_numbers_and_adds_nothing) {
    atom_table_t atoms;
    string_table_t first;
    first.init(&atoms, "urn:d", "urn:v");
    string_table_t second;
    second.init(&atoms, "urn:d", "urn:v");
    EXPECT_EQ(numbers(first), numbers(second));
    EXPECT_EQ(atoms.get("new"), 27);
}

TEST(string_table, refuses_null) {
    string_table_t table;
    EXPECT_THROWS(table.init(nullptr, "urn:d", "urn:v"),
                  "string_table_t::init() -- atom table is null");
}

} // namespace

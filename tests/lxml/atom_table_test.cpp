#include "lxml/lxml.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using ko::lxml::atom_table_t;

TEST(atom_table, begins_with_the_empty_string) {
    atom_table_t table;
    EXPECT_EQ(table.get(""), 0);
    EXPECT_EQ(table.get("first"), 1);
    EXPECT_EQ(table.get("second"), 2);
}

TEST(atom_table, gives_a_known_string_its_old_id) {
    atom_table_t table;
    EXPECT_EQ(table.get("a"), 1);
    EXPECT_EQ(table.get("b"), 2);
    EXPECT_EQ(table.get("a"), 1);
    EXPECT_EQ(table.get("c"), 3);
}

TEST(atom_table, tells_strings_apart_by_all_their_bytes) {
    atom_table_t table;
    EXPECT_EQ(table.get("a"), 1);
    EXPECT_EQ(table.get("A"), 2);
    EXPECT_EQ(table.get(std::string("a\0", 2)), 3);
    EXPECT_EQ(table.get("\xC3\xA4"), 4);
    EXPECT_EQ(table.text_get(3), std::string("a\0", 2));
}

TEST(atom_table, finds_without_adding) {
    atom_table_t table;
    EXPECT_EQ(table.find("a"), -1);
    EXPECT_EQ(table.find("a"), -1);
    EXPECT_EQ(table.find(""), 0);
    EXPECT_EQ(table.get("b"), 1);
    EXPECT_EQ(table.find("b"), 1);
}

TEST(atom_table, has_the_empty_text_for_an_unknown_id) {
    atom_table_t table;
    table.get("a");
    EXPECT_EQ(table.text_get(1), "a");
    for (const int id : {0, 2, 3, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(table.text_get(id), "") << id;
    }
}

TEST(atom_table, keeps_its_texts_where_they_are) {
    atom_table_t table;
    const std::string& text = table.text_get(table.get("a"));
    for (int i = 0; i < 1000; ++i) {
        table.get("name" + std::to_string(i));
    }
    EXPECT_EQ(&table.text_get(1), &text);
    EXPECT_EQ(text, "a");
}

TEST(atom_table, holds_a_hundred_thousand_names) {
    atom_table_t table;
    for (int i = 1; i <= 100000; ++i) {
        ASSERT_EQ(table.get(std::to_string(i)), i);
    }
    EXPECT_EQ(table.find("77777"), 77777);
    EXPECT_EQ(table.text_get(77777), "77777");
}

TEST(str_empty, is_empty) {
    EXPECT_EQ(ko::lxml::str_empty, "");
}

} // namespace

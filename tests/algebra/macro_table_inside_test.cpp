#include "algebra/macro_table.h"

#include <gtest/gtest.h>

#include "support/throws.h"

namespace {

using ko::alg::macro_table_t;

constexpr char too_many[] = "algebra_t::macro_substitution() -- more than 50 macros substituted: "
                            "aborting due to suspicion of recursion.";

class macro_table : public testing::Test {
protected:
    std::string substituted(std::string text) {
        table.substitute(text);
        return text;
    }

    ko::alg::family_t family;
    macro_table_t table{family};
};

TEST_F(macro_table, replaces_whole_words_alone) {
    table.define("PI", "3.14");
    EXPECT_EQ(substituted("PI*PIE-X_PI+(PI)2PI \xE4PI"), "3.14*PIE-X_PI+(3.14)2PI \xE4"
                                                         "3.14");
}

TEST_F(macro_table, expands_what_a_value_brings) {
    table.define("A", "B+B");
    table.define("B", "'C'");
    table.define("C", "1");
    EXPECT_EQ(substituted("-A-"), "-'1'+'1'-");
}

TEST_F(macro_table, replaces_the_first_key_first) {
    table.define("B", "A");
    table.define("A", "");
    EXPECT_EQ(substituted("B A B"), "  ");
}

TEST_F(macro_table, values_of_any_length_keep_the_other_places_right) {
    table.define("LONG", "x");
    table.define("S", "some longer text");
    EXPECT_EQ(substituted("LONG,S,LONG,S"), "x,some longer text,x,some longer text");
}

TEST_F(macro_table, makes_48_replacements_and_not_49) {
    table.define("A", "1");
    std::string text;
    for (int i = 0; i < 48; ++i) {
        text += "A ";
    }
    EXPECT_EQ(substituted(text).find('A'), std::string::npos);
    std::string longer = text + "A";
    EXPECT_THROWS(table.substitute(longer), too_many);
    EXPECT_EQ(longer, text + "A");
}

TEST_F(macro_table, a_macro_that_holds_itself_throws) {
    table.define("A", "(A)");
    EXPECT_THROWS(substituted("A"), too_many);
}

TEST_F(macro_table, a_copy_goes_its_own_way) {
    table.define("A", "1");
    macro_table_t copy = table;
    copy.define("A", "2");
    copy.define("B", "3");
    EXPECT_EQ(substituted("A B"), "1 B");
    table = copy;
    copy.undefine("A");
    EXPECT_EQ(substituted("A B"), "2 3");
}

TEST_F(macro_table, undefining_an_unknown_macro_changes_nothing) {
    table.undefine("A");
    table.define("A", "1");
    table.undefine("B");
    EXPECT_EQ(substituted("A"), "1");
}

} // namespace

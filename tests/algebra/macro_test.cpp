// Macros: definition, substitution and listing.

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <utility>

#include "support/evaluation.h"
#include "support/throws.h"

using ko::alg::algebra_t;

namespace {

using pairs_t = std::list<std::pair<std::string, std::string>>;

class macro : public test::evaluator_t {
protected:
    std::string decoded(const std::string& text) {
        std::string out;
        algebra.macro_decode(text, out);
        return out;
    }

    pairs_t listed() const {
        pairs_t pairs;
        algebra.macros_get(pairs);
        return pairs;
    }
};

using macro_definition = macro;
using macro_substitution = macro;
using macro_limit = macro;
using macro_list = macro;

constexpr const char* ill_formed = "algebra_t::macro_define() -- ill-formed macro key";
constexpr const char* recursion = "algebra_t::macro_substitution() -- more than 50 macros "
                                  "substituted: aborting due to suspicion of recursion.";

} // namespace

TEST_F(macro_definition, needs_a_key) {
    EXPECT_THROWS(algebra.macro_define("", "1"), "algebra_t::macro_define() -- empty macro key");
}

TEST_F(macro_definition, needs_a_key_that_starts_with_a_letter) {
    for (const char* key : {"2x", "_x", "_", "9", " x", "\xE4", "%s"}) {
        EXPECT_THROWS(algebra.macro_define(key, "1"), ill_formed) << key;
    }
}

TEST_F(macro_definition, needs_a_key_of_letters_digits_and_underscores) {
    for (const char* key : {"a b", "a-b", "a.b", "x(", "x ", "a\xE4", "a\xFF", "a\n"}) {
        EXPECT_THROWS(algebra.macro_define(key, "1"), ill_formed) << key;
    }
    EXPECT_THROWS(algebra.macro_define(std::string("a\0", 2), "1"), ill_formed);
    EXPECT_NO_THROW(algebra.macro_define("x_2", "1"));
    EXPECT_NO_THROW(algebra.macro_define("aZ9_", "1"));
}

TEST_F(macro_definition, that_fails_changes_nothing) {
    algebra.macro_define("A", "1");
    EXPECT_THROW(algebra.macro_define("A ", "2"), ko::exception_t);
    EXPECT_EQ(listed(), (pairs_t{{"A", "1"}}));
    EXPECT_EQ(decoded("A"), "1");
}

TEST_F(macro_definition, replaces_the_value_of_a_key) {
    algebra.macro_define("A", "1");
    algebra.macro_define("A", "2");
    EXPECT_EQ(decoded("A"), "2");
}

TEST_F(macro_definition, takes_any_value) {
    algebra.macro_define("A", "");
    algebra.macro_define("B", "%s ; // 'x");
    EXPECT_EQ(decoded("[A][B]"), "[][%s ; // 'x]");
}

TEST_F(macro_definition, can_be_taken_back) {
    algebra.macro_define("A", "1");
    algebra.macro_undefine("A");
    EXPECT_EQ(decoded("A"), "A");
    EXPECT_NO_THROW(algebra.macro_undefine("A"));
    EXPECT_NO_THROW(algebra.macro_undefine(""));
    algebra.macro_define("A", "2");
    EXPECT_EQ(decoded("A"), "2");
}

TEST_F(macro_definition, of_a_function_cannot_be_taken_back) {
    algebra.macro_define("f(x)", "x");
    algebra.macro_undefine("f");
    algebra.macro_undefine("f(x)");
    EXPECT_EQ(outcome("f(1)"), "(i) 1");
}

TEST_F(macro_substitution, replaces_whole_words) {
    algebra.macro_define("PI", "3.14159");
    EXPECT_EQ(decoded("PI*2"), "3.14159*2");
    EXPECT_EQ(decoded("PIE + X_PI + PI2 + 2PI + PI_ + _PI"),
              "PIE + X_PI + PI2 + 2PI + PI_ + _PI");
    EXPECT_EQ(decoded("(PI)PI\nPI"), "(3.14159)3.14159\n3.14159");
    EXPECT_EQ(decoded("pi"), "pi");
    EXPECT_EQ(outcome("PI * 2"), "(f) 6.28318");
}

TEST_F(macro_substitution, goes_on_after_a_word_that_only_contains_the_key) {
    algebra.macro_define("A", "1");
    EXPECT_EQ(decoded("AA BA AB A_A A"), "AA BA AB A_A 1");
    algebra.macro_define("aa", "2");
    EXPECT_EQ(decoded("aaa aa aaaa"), "aaa 2 aaaa");
}

TEST_F(macro_substitution, borders_on_every_other_byte) {
    algebra.macro_define("A", "1");
    for (const char* border :
         {"-", ".", "\xE4", "\xFF", "'", "\"", "$", "\t", "@", "[", "`", "{", "/", ":"}) {
        const std::string b(border);
        EXPECT_EQ(decoded(b + "A" + b), b + "1" + b);
    }
    EXPECT_EQ(decoded(std::string("\0A\0", 3)), std::string("\0"
                                                            "1\0",
                                                            3));
}

TEST_F(macro_substitution, replaces_inside_strings_and_comments) {
    algebra.macro_define("A", "1");
    EXPECT_EQ(decoded("'A' // A"), "'1' // 1");
    EXPECT_EQ(outcome("'an A'"), "(s) an 1");
}

TEST_F(macro_substitution, expands_replacements) {
    algebra.macro_define("A", "(B + B)");
    algebra.macro_define("B", "C");
    algebra.macro_define("C", "2");
    EXPECT_EQ(decoded("A * C"), "(2 + 2) * 2");
    EXPECT_EQ(outcome("A * C"), "(i) 8");
}

TEST_F(macro_substitution, joins_no_words_around_an_empty_value) {
    algebra.macro_define("A", "");
    algebra.macro_define("BC", "2");
    EXPECT_EQ(decoded("B A C"), "B  C");
    EXPECT_EQ(decoded("B-A-C A"), "B--C ");
}

TEST_F(macro_substitution, may_write_into_its_input) {
    algebra.macro_define("A", "1");
    std::string text("A+A");
    algebra.macro_decode(text, text);
    EXPECT_EQ(text, "1+1");
}

TEST_F(macro_substitution, replaces_what_the_output_held) {
    std::string out("old");
    algebra.macro_decode("new", out);
    EXPECT_EQ(out, "new");
    algebra.macro_decode("", out);
    EXPECT_EQ(out, "");
}

TEST_F(macro_substitution, replaces_function_names_too) {
    algebra.macro_define("abs", "max");
    EXPECT_EQ(outcome("abs(1, 2)"), "(i) 2");
}

TEST_F(macro_substitution, is_of_the_first_statement_only) {
    algebra.macro_define("A", "A");
    EXPECT_EQ(outcome("1; A"), "(i) 1");
    EXPECT_EQ(outcome("1 /* A */ + 1 // A\n"), "(i) 2");
}

TEST_F(macro_substitution, comes_after_the_statement_is_read) {
    algebra.macro_define("SEMICOLON", ";");
    algebra.macro_define("NOTE", "//");
    algebra.macro_define("LINE", "\n");
    EXPECT_EQ(outcome("1 SEMICOLON"), "! algebra_t::unknown() - unidentified character ';'");
    EXPECT_EQ(outcome("1 NOTE 2"),
              "! binary_t::construct() -- right operand does not evaluate to a term");
    EXPECT_EQ(outcome("1 LINE + 2"), "(i) 3");
}

TEST_F(macro_substitution, can_give_nothing_to_parse) {
    algebra.macro_define("A", "");
    EXPECT_FALSE(algebra.parse("A"));
    EXPECT_EQ(algebra.parse_error_get(), "");
}

TEST_F(macro_limit, lets_48_replacements_succeed) {
    algebra.macro_define("A", "1");
    EXPECT_EQ(decoded(test::repeated("A ", 48)), test::repeated("1 ", 48));
    EXPECT_EQ(outcome("0" + test::repeated("+A", 48)), "(i) 48");
}

TEST_F(macro_limit, lets_the_49th_replacement_throw) {
    // The count in the message is not the limit.
    algebra.macro_define("A", "1");
    EXPECT_THROWS(decoded(test::repeated("A ", 49)), recursion);
    EXPECT_THROWS(algebra.evaluate("0" + test::repeated("+A", 49)), recursion);
}

TEST_F(macro_limit, counts_replacements_of_different_macros_together) {
    std::string text;
    for (int i = 0; i < 48; ++i) {
        algebra.macro_define("m" + std::to_string(i), "1");
        text += "m" + std::to_string(i) + " ";
    }
    EXPECT_EQ(decoded(text), test::repeated("1 ", 48));
    EXPECT_THROWS(decoded(text + "m0"), recursion);
}

TEST_F(macro_limit, counts_nested_replacements) {
    for (int i = 0; i < 60; ++i) {
        algebra.macro_define("m" + std::to_string(i), "m" + std::to_string(i + 1));
    }
    EXPECT_EQ(decoded("m12"), "m60");
    EXPECT_THROWS(decoded("m11"), recursion);
}

TEST_F(macro_limit, is_met_by_macros_that_name_each_other) {
    algebra.macro_define("A", "B");
    algebra.macro_define("B", "A");
    for (const char* text : {"A", "1 + A", "'A'", "B"}) {
        EXPECT_THROWS(algebra.parse(text), recursion) << text;
    }
    EXPECT_EQ(decoded("AB"), "AB");
}

TEST_F(macro_limit, is_met_by_a_macro_that_names_itself) {
    algebra.macro_define("A", "A");
    algebra.macro_define("G", "G G");
    EXPECT_THROWS(decoded("A"), recursion);
    EXPECT_THROWS(decoded("G"), recursion);
}

TEST_F(macro_limit, leaves_the_evaluator_usable) {
    algebra.macro_define("A", "A");
    ASSERT_TRUE(algebra.parse("1 + 1"));
    EXPECT_THROW(algebra.parse("A"), ko::exception_t);
    EXPECT_EQ(program_outcome(), "(i) 2");
    algebra.macro_undefine("A");
    algebra.assign("A", 5);
    EXPECT_EQ(outcome("A"), "(i) 5");
}

TEST_F(macro_limit, holds_for_many_macros_and_a_long_text) {
    for (int i = 0; i < 5000; ++i) {
        algebra.macro_define("macro_" + std::to_string(i), std::to_string(i));
    }
    const std::string filling = test::repeated("macro macro_ macro_x ", 20000);
    EXPECT_EQ(decoded(filling + "macro_4999 macro_0"), filling + "4999 0");
}

TEST_F(macro_list, holds_every_definition_in_order) {
    algebra.macro_define("B", "1");
    algebra.macro_define("A", "2");
    algebra.macro_define("B", "3");
    EXPECT_EQ(listed(), (pairs_t{{"B", "1"}, {"A", "2"}, {"B", "3"}}));
    EXPECT_EQ(decoded("B"), "3");
}

TEST_F(macro_list, still_holds_what_was_undefined) {
    algebra.macro_define("A", "1");
    algebra.macro_undefine("A");
    EXPECT_EQ(decoded("A"), "A");
    EXPECT_EQ(listed(), (pairs_t{{"A", "1"}}));
}

TEST_F(macro_list, ends_with_the_functions) {
    algebra.macro_define("add( a ,b )", "a + b");
    algebra.macro_define("A", "1");
    algebra.macro_define("sq(x)", "x*x");
    algebra.macro_define("sq(y)", "y*y");
    EXPECT_EQ(
        listed(),
        (pairs_t{{"A", "1"}, {"add( a, b )", "a + b"}, {"sq( x )", "x*x"}, {"sq( y )", "y*y"}}));
}

TEST_F(macro_list, writes_both_parentheses_of_a_function_without_parameters) {
    algebra.macro_define("five()", "5");
    EXPECT_EQ(listed(), (pairs_t{{"five(  )", "5"}}));
}

TEST_F(macro_list, is_appended) {
    algebra.macro_define("A", "1");
    pairs_t pairs{{"old", "0"}};
    algebra.macros_get(pairs);
    algebra.macros_get(pairs);
    EXPECT_EQ(pairs, (pairs_t{{"old", "0"}, {"A", "1"}, {"A", "1"}}));
}

TEST_F(macro_list, can_define_another_evaluator) {
    algebra.macro_define("A", "2");
    algebra.macro_define("f(x, y)", "x * y");
    algebra.macro_define("five()", "5");
    algebra_t other;
    for (const auto& pair : listed()) {
        other.macro_define(pair.first, pair.second);
    }
    EXPECT_EQ(test::shown(other.evaluate("f(A, five())")), "(i) 10");
}

#include "cmd_arg_parser/cmd_arg_parser.h"

#include <gtest/gtest.h>

#include "support/throws.h"

namespace {

using words_t = std::vector<std::string>;

ko::util::cmd_arg_parser_t parser_of(words_t words) {
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    return ko::util::cmd_arg_parser_t(static_cast<int>(argv.size()), argv.data());
}

/// The words that can be read from where the parser stands.
words_t rest_of(ko::util::cmd_arg_parser_t& parser) {
    words_t words;
    for (std::string word; parser.next_str(word);) {
        words.push_back(word);
    }
    return words;
}

TEST(cmd_arg_parser, reads_the_words_after_an_option) {
    auto parser = parser_of({"program", "-a", "1", "-b", "2", "3"});
    EXPECT_TRUE(parser.find("-b"));
    EXPECT_EQ(rest_of(parser), (words_t{"2", "3"}));
}

TEST(cmd_arg_parser, finds_the_first_of_equal_words) {
    auto parser = parser_of({"program", "-a", "1", "-a", "2"});
    EXPECT_TRUE(parser.find("-a"));
    EXPECT_TRUE(parser.find("-a"));
    EXPECT_EQ(rest_of(parser), words_t{"1"});
}

TEST(cmd_arg_parser, finds_exact_words_alone) {
    auto parser = parser_of({"program", "-Ab", "x"});
    for (const char* word : {"-A", "-ab", "-Abc", "", "program"}) {
        EXPECT_FALSE(parser.find(word)) << word;
    }
    EXPECT_TRUE(parser.find("x"));
}

TEST(cmd_arg_parser, stays_where_it_is_when_nothing_is_found) {
    auto parser = parser_of({"program", "-a", "1", "2"});
    std::string word;
    parser.find("-a");
    parser.next_str(word);
    EXPECT_FALSE(parser.find("-b"));
    EXPECT_EQ(rest_of(parser), words_t{"2"});
}

TEST(cmd_arg_parser, begins_with_the_first_word_after_the_program) {
    auto parser = parser_of({"program", "a", "b"});
    EXPECT_EQ(rest_of(parser), (words_t{"a", "b"}));
}

TEST(cmd_arg_parser, leaves_a_word_with_a_dash_unread) {
    auto parser = parser_of({"program", "-n", "-5"});
    std::string word = "old";
    int number = 7;
    parser.find("-n");
    EXPECT_FALSE(parser.next_str(word));
    EXPECT_EQ(word, "old");
    EXPECT_FALSE(parser.next(number));
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(parser.find("-5"));
}

TEST(cmd_arg_parser, takes_a_lone_dash_as_an_option) {
    auto parser = parser_of({"program", "-"});
    EXPECT_EQ(rest_of(parser), words_t{});
}

TEST(cmd_arg_parser, reads_nothing_at_the_end) {
    auto parser = parser_of({"program", "-n"});
    std::string word = "old";
    parser.find("-n");
    EXPECT_FALSE(parser.next_str(word));
    EXPECT_EQ(word, "old");
}

TEST(cmd_arg_parser, reads_an_empty_word) {
    auto parser = parser_of({"program", "", "a"});
    EXPECT_EQ(rest_of(parser), (words_t{"", "a"}));
}

TEST(cmd_arg_parser, is_empty_below_one_word) {
    for (const int argc : {0, -1, -2147483647 - 1}) {
        ko::util::cmd_arg_parser_t parser(argc, nullptr);
        EXPECT_EQ(rest_of(parser), words_t{});
        EXPECT_FALSE(parser.find(""));
    }
}

TEST(cmd_arg_parser, refuses_null) {
    const std::string name = "ko::util::cmd_arg_parser_t::cmd_arg_parser_t() -- ";
    std::string program = "program";
    char* argv[] = {program.data(), nullptr};
    EXPECT_THROWS(ko::util::cmd_arg_parser_t parser(1, nullptr), name + "argv is null");
    EXPECT_THROWS(ko::util::cmd_arg_parser_t parser(2, argv), name + "argv[1] is null");
}

TEST(cmd_arg_parser, owns_its_words) {
    std::string program = "program";
    std::string word = "word";
    char* argv[] = {program.data(), word.data()};
    ko::util::cmd_arg_parser_t parser(2, argv);
    word[0] = 'W';
    EXPECT_EQ(rest_of(parser), words_t{"word"});
}

} // namespace

#include <gtest/gtest.h>

#include <string>

#include "cmd_arg_parser/cmd_arg_parser.h"
#include "support/allocations.h"

namespace {

// Longer than what a string holds without an allocation.
char program[] = "program";
char option[] = "-n";
char number[] = "1.500000000000000000000000000000";
char* words[] = {program, option, number};

TEST(cmd_arg_parser_out_of_memory, while_reading_a_float_is_reported) {
    ko::util::cmd_arg_parser_t parser(3, words);
    float value = 0;
    const auto read = [&] {
        parser.find(option);
        parser.next(value);
    };
    EXPECT_GT(test::fail_each("next(float&)", read), 0);
    EXPECT_EQ(value, 1.5F);
}

} // namespace

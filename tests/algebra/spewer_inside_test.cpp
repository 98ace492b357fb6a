#include "algebra/spewer.h"

#include <gtest/gtest.h>

namespace {

TEST(spewer, marks_carry_the_name_of_the_module) {
    EXPECT_STREQ(ko::alg::header_spew.text, "algebra.cpp header");
    EXPECT_STREQ(ko::alg::footer_spew.text, "algebra.cpp footer");
}

} // namespace

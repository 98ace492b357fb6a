#include "algebra/cow.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using cow_t = ko::alg::cow_t<std::string>;

TEST(cow, is_null_until_it_is_written) {
    cow_t cow;
    EXPECT_EQ(cow.get(), nullptr);
    EXPECT_EQ(cow.write(), "");
    EXPECT_NE(cow.get(), nullptr);
}

TEST(cow, copies_share_one_value) {
    cow_t cow;
    cow.write() = "a";
    const cow_t copy = cow;
    EXPECT_EQ(copy.get(), cow.get());
}

TEST(cow, writing_to_a_shared_value_leaves_the_other_holders_alone) {
    cow_t cow;
    cow.write() = "a";
    const cow_t copy = cow;
    cow.write() += "b";
    EXPECT_EQ(*cow.get(), "ab");
    EXPECT_EQ(*copy.get(), "a");
}

TEST(cow, a_value_is_changed_in_place_once_no_other_holds_it) {
    cow_t cow;
    cow.write() = "a";
    const std::string* const place = cow.get();
    { const cow_t copy = cow; }
    EXPECT_EQ(&cow.write(), place);
}

TEST(cow, assignment_takes_the_value_over) {
    cow_t cow;
    cow.write() = "a";
    cow_t other;
    other.write() = "b";
    other = cow;
    EXPECT_EQ(other.get(), cow.get());
    other = cow_t();
    EXPECT_EQ(other.get(), nullptr);
}

} // namespace

#include "version.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(version, at_run_time_is_the_one_of_the_header) {
    const std::string numbers = std::to_string(KO_VERSION_MAJOR) + "." +
                                std::to_string(KO_VERSION_MINOR) + "." +
                                std::to_string(KO_VERSION_PATCH);
    EXPECT_EQ(numbers, KO_VERSION_STRING);
    EXPECT_EQ(numbers, ko::version());
}

} // namespace

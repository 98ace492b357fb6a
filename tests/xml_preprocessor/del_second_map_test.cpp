#include "xml_preprocessor/del_second_map.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Adds its name to a log when it is deleted.
struct base_t {
    virtual ~base_t() = default;
};

struct logged_t : base_t {
    logged_t(std::string& target, const std::string& tag) : log(target), name(tag) {}
    ~logged_t() override { log += name; }

    std::string& log;
    std::string name;
};

TEST(del_second_map, deletes_what_it_maps_to_in_the_order_of_the_keys) {
    std::string log;
    {
        ko::del_second_map_t<std::string, base_t*> map;
        map["c"] = new logged_t(log, "3");
        map["a"] = new logged_t(log, "1");
        map["b"] = new logged_t(log, "2");
    }
    EXPECT_EQ(log, "123");
}

TEST(del_second_map, passes_over_null) {
    std::string log;
    {
        ko::del_second_map_t<int, base_t*> map;
        map[1] = nullptr;
        map[2] = new logged_t(log, "x");
    }
    EXPECT_EQ(log, "x");
}

TEST(del_second_map, leaves_an_erased_pointer_to_the_caller) {
    std::string log;
    logged_t kept(log, "k");
    {
        ko::del_second_map_t<int, base_t*> map;
        map[1] = &kept;
        map.erase(1);
    }
    EXPECT_EQ(log, "");
}

} // namespace

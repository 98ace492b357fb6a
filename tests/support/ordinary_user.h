/// @file
/// An ordinary user's rights for tests that run as the superuser, who may read and write all
/// files.
#pragma once

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace test {

/// Takes the superuser's rights to files away for as long as it lives.
class ordinary_user_t {
public:
    /// @param folder a folder of the test's own, which stays open to the ordinary user
    explicit ordinary_user_t(const std::string& folder) {
        std::filesystem::permissions(folder, std::filesystem::perms(0755));
        if (was_root && setresuid(nobody, nobody, 0) != 0) {
            throw std::runtime_error("cannot become an ordinary user");
        }
    }
    ordinary_user_t(const ordinary_user_t&) = delete;
    ordinary_user_t& operator=(const ordinary_user_t&) = delete;
    ~ordinary_user_t() {
        if (was_root && setresuid(0, 0, 0) != 0) {
            std::terminate();
        }
    }

private:
    static constexpr uid_t nobody = 65534;

    bool was_root = geteuid() == 0;
};

} // namespace test

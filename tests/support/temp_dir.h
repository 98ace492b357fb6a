/// @file
/// Files and folders that live as long as a test.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace test {

/// The bytes of a file; fails by exception when it cannot be read.
inline std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return content.str();
}

/// A new folder, removed with all it holds at the end.
class temp_dir_t {
public:
    temp_dir_t() : folder((std::filesystem::temp_directory_path() / "kobase-XXXXXX").string()) {
        if (mkdtemp(folder.data()) == nullptr) {
            throw std::runtime_error("cannot make " + folder);
        }
    }
    temp_dir_t(const temp_dir_t&) = delete;
    temp_dir_t& operator=(const temp_dir_t&) = delete;
    ~temp_dir_t() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    /// The absolute path of the folder, without a slash at its end.
    const std::string& path() const { return folder; }

    /// The absolute path of `name`, whether it exists or not.
    std::string path(const std::string& name) const { return folder + "/" + name; }

    /// Makes a sub-folder, with those above it. Returns its absolute path.
    std::string make_dir(const std::string& name) const {
        std::filesystem::create_directories(path(name));
        return path(name);
    }

    /// Writes a file, making the folders of `name`. Returns its absolute path.
    std::string write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream file(path(name), std::ios::binary);
        file << content << std::flush;
        if (!file) {
            throw std::runtime_error("cannot write " + path(name));
        }
        return path(name);
    }

    /// The bytes of the file `name`.
    std::string read(const std::string& name) const { return read_file(path(name)); }

private:
    std::string folder;
};

} // namespace test

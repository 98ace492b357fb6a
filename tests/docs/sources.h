/// @file
/// The sources of the project.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace docs {

/// The top folder of the project.
inline std::filesystem::path top_folder() {
    return std::filesystem::path(KOBASE_TEST_DATA).parent_path();
}

/// The C++ files below a folder of the top one, sorted. Usage: sources_in("src")
inline std::vector<std::filesystem::path> sources_in(const std::string& folder) {
    std::vector<std::filesystem::path> found;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(top_folder() / folder)) {
        const std::string ending = entry.path().extension().string();
        if (ending == ".cpp" || ending == ".h") {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace docs

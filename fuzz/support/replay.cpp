/// @file
/// Runs a target on files instead of on inputs of a fuzzer.
/// Usage: replay PATH...    files, or folders with files

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_of(const fs::path& path) {
    std::vector<fs::path> files;
    if (fs::is_directory(path)) {
        std::copy(fs::directory_iterator(path), fs::directory_iterator(),
                  std::back_inserter(files));
        std::sort(files.begin(), files.end());
    } else {
        files.push_back(path);
    }
    return files;
}

void replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw fs::filesystem_error("cannot read", path,
                                   std::make_error_code(std::errc::io_error));
    }
    // A block of exactly this size, so that a sanitizer sees what is read behind it.
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    std::fprintf(stderr, "%s\n", path.c_str());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::size_t replay_all(int count, char** paths) {
    std::size_t replayed = 0;
    for (int i = 1; i < count; ++i) {
        for (const fs::path& file : files_of(paths[i])) {
            replay(file);
            ++replayed;
        }
    }
    return replayed;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::size_t replayed = replay_all(argc, argv);
        std::fprintf(stderr, "%zu inputs\n", replayed);
        return replayed == 0 ? 1 : 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}

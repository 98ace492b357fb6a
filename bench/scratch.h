/// @file
/// How much memory a piece of work takes, and files that are there for a while.
#pragma once

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace bench {

/// How much more memory is in use than when the object was made, as the allocator tells it, with
/// what it adds to each piece.
class memory_in_use_t {
public:
    double growth() const { return in_use() - before; }

private:
    static double in_use() {
        const struct mallinfo2 info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    }

    double before = in_use();
};

/// How far the process's largest resident set has grown since the object was made, as the kernel
/// tells it.
class memory_peak_t {
public:
    double growth() const { return peak() - before; }

private:
    static double peak() {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return static_cast<double>(usage.ru_maxrss) * 1024;
    }

    double before = peak();
};

/// A folder that goes with the object.
class scratch_folder_t {
public:
    scratch_folder_t() {
        std::string pattern = std::filesystem::temp_directory_path() / "kobase-bench-XXXXXX";
        path = mkdtemp(pattern.data());
    }
    scratch_folder_t(const scratch_folder_t&) = delete;
    scratch_folder_t& operator=(const scratch_folder_t&) = delete;
    ~scratch_folder_t() { std::filesystem::remove_all(path); }

    std::string file(const std::string& name) const { return path / name; }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name)) << text;
    }

    std::string read(const std::string& name) const {
        std::ifstream in(file(name));
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path path;
};

} // namespace bench

/// @file
/// What the samples run in.
#pragma once

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

#include "docs/page.h"
#include "support/temp_dir.h"

namespace docs {

/// A new folder with the files of a document, the current one while this lives.
class work_folder_t {
public:
    explicit work_folder_t(const page_t& page) : before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder.path());
        files_write(page);
    }
    work_folder_t(const work_folder_t&) = delete;
    work_folder_t& operator=(const work_folder_t&) = delete;
    ~work_folder_t() { std::filesystem::current_path(before); }

private:
    test::temp_dir_t folder;
    std::filesystem::path before;
};

/// Keeps what goes to standard output while it lives.
class captured_output_t {
public:
    captured_output_t() : before(std::cout.rdbuf(kept.rdbuf())) {}
    captured_output_t(const captured_output_t&) = delete;
    captured_output_t& operator=(const captured_output_t&) = delete;
    ~captured_output_t() { std::cout.rdbuf(before); }

    std::string text() const { return kept.str(); }

private:
    std::ostringstream kept;
    std::streambuf* before;
};

} // namespace docs

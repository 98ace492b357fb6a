#include <cstdio>
#include <memory>

#include "exception/exception.h"
#include "tokenizer/tokenizer.h"

namespace ko {

namespace {

struct file_closer_t {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using file_ptr_t = std::unique_ptr<std::FILE, file_closer_t>;

/// Reads the bytes of a file: none when it cannot be opened, and those before the place where
/// reading fails.
/// @return whether all were read
bool file_text_get(const std::string& path, std::string& text) {
    const file_ptr_t file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        return false;
    }
    char buffer[4096];
    std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get());
    while (count != 0) {
        text.append(buffer, count);
        count = std::fread(buffer, 1, sizeof buffer, file.get());
    }
    return std::ferror(file.get()) == 0;
}

/// What the C library still held of the file is written when it is closed.
bool file_text_set(const char* path, const std::string& text) {
    file_ptr_t file(std::fopen(path, "wb"));
    if (!file) {
        return false;
    }
    const bool is_written = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
    return std::fclose(file.release()) == 0 && is_written;
}

} // namespace

bool file_tokenizer_t::load(const char* path) {
    if (path == nullptr) {
        throw exception_t("ko::file_tokenizer_t::load() -- path is null");
    }
    file_name = path;
    std::string text;
    const bool is_read = file_text_get(file_name, text);
    // An unterminated quote takes in the line feed after the last line, which may be missing.
    if (!text.empty() && text.back() != '\n') {
        text.push_back('\n');
    }
    tokenize(text, "\n");
    return is_read;
}

bool file_tokenizer_t::save_as(const char* path) {
    if (path == nullptr) {
        throw exception_t("ko::file_tokenizer_t::save_as() -- path is null");
    }
    std::string text;
    for (const std::string& token : *this) {
        text.append(token).push_back('\n');
    }
    return file_text_set(path, text);
}

bool file_tokenizer_t::save() {
    return save_as(file_name.c_str());
}

} // namespace ko

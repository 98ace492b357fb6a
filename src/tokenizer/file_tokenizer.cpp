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

/// The bytes of a file; none when it cannot be opened, and those before the place where reading
/// fails.
std::string file_text_get(const std::string& path) {
    std::string text;
    const file_ptr_t file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        return text;
    }
    char buffer[4096];
    std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get());
    while (count != 0) {
        text.append(buffer, count);
        count = std::fread(buffer, 1, sizeof buffer, file.get());
    }
    return text;
}

} // namespace

void file_tokenizer_t::load(const char* path) {
    if (path == nullptr) {
        throw exception_t("ko::file_tokenizer_t::load() -- path is null");
    }
    file_name = path;
    std::string text = file_text_get(file_name);
    // An unterminated quote takes in the line feed after the last line, which may be missing.
    if (!text.empty() && text.back() != '\n') {
        text.push_back('\n');
    }
    tokenize(text, "\n");
}

void file_tokenizer_t::save_as(const char* path) {
    if (path == nullptr) {
        throw exception_t("ko::file_tokenizer_t::save_as() -- path is null");
    }
    std::string text;
    for (const std::string& token : *this) {
        text.append(token).push_back('\n');
    }
    if (const file_ptr_t file{std::fopen(path, "wb")}) {
        std::fwrite(text.data(), 1, text.size(), file.get());
    }
}

void file_tokenizer_t::save() {
    save_as(file_name.c_str());
}

} // namespace ko

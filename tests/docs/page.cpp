#include "docs/page.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace docs {
namespace {

namespace fs = std::filesystem;

const fs::path& top_folder() {
    static const fs::path folder = fs::path(KOBASE_TEST_DATA).parent_path();
    return folder;
}

std::string stripped(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \n");
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(" \n") - first + 1);
}

bool begins_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

/// Reads a document line by line.
class reader_t {
public:
    explicit reader_t(page_t& into) : page(into) {}

    void take(const std::string& text) {
        ++number;
        if (inside_block) {
            block_line(text);
        } else if (inside_comment) {
            comment_line(text);
        } else {
            plain_line(text);
        }
    }

    void end() {
        if (inside_block || inside_comment) {
            page.faults.push_back(page.name + ": a block or a comment has no end");
        }
    }

private:
    void block_line(const std::string& text) {
        if (text == "```") {
            inside_block = false;
        } else {
            page.blocks.back().lines.push_back(text);
        }
    }

    void comment_line(const std::string& text) {
        const std::size_t end = text.find("-->");
        comment += text.substr(0, end) + "\n";
        if (end != std::string::npos) {
            inside_comment = false;
            mark(stripped(comment));
        }
    }

    void mark(const std::string& text) {
        const std::size_t colon = std::min(text.find_first_of(":\n"), text.size());
        marks[text.substr(0, colon)] =
            colon == text.size() ? std::string() : stripped(text.substr(colon + 1));
    }

    void plain_line(const std::string& text) {
        if (begins_with(text, "```")) {
            page.blocks.push_back({text.substr(3), number, {}, marks});
            marks.clear();
            inside_block = true;
        } else if (begins_with(text, "<!--")) {
            comment.clear();
            inside_comment = true;
            comment_line(text.substr(4));
        } else if (!text.empty()) {
            marks.clear();
            if (text.find("```") != std::string::npos) {
                page.faults.push_back(page.name + ":" + std::to_string(number) +
                                      ": a block is opened behind other text");
            }
        }
    }

    page_t& page;
    unsigned number = 0;
    bool inside_block = false;
    bool inside_comment = false;
    std::string comment;
    std::map<std::string, std::string> marks;
};

bool is_ours(const fs::path& path) {
    const std::string first = path.begin()->string();
    return path.extension() == ".md" && first != "build" && first[0] != '.';
}

} // namespace

std::string block_t::text() const {
    std::string joined;
    for (const std::string& each : lines) {
        joined += each + "\n";
    }
    return joined;
}

page_t page_read(const std::string& name) {
    page_t page;
    page.name = name;
    reader_t reader(page);
    std::ifstream file(top_folder() / name);
    for (std::string text; std::getline(file, text);) {
        reader.take(text);
    }
    reader.end();
    return page;
}

std::vector<std::string> page_names() {
    std::vector<std::string> names;
    fs::recursive_directory_iterator entry(top_folder());
    for (; entry != fs::recursive_directory_iterator(); ++entry) {
        const fs::path path = fs::relative(entry->path(), top_folder());
        if (entry->is_directory() && (path == "build" || path.string()[0] == '.')) {
            entry.disable_recursion_pending();
        } else if (is_ours(path)) {
            names.push_back(path.string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> page_names_with(const std::string& language, const std::string& mark) {
    std::vector<std::string> found;
    for (const std::string& name : page_names()) {
        const page_t page = page_read(name);
        const bool has =
            std::any_of(page.blocks.begin(), page.blocks.end(), [&](const block_t& block) {
                return block.language == language && (mark.empty() || block.has(mark));
            });
        if (has) {
            found.push_back(name);
        }
    }
    return found;
}

const block_t* shown_behind(const page_t& page, const block_t& block, const std::string& mark) {
    const block_t* next = &block + 1;
    const block_t* const end = page.blocks.data() + page.blocks.size();
    for (; next != end && (next->has("output") || next->has("prints")); ++next) {
        if (next->has(mark)) {
            return next;
        }
    }
    return nullptr;
}

void files_write(const page_t& page) {
    for (const block_t& block : page.blocks) {
        if (block.has("file")) {
            const fs::path path = block.marks.at("file");
            if (path.has_parent_path()) {
                fs::create_directories(path.parent_path());
            }
            std::ofstream(path, std::ios::binary) << block.text();
        }
    }
}

std::string test_name(const std::string& page) {
    std::string name = page.substr(0, page.rfind('.'));
    for (char& c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) {
            c = '_';
        }
    }
    return name;
}

} // namespace docs

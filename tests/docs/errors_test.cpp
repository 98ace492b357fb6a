// Compares the catalogue of messages with the sources, both ways: every text of the sources that
// reads like a message stands in docs/errors.md, and every message there is made of texts of the
// sources.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "docs/literals.h"
#include "docs/page.h"
#include "docs/sources.h"
#include "errorcode/errorcode.h"
#include "support/temp_dir.h"

namespace {

// Texts with blanks in them that no user of the library or the tools meets as a message.
const std::regex no_message("^(Usage: |Type an expression|algebra\\.cpp |<\\?xml|standard input$|"
                            "variables (read|set)$|the message names the limit$)");

// What stands between the placeholders of printf.
std::vector<std::string> fixed_parts(const std::string& text, const std::regex& placeholder) {
    return {std::sregex_token_iterator(text.begin(), text.end(), placeholder, -1), {}};
}

const std::regex printf_placeholder("%l*[a-zA-Z]");
const std::regex catalogue_placeholder("\\{[^}]*\\}");

bool reads_like_a_message(const std::string& text) {
    static const std::regex two_words("[A-Za-z]{2}.* .*[A-Za-z]{2}");
    return std::regex_search(text, two_words) && !std::regex_search(text, no_message);
}

std::string without_line_ends(const std::string& text) {
    const std::size_t first = text.find_first_not_of('\n');
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of('\n') - first + 1);
}

std::set<std::string> source_texts() {
    std::set<std::string> texts;
    for (const char* folder : {"src", "tools"}) {
        for (const std::filesystem::path& path : docs::sources_in(folder)) {
            for (const std::string& text : docs::literals(path.string())) {
                texts.insert(without_line_ends(text));
            }
        }
    }
    return texts;
}

// The first cell of each row that begins with code.
std::vector<std::string> catalogue() {
    std::vector<std::string> messages;
    std::istringstream page(test::read_file((docs::top_folder() / "docs/errors.md").string()));
    for (std::string line; std::getline(page, line);) {
        if (line.compare(0, 3, "| `") == 0) {
            messages.push_back(line.substr(3, line.find('`', 3) - 3));
        }
    }
    return messages;
}

bool stands_in(const std::vector<std::string>& messages, const std::string& part) {
    return std::any_of(messages.begin(), messages.end(), [&](const std::string& message) {
        return message.find(part) != std::string::npos;
    });
}

// Whether a text is made of some of the parts, one behind the other.
bool is_made_of(const std::set<std::string>& parts, const std::string& text) {
    std::vector<bool> reached(text.size() + 1, false);
    reached[0] = true;
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const std::string& part : parts) {
            if (reached[at] && text.compare(at, part.size(), part) == 0) {
                reached[at + part.size()] = true;
            }
        }
    }
    return reached[text.size()];
}

TEST(catalogue_of_messages, holds_every_message_of_the_sources) {
    const std::vector<std::string> messages = catalogue();
    for (const std::string& text : source_texts()) {
        if (reads_like_a_message(text)) {
            for (const std::string& part : fixed_parts(text, printf_placeholder)) {
                EXPECT_TRUE(stands_in(messages, part)) << "not in docs/errors.md: " << text;
            }
        }
    }
}

TEST(catalogue_of_messages, holds_nothing_that_the_sources_do_not_say) {
    std::set<std::string> parts;
    for (const std::string& text : source_texts()) {
        parts.insert(text);
        for (const std::string& part : fixed_parts(text, printf_placeholder)) {
            parts.insert(part);
        }
    }
    parts.erase("");
    for (const std::string& message : catalogue()) {
        for (const std::string& part : fixed_parts(message, catalogue_placeholder)) {
            EXPECT_TRUE(is_made_of(parts, part)) << message;
        }
    }
}

TEST(catalogue_of_messages, holds_each_message_once) {
    std::vector<std::string> messages = catalogue();
    std::sort(messages.begin(), messages.end());
    EXPECT_EQ(std::adjacent_find(messages.begin(), messages.end()), messages.end());
    RecordProperty("messages", static_cast<int>(messages.size()));
    EXPECT_GT(messages.size(), 100U);
}

TEST(catalogue_of_messages, holds_every_error_code) {
    const std::string page = test::read_file((docs::top_folder() / "docs/errors.md").string());
    for (const ko::errorcode::entry_t& entry : ko::errorcode::table) {
        std::ostringstream row;
        row << "| `" << entry.description << "` | 0x" << std::hex << std::uppercase;
        row.width(8);
        row.fill('0');
        row << entry.code << " | `" << entry.name << "` |";
        EXPECT_NE(page.find(row.str()), std::string::npos) << row.str();
    }
}

} // namespace

#include "docs/literals.h"

#include <cctype>

#include "support/temp_dir.h"

namespace docs {
namespace {

/// Walks over a source.
class scanner_t {
public:
    explicit scanner_t(const std::string& path) : source(test::read_file(path)) {}

    std::vector<std::string> texts() {
        while (at < source.size()) {
            step();
        }
        return found;
    }

private:
    bool next_is(const std::string& text) const {
        return source.compare(at, text.size(), text) == 0;
    }

    /// Goes on behind the next `text`, or to the end.
    void skip_behind(const std::string& text) {
        const std::size_t position = source.find(text, at);
        at = position == std::string::npos ? source.size() : position + text.size();
    }

    void step() {
        if (next_is("//") || next_is("#include")) {
            skip_behind("\n");
        } else if (next_is("/*")) {
            skip_behind("*/");
        } else if (source[at] == '"') {
            text_take();
        } else if (source[at] == '\'') {
            quoted();
            joins = false;
        } else {
            code_take(source[at]);
            ++at;
        }
    }

    void code_take(char c) {
        joins = joins && std::isspace(static_cast<unsigned char>(c)) != 0;
        if (c == ';' || c == '{' || c == '}') {
            statement.clear();
        } else {
            statement += c;
        }
    }

    bool describes_options() const {
        for (const char* call : {"add_option", "add_flag", "list_option_add", "set_help_flag",
                                 "set_version_flag", "footer", "CLI::App app"}) {
            if (statement.find(call) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    void text_take() {
        const std::string text = quoted();
        if (describes_options()) {
            return;
        }
        if (joins) {
            found.back() += text;
        } else {
            found.push_back(text);
        }
        joins = true;
    }

    /// What stands in the quotes that begin here.
    std::string quoted() {
        const char quote = source[at];
        std::string text;
        for (++at; at < source.size() && source[at] != quote; ++at) {
            const bool escaped = source[at] == '\\';
            at += escaped ? 1U : 0U;
            text += escaped && source[at] == 'n' ? '\n' : source[at];
        }
        ++at;
        return text;
    }

    std::string source;
    std::size_t at = 0;
    bool joins = false;
    std::string statement; ///< the code of the statement so far
    std::vector<std::string> found;
};

} // namespace

std::vector<std::string> literals(const std::string& path) {
    return scanner_t(path).texts();
}

} // namespace docs

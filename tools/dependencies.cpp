#include "dependencies.h"

#include <algorithm>

namespace tool {

namespace {

/// A path as make reads it. Of the characters that it takes for its own, backslashes count only
/// before a blank or a "#".
std::string escaped(const std::string& path) {
    std::string text;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        if (c == '$') {
            text += '$';
        } else if (c == ' ' || c == '\t' || c == '#') {
            for (std::size_t j = i; j > 0 && path[j - 1] == '\\'; --j) {
                text += '\\';
            }
            text += '\\';
        }
        text += c;
    }
    return text;
}

} // namespace

std::string make_rule(const std::string& target, const std::vector<std::string>& files,
                      bool phony) {
    std::string rule = escaped(target) + ":";
    std::vector<std::string> written;
    for (const std::string& file : files) {
        if (file != "-" && std::find(written.begin(), written.end(), file) == written.end()) {
            rule += " \\\n  " + escaped(file);
            written.push_back(file);
        }
    }
    rule += '\n';
    for (std::size_t i = 1; phony && i < written.size(); ++i) {
        rule += "\n" + escaped(written[i]) + ":\n";
    }
    return rule;
}

} // namespace tool

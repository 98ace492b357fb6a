#include "command_line.h"

#include <algorithm>

#include "cmd_arg_parser/cmd_arg_parser.h"

namespace tool {

namespace {

bool holds(const std::vector<std::string>& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// The value of the option at `argv[i]`.
std::string value_read(int argc, char** argv, int i) {
    const std::string option = argv[i];
    // The parser takes the word before the option for the program's name.
    ko::util::cmd_arg_parser_t words(std::min(argc - i + 1, 3), argv + i - 1);
    std::string value;
    if (!words.find(option) || !words.next_str(value)) {
        throw usage_error_t("option " + option + " lacks its value");
    }
    return value;
}

} // namespace

command_line_t::command_line_t(int argc, char** argv, const std::vector<std::string>& flags,
                               const std::vector<std::string>& valued) {
    int i = 1;
    for (; i < argc && std::string(argv[i]) != "--"; ++i) {
        const std::string word = argv[i];
        if (word.size() < 2 || word[0] != '-') {
            operands.push_back(word);
        } else if (holds(flags, word)) {
            given_flags.push_back(word);
        } else if (holds(valued, word)) {
            values.push_back({word, value_read(argc, argv, i++)});
        } else {
            throw usage_error_t("unknown option " + word);
        }
    }
    if (i < argc) {
        operands.insert(operands.end(), argv + i + 1, argv + argc);
    }
}

bool command_line_t::flag_get(const std::string& option) const {
    return holds(given_flags, option);
}

std::string command_line_t::value_get(const std::string& option) const {
    const std::vector<std::string> all = values_get(option);
    if (all.size() > 1) {
        throw usage_error_t("option " + option + " was given twice");
    }
    return all.empty() ? std::string() : all.front();
}

std::vector<std::string> command_line_t::values_get(const std::string& option) const {
    std::vector<std::string> found;
    for (const value_t& value : values) {
        if (value.option == option) {
            found.push_back(value.text);
        }
    }
    return found;
}

const std::vector<std::string>& command_line_t::operands_get() const {
    return operands;
}

definition_t definition_read(const std::string& option, const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw usage_error_t("option " + option + " takes NAME=VALUE, not " + text);
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

} // namespace tool

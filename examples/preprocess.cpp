// Processes a configuration document: preprocess [-o OUT] FILE.xml [NAME=VALUE ...]
#include <algorithm>
#include <charconv>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

// The whole of `text` as a number; false when it is none.
template <class N> bool number_read(const std::string& text, N& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && text.find_first_of("0123456789") < text.size();
}

void argument_insert(ko::xpp::preprocessor_t& preprocessor, const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == 0 || equals == std::string::npos) {
        throw ko::exception_t("not of the form NAME=VALUE: " + argument);
    }
    const std::string name = argument.substr(0, equals);
    const std::string value = argument.substr(equals + 1);
    int integer = 0;
    double real = 0;
    if (number_read(value, integer)) {
        preprocessor.insert_argument(name, integer);
    } else if (number_read(value, real)) {
        preprocessor.insert_argument(name, real);
    } else {
        preprocessor.insert_argument(name, value);
    }
}

// Sends the lines that the library writes to standard output to a text, as long as it lives.
struct diagnostics_t {
    std::ostringstream lines;
    std::streambuf* standard_output = std::cout.rdbuf(lines.rdbuf());
    ~diagnostics_t() { std::cout.rdbuf(standard_output); }
};

void process(ko::lxml::document_t& source, const std::string& file,
             ko::xpp::preprocessor_t& preprocessor, ko::lxml::document_t& output) {
    const diagnostics_t diagnostics;
    try {
        source.load(file);
        output.root = preprocessor.process(source.root, preprocessor.process_include);
    } catch (const ko::exception_t& e) {
        const std::string message = e.what();
        throw ko::exception_t(message.find(file) == 0 ? message : file + ": " + message);
    }
    std::cerr << diagnostics.lines.str();
}

void run(std::vector<std::string> words) {
    std::string out;
    if (words.size() >= 2 && words[0] == "-o") {
        out = words[1];
        words.erase(words.begin(), words.begin() + 2);
    }
    if (words.empty()) {
        throw ko::exception_t("usage: preprocess [-o OUT] FILE.xml [NAME=VALUE ...]");
    }
    ko::lxml::document_t source;
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor(output, nullptr);
    std::for_each(words.begin() + 1, words.end(),
                  [&](const std::string& word) { argument_insert(preprocessor, word); });
    process(source, words[0], preprocessor, output);
    if (!out.empty()) {
        output.save(out, true, true);
    } else if (output.root != nullptr) {
        output.root->print(std::cout, 0, 0, true, true);
    }
    if (!std::cout.flush()) {
        throw ko::exception_t("error writing standard output");
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return 0;
    } catch (const std::exception& e) {
        std::string line = e.what();
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::cerr << "preprocess: " << line << "\n";
        return 1;
    }
}

// Processes a configuration document: preprocess [-o OUT] FILE.xml [NAME=VALUE ...]
#include <algorithm>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "definition.h"
#include "exception/exception.h"
#include "lxml/lxml.h"
#include "output.h"
#include "report_scope.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

// Sets the variables that the words NAME=VALUE define.
void definitions_set(ko::alg::algebra_t& algebra, const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        const tool::definition_t definition =
            tool::definition_read(word, tool::value_form_t::guessed);
        algebra.assign(definition.name, tool::definition_value(algebra, definition));
    }
}

// What the library reports goes to standard error, so that standard output has the document only.
void process(ko::lxml::document_t& source, const std::string& file,
             ko::xpp::preprocessor_t& preprocessor, ko::lxml::document_t& output) {
    std::ostringstream reports;
    try {
        const tool::report_scope_t scope(*reports.rdbuf());
        source.load(file);
        output.root = preprocessor.process(source.root, preprocessor.process_include);
    } catch (const ko::exception_t& e) {
        const std::string message = e.what();
        throw ko::exception_t(message.find(file) == 0 ? message : file + ": " + message);
    }
    std::cerr << reports.str();
}

std::string text_of(const ko::lxml::document_t& document) {
    std::ostringstream text;
    if (document.root != nullptr) {
        document.root->print(text, 0, 0, true, true);
    }
    return text.str();
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
    definitions_set(preprocessor.algebra_get(), {words.begin() + 1, words.end()});
    process(source, words[0], preprocessor, output);
    tool::text_write(out, text_of(output));
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

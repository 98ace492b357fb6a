// Processes the configurations of the documents: every block of the language "xml" that is marked
// "run" or "run inside", with the arguments behind that mark. The latter are the content of a
// rack.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "algebra/algebra.h"
#include "docs/page.h"
#include "docs/work_folder.h"
#include "exception/exception.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

using ko::xpp::preprocessor_t;

void insert_argument(preprocessor_t& preprocessor, const std::string& name,
                     const ko::alg::result_t& value) {
    if (value.is_string()) {
        preprocessor.insert_argument(name, value.string_get(false, 0));
    } else if (value.is_float()) {
        preprocessor.insert_argument(name, static_cast<double>(value.float_get()));
    } else {
        preprocessor.insert_argument(name, value.int_get());
    }
}

// Arguments have the form "NAME=EXPRESSION; NAME=EXPRESSION".
void insert_arguments(preprocessor_t& preprocessor, const std::string& arguments) {
    std::istringstream all(arguments);
    for (std::string argument; std::getline(all >> std::ws, argument, ';');) {
        const std::size_t middle = argument.find('=');
        ASSERT_NE(middle, std::string::npos) << argument;
        insert_argument(preprocessor, argument.substr(0, middle),
                        ko::alg::algebra_t().evaluate(argument.substr(middle + 1)));
    }
}

std::string processed(const std::string& text, const std::string& arguments) {
    ko::lxml::document_t source;
    source.load_from_string(text);
    source.file_name = "./sample.xml";
    ko::lxml::document_t output;
    preprocessor_t preprocessor(output, nullptr);
    insert_arguments(preprocessor, arguments);
    output.root = preprocessor.process(source.root, preprocessor_t::process_include);
    std::ostringstream out;
    if (output.root != nullptr) {
        output.root->print(out, 0, 0, true, false);
    }
    return out.str();
}

const std::string rack = "<rack xmlns:x=\"kobase.org/xmlns/xmlpreprocessor\""
                         " xmlns:e=\"kobase.org/xmlns/xmlpreprocessor/expressionevaluator\">";
const std::string head = "<?xml version=\"1.0\" standalone=\"yes\"?>";

// What stands in the rack of a result.
std::string inside(const std::string& result) {
    const std::string start = head + "<rack >";
    const std::string end = "</rack>";
    if (result == head + "<rack />") {
        return std::string();
    }
    EXPECT_EQ(result.compare(0, start.size(), start), 0) << result;
    return result.substr(start.size(), result.size() - start.size() - end.size());
}

std::string result_of(const docs::block_t& block) {
    try {
        if (block.has("run inside")) {
            return inside(
                processed(rack + block.text() + "</rack>", block.marks.at("run inside")));
        }
        return processed(block.text(), block.marks.at("run"));
    } catch (const ko::exception_t& e) {
        return std::string("error: ") + e.what();
    }
}

// Documents break lines between elements; so that only these breaks are forgiven, they go.
std::string on_one_line(const std::string& text) {
    std::string joined;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t next = text.find_first_not_of(" \n", at);
        const bool broken = text[at] == '\n' && !joined.empty() && joined.back() == '>';
        if (broken && (next == std::string::npos || text[next] == '<')) {
            at = next == std::string::npos ? text.size() : next - 1;
        } else {
            joined += text[at];
        }
    }
    return joined;
}

std::string shown(const docs::page_t& page, const docs::block_t& block, const char* mark) {
    const docs::block_t* found = docs::shown_behind(page, block, mark);
    return found == nullptr ? std::string() : found->text();
}

void expect_output(const docs::page_t& page, const docs::block_t& block) {
    const docs::captured_output_t printed;
    std::string result = result_of(block);
    std::string expected = on_one_line(shown(page, block, "output"));
    if (result.compare(0, head.size(), head) == 0 && expected.compare(0, 5, "<?xml") != 0) {
        expected.insert(0, head);
    }
    if (!expected.empty() && expected.back() == '\n') {
        expected.pop_back();
    }
    EXPECT_EQ(on_one_line(result), expected);
    EXPECT_EQ(printed.text(), shown(page, block, "prints"));
}

class configurations : public testing::TestWithParam<std::string> {};

TEST_P(configurations, give_the_output_that_their_document_shows) {
    const docs::page_t page = docs::page_read(GetParam());
    const docs::work_folder_t folder(page);
    for (const docs::block_t& block : page.blocks) {
        if (block.language == "xml" && (block.has("run") || block.has("run inside"))) {
            SCOPED_TRACE("the block of line " + std::to_string(block.line));
            expect_output(page, block);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(docs, configurations,
                         testing::ValuesIn(docs::page_names_with("xml", "")),
                         docs::name_of_document);

} // namespace

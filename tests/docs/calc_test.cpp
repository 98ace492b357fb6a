// Runs the expressions of the documents: every block of the language "calc" is a session with one
// evaluator.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "algebra/algebra.h"
#include "docs/page.h"
#include "docs/work_folder.h"
#include "exception/exception.h"

namespace {

// What an expression writes to standard output, one line, as a document shows it.
std::string printed_before(const std::string& printed) {
    return printed.empty() ? printed
                           : "prints " + printed.substr(0, printed.find('\n')) + ", gives ";
}

std::string value_text(ko::alg::algebra_t& algebra, const std::string& expression) {
    const docs::captured_output_t output;
    try {
        std::ostringstream value;
        value << algebra.evaluate(expression);
        return printed_before(output.text()) + value.str();
    } catch (const ko::exception_t& e) {
        return printed_before(output.text()) + "error: " + e.what();
    }
}

// A line is "macro NAME := TEXT" or "EXPRESSION --> VALUE".
void run(ko::alg::algebra_t& algebra, const std::string& line) {
    const std::string macro = "macro ";
    const std::size_t middle = line.find(" := ");
    if (line.compare(0, macro.size(), macro) == 0 && middle != std::string::npos) {
        algebra.macro_define(line.substr(macro.size(), middle - macro.size()),
                             line.substr(middle + 4));
        return;
    }
    const std::size_t arrow = line.find(" --> ");
    ASSERT_NE(arrow, std::string::npos) << line;
    EXPECT_EQ(value_text(algebra, line.substr(0, arrow)), line.substr(arrow + 5)) << line;
}

class expressions : public testing::TestWithParam<std::string> {};

TEST_P(expressions, have_the_values_that_their_document_states) {
    for (const docs::block_t& block : docs::page_read(GetParam()).blocks) {
        if (block.language == "calc") {
            ko::alg::algebra_t algebra;
            for (const std::string& line : block.lines) {
                SCOPED_TRACE("the block of line " + std::to_string(block.line));
                run(algebra, line);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(docs, expressions, testing::ValuesIn(docs::page_names_with("calc", "")),
                         docs::name_of_document);

} // namespace

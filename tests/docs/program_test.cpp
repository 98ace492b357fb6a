// Runs the C++ samples of the documents and compares what they print with what is shown.

#include <gtest/gtest.h>

#include <exception>
#include <sstream>
#include <string>
#include <vector>

#include "docs/page.h"
#include "docs/programs.h"
#include "docs/work_folder.h"
#include "support/temp_dir.h"

namespace docs {

std::vector<program_t>& programs() {
    static std::vector<program_t> all;
    return all;
}

} // namespace docs

namespace {

// What stands behind "// " in the lines of a header's example that print.
std::string shown_in_comments(const std::string& header, unsigned line) {
    std::istringstream lines(test::read_file(std::string(KOBASE_TEST_DATA) + "/../" + header));
    std::string shown;
    unsigned number = 0;
    for (std::string text; std::getline(lines, text);) {
        const std::size_t comment = text.rfind("// ");
        if (++number > line && text.find("@endcode") != std::string::npos) {
            break;
        }
        if (number > line && text.find("std::cout") < comment && comment != std::string::npos) {
            shown += text.substr(comment + 3) + "\n";
        }
    }
    return shown;
}

std::string name_of(const testing::TestParamInfo<docs::program_t>& program) {
    return docs::test_name(program.param.page) + "_" + std::to_string(program.param.line);
}

// What stands in the blocks that show the output of a sample and of those that continue it.
std::string shown_output(const docs::page_t& page, unsigned line) {
    std::string shown;
    bool inside = false;
    for (const docs::block_t& block : page.blocks) {
        if (inside && block.has("output")) {
            shown += block.text();
        } else if (!block.has("continues")) {
            inside = block.line == line;
        }
    }
    return shown;
}

// A block cannot show that the last line break is missing.
std::string with_line_end(const std::string& text) {
    return text.empty() || text.back() == '\n' ? text : text + "\n";
}

std::string printed_by(const docs::program_t& program) {
    const docs::captured_output_t output;
    try {
        program.run();
    } catch (const std::exception& e) {
        ADD_FAILURE() << program.page << ":" << program.line << ": throws: " << e.what();
    }
    return with_line_end(output.text());
}

class program : public testing::TestWithParam<docs::program_t> {};

bool is_header(const std::string& page) {
    return page.compare(page.size() - 2, 2, ".h") == 0;
}

TEST_P(program, prints_what_its_document_shows) {
    const std::string name = GetParam().page;
    const docs::page_t page = docs::page_read(name);
    const docs::work_folder_t folder(page);
    EXPECT_EQ(printed_by(GetParam()), is_header(name) ? shown_in_comments(name, GetParam().line)
                                                      : shown_output(page, GetParam().line))
        << name << ":" << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(docs, program, testing::ValuesIn(docs::programs()), name_of);

} // namespace

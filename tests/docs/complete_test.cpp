// No sample of a document is left unrun, unless in a language that cannot be run here and with a
// reason beside it.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "docs/page.h"
#include "docs/programs.h"
#include "support/temp_dir.h"

namespace {

const std::set<std::string> may_be_left_unrun = {"sh", "cmake", "text", "yaml"};
const std::set<std::string> known_marks = {
    "before", "continues", "file", "not run", "output", "prints", "run", "run inside", "same as"};

bool is_registered(const docs::page_t& page, const docs::block_t& block) {
    const auto& all = docs::programs();
    return std::any_of(all.begin(), all.end(), [&](const docs::program_t& program) {
        return program.page == page.name && program.line == block.line;
    });
}

bool is_file_of_the_project(const docs::block_t& block) {
    const std::string path = std::string(KOBASE_TEST_DATA) + "/../" + block.marks.at("same as");
    return test::read_file(path).find(block.text()) != std::string::npos;
}

// A file that the other blocks of its document speak of.
bool is_used(const docs::page_t& page, const docs::block_t& file) {
    const std::string path = file.marks.at("file");
    const std::string name = path.substr(path.rfind('/') + 1);
    return std::any_of(page.blocks.begin(), page.blocks.end(), [&](const docs::block_t& block) {
        return &block != &file && block.text().find(name) != std::string::npos;
    });
}

bool is_processed(const docs::block_t& block) {
    return block.has("run") || block.has("run inside");
}

// An output needs something to put it out; the output of a session stands in the session.
bool has_source(const docs::page_t& page, const docs::block_t& block) {
    const docs::block_t* before = &block;
    while (before != page.blocks.data() && (before->has("output") || before->has("prints"))) {
        --before;
    }
    return before->language == "cpp" || is_processed(*before);
}

bool is_run(const docs::page_t& page, const docs::block_t& block) {
    if (block.has("same as")) {
        return is_file_of_the_project(block);
    }
    if (block.has("output") || block.has("prints")) {
        return has_source(page, block);
    }
    if (block.has("file")) {
        return is_used(page, block);
    }
    if (block.has("not run")) {
        return may_be_left_unrun.count(block.language) != 0 && !block.marks.at("not run").empty();
    }
    if (block.language == "cpp") {
        return block.has("continues") || is_registered(page, block);
    }
    if (block.language == "console") {
        return std::string(KOBASE_SESSIONS).find(" " + page.name + " ") != std::string::npos;
    }
    return block.language == "calc" || (block.language == "xml" && is_processed(block));
}

class document : public testing::TestWithParam<std::string> {};

TEST_P(document, leaves_no_sample_unrun) {
    const docs::page_t page = docs::page_read(GetParam());
    EXPECT_EQ(page.faults, std::vector<std::string>());
    for (const docs::block_t& block : page.blocks) {
        SCOPED_TRACE(page.name + ":" + std::to_string(block.line));
        EXPECT_TRUE(is_run(page, block)) << "nothing runs this block, or its mark does not hold";
        for (const auto& mark : block.marks) {
            EXPECT_EQ(known_marks.count(mark.first), 1U) << "unknown mark: " << mark.first;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(docs, document, testing::ValuesIn(docs::page_names()),
                         docs::name_of_document);

TEST(documents, show_many_samples_of_each_kind) {
    std::map<std::string, unsigned> count;
    for (const std::string& name : docs::page_names()) {
        for (const docs::block_t& block : docs::page_read(name).blocks) {
            ++count[block.has("not run") ? "left unrun" : block.language];
        }
    }
    for (const auto& kind : count) {
        RecordProperty(kind.first, static_cast<int>(kind.second));
    }
    EXPECT_GT(count["calc"], 8U);
    EXPECT_GT(count["cpp"], 3U);
    EXPECT_GT(count["xml"], 2U);
    EXPECT_GT(count["console"], 8U);
}

} // namespace

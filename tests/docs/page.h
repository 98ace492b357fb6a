/// @file
/// The documents of the project, cut into their fenced blocks.
///
/// A block is what stands between two lines of three backquotes, the first of which names its
/// language. The comments before it say what is to be done with it; `tests/README.md` lists them.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace docs {

/// A fenced block.
struct block_t {
    std::string language;
    unsigned line = 0; ///< number of the line that opens it
    std::vector<std::string> lines;
    std::map<std::string, std::string> marks; ///< of the comments before it: key, rest

    bool has(const std::string& mark) const { return marks.count(mark) != 0; }
    std::string text() const; ///< the lines, each with its end
};

/// A document.
struct page_t {
    std::string name; ///< path below the top folder of the project
    std::vector<block_t> blocks;
    std::vector<std::string> faults; ///< what could not be read
};

/// Reads a document. Usage: page_read("docs/paths.md")
page_t page_read(const std::string& name);

/// The names of all documents of the project, sorted.
std::vector<std::string> page_names();

/// The names of the documents that have a block of a language, and with a mark if one is given.
std::vector<std::string> page_names_with(const std::string& language, const std::string& mark);

/// The block marked `mark` that belongs to a block: it stands behind it, and before the next one
/// that is neither output nor print. Null when there is none.
const block_t* shown_behind(const page_t& page, const block_t& block, const std::string& mark);

/// Puts the blocks marked "file" into the current folder.
void files_write(const page_t& page);

/// A name that may be part of a test's name.
std::string test_name(const std::string& page);

/// The name of a test that has a document as its parameter.
inline std::string name_of_document(const testing::TestParamInfo<std::string>& document) {
    return test_name(document.param);
}

} // namespace docs

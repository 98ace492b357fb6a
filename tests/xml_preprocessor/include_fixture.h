/// @file
/// Verbs for tests of "include".
#pragma once

#include <string>

#include "support/temp_dir.h"
#include "xml_preprocessor/fixture.h"

namespace test {

/// A test with a folder of files and a preprocessor, without a cache.
class include_test_t : public preprocessor_test_t {
protected:
    explicit include_test_t(ko::xpp::file_cache_t* cache = nullptr)
        : preprocessor_test_t(cache) {}

    /// Writes a file with a root element around `content`.
    void write(const std::string& name, const std::string& content) {
        dir.write(name, wrapped(content));
    }

    /// Processes a file of the folder with `by` and prints what comes out.
    std::string process_file(preprocessor_t& by, const std::string& name) {
        sources.emplace_back();
        sources.back().load(dir.path(name));
        return printed(by.process(sources.back().root, flags));
    }
    std::string process_file(const std::string& name) { return process_file(preprocessor, name); }

    /// Whether the processing of a file fails with this whole message.
    testing::AssertionResult file_fails(const std::string& name, const std::string& message) {
        return throws([&] { process_file(name); }, message);
    }

    temp_dir_t dir;
};

} // namespace test

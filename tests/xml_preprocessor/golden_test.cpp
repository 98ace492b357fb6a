#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "xml_preprocessor/fixture.h"

namespace {

/// A source, with the document that it becomes beside it as `.out`, or the message of its failure
/// as `.err`.
struct golden_t {
    std::filesystem::path source;

    std::string beside(const char* extension) const {
        return std::filesystem::path(source).replace_extension(extension).string();
    }
    bool fails() const { return std::filesystem::exists(beside(".err")); }
};

void PrintTo(const golden_t& golden, std::ostream* out) {
    *out << golden.source.filename();
}

std::vector<golden_t> all_golden() {
    std::vector<golden_t> result;
    const std::filesystem::path folder = std::filesystem::path(KOBASE_TEST_DATA) / "golden";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".xml") {
            result.push_back({entry.path()});
        }
    }
    return result;
}

std::string name_of(const testing::TestParamInfo<golden_t>& info) {
    return info.param.source.stem().string();
}

class golden : public testing::TestWithParam<golden_t> {
protected:
    /// Processes the source, saves what comes out and gives back the bytes of the file.
    std::string processed() {
        ko::lxml::document_t source;
        source.load(GetParam().source.string());
        ko::lxml::document_t output;
        ko::xpp::preprocessor_t preprocessor(output, nullptr);
        output.root = preprocessor.process(source.root, ko::xpp::preprocessor_t::process_include);
        output.save(dir.path("out.xml"), true, true);
        return dir.read("out.xml");
    }

    test::temp_dir_t dir;
};

TEST_P(golden, comes_out_as_kept) {
    if (GetParam().fails()) {
        std::string message = test::read_file(GetParam().beside(".err"));
        ASSERT_FALSE(message.empty());
        message.pop_back(); // the line feed
        EXPECT_THROWS(processed(), message);
    } else {
        EXPECT_EQ(processed(), test::read_file(GetParam().beside(".out")));
    }
}

INSTANTIATE_TEST_SUITE_P(files, golden, testing::ValuesIn(all_golden()), name_of);

} // namespace

#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "support/allocations.h"
#include "support/temp_dir.h"
#include "xml_preprocessor/fixture.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;
using ko::xpp::file_cache_t;
using ko::xpp::preprocessor_t;

/// Keeps the lines that the library writes to standard output away, as long as it lives.
class quiet_t {
public:
    quiet_t() : standard_output(std::cout.rdbuf(lines.rdbuf())) {}
    quiet_t(const quiet_t&) = delete;
    quiet_t& operator=(const quiet_t&) = delete;
    ~quiet_t() { std::cout.rdbuf(standard_output); }

private:
    std::ostringstream lines;
    std::streambuf* standard_output;
};

/// A source with every directive in it, and names that are too long for short strings.
class out_of_memory_preprocessor : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        dir.write("part.xml",
                  test::wrapped("<x:define name='a definition with a long name'>"
                                "<d attribute_with_a_long_name='a value that is long' e:n='i'/>"
                                "</x:define><included/>"));
        source.load_from_string(test::wrapped(
            "<x:include file='" + dir.path("part.xml") +
            "'/><x:specify namespace='a namespace with a long name' index='i' values='1,2'>"
            "<x:pragma><x:repeat index='j' first='1' last='2'>"
            "<x:insert e:name='\"a definition with a long name\"'/></x:repeat></x:pragma>"
            "</x:specify><x:switch condition='\"a condition that is long enough\"'>"
            "<x:case expression='\"a condition that is long enough\"'>"
            "<x:plugin name='a plug-in with a long name'/></x:case></x:switch>"
            "<x:for initialize='i=0' condition='i&lt;2' update='i=i+1'>"
            "<x:evaluate expression='k=i'/>a text that is too long for a short string"
            "</x:for>"));
        generated.atoms->get("shift");
        generated.load_from_string(test::wrapped("<x:if condition='1'><g e:i='i'/></x:if>"));
    }

    /// Processes in a new preprocessor, with one allocation failing, and once more in it when the
    /// failure came out. It need not: a sort goes on without room to work faster.
    /// @return what became of the first call
    std::string process_twice(long number) {
        document_t output;
        file_cache_t cache;
        preprocessor_t preprocessor(output, GetParam() ? &cache : nullptr);
        preprocessor.register_plugin("a plug-in with a long name",
                                     new test::generator_t(generated.root));
        const element_t* top = nullptr;
        const auto process = [&] {
            top = preprocessor.process(source.root, preprocessor_t::process_include);
        };
        const std::string first = test::outcome(process, number);
        if (top == nullptr) {
            EXPECT_EQ(first.substr(0, 14), "std::bad_alloc") << "allocation " << number;
            process();
        }
        EXPECT_EQ(test::printed(top), expected) << "allocation " << number;
        return first;
    }

    const std::string d = "<d attribute_with_a_long_name=\"a value that is long\" n=\"";
    const std::string expected = "<r ><included />" + d + "1\" />" + d + "1\" />" + d + "2\" />" +
                                 d + "2\" /><g i=\"2\" /></r>";
    test::temp_dir_t dir;
    document_t source;
    document_t generated;
};

TEST_P(out_of_memory_preprocessor, reports_every_failure_and_can_be_used_again) {
    const quiet_t quiet;
    long number = 0;
    while (process_twice(number) != "not reached") {
        ++number;
    }
    EXPECT_GT(test::tell(GetParam() ? "process with a cache" : "process", number), 200);
}

TEST_P(out_of_memory_preprocessor, construction_that_fails_leaves_nothing_behind) {
    document_t output;
    file_cache_t cache;
    EXPECT_GT(test::fail_each("construct a preprocessor",
                              [&] { preprocessor_t(output, GetParam() ? &cache : nullptr); }),
              3);
}

TEST_P(out_of_memory_preprocessor, registration_that_fails_leaves_the_plugin_to_the_caller) {
    auto plugin = std::make_unique<test::generator_t>(generated.root);
    {
        document_t output;
        preprocessor_t preprocessor(output, nullptr);
        const auto add = [&] {
            preprocessor.register_plugin("a plug-in with a long name", plugin.get());
        };
        for (long number = 0; number < 2; ++number) {
            EXPECT_EQ(test::outcome(add, number), "std::bad_alloc") << number;
        }
    }
    EXPECT_EQ(plugin->generate(nullptr), generated.root);
}

INSTANTIATE_TEST_SUITE_P(without_and_with_cache, out_of_memory_preprocessor, testing::Bool());

} // namespace

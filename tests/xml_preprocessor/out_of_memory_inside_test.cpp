#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

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

TEST_P(out_of_memory_preprocessor, leaves_out_the_line_of_an_expression_for_want_of_memory) {
    document_t failing;
    failing.load_from_string(test::wrapped("<a e:v='a_name_that_is_not_defined_anywhere'/>"));
    long left_out = 0;
    std::string message;
    for (long number = 0; message != "not reached"; ++number) {
        document_t output;
        file_cache_t cache;
        preprocessor_t preprocessor(output, GetParam() ? &cache : nullptr);
        const element_t* top = nullptr;
        const auto process = [&] {
            top = preprocessor.process(failing.root, preprocessor_t::process_include);
        };
        const std::string line =
            test::standard_output([&] { message = test::outcome(process, number); });
        if (message == "no exception") {
            left_out += line.empty() ? 1 : 0;
            EXPECT_EQ(test::printed(top),
                      "<r ><a v=\"a_name_that_is_not_defined_anywhere\" /></r>");
        }
    }
    EXPECT_GT(test::tell("a line about an expression", left_out), 0);
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

/// Asks where it is whenever it is told something.
class asking_t : public ko::xpp::observer_t {
public:
    using place_t = ko::xpp::place_t;

    explicit asking_t(const preprocessor_t& by) : preprocessor(by) {}
    void file_opened(const std::string&) override { ask(); }
    void expression_failed(const place_t&, const std::string&, const std::string&) override {
        ask();
    }
    void directive_unknown(const place_t&, const std::string&) override { ask(); }
    void text_dropped(const place_t&) override { ask(); }
    void element_made(const element_t&, const element_t&) override { ask(); }

    std::size_t answers = 0;

private:
    void ask() { answers += preprocessor.trace_get().size(); }

    const preprocessor_t& preprocessor;
};

/// A source that fails in a file in a loop, after everything that an observer is told of.
class out_of_memory_trace : public out_of_memory_preprocessor {
protected:
    void SetUp() override {
        dir.write(
            "failing.xml",
            test::wrapped("a text that is too long for a short string"
                          "<a e:attribute_with_a_long_name='an expression that fails +'/>"
                          "<x:directive_that_is_not_known/><x:insert name='a long name that "
                          "is not defined'/>"));
        source.load_from_string(
            test::wrapped("<x:repeat index='an_index_with_a_long_name' first='1' last='2'>"
                          "<x:include file='file'/></x:repeat>"));
    }

    /// Processes with one allocation failing.
    /// @return what became of it, and how many places the trace has
    std::pair<std::string, std::size_t> process(long number) {
        document_t output;
        file_cache_t cache;
        preprocessor_t preprocessor(output, GetParam() ? &cache : nullptr);
        asking_t asking(preprocessor);
        preprocessor.observer_set(&asking);
        preprocessor.resolver_set(
            [this](const std::string&, const element_t&) { return dir.path("failing.xml"); });
        const std::string first = test::outcome(
            [&] { preprocessor.process(source.root, preprocessor_t::process_include); }, number);
        return {first, preprocessor.trace_get().size()};
    }
};

TEST_P(out_of_memory_trace, is_whole_or_empty_and_the_failure_as_it_was) {
    const quiet_t quiet;
    const std::string failure = "insert name not defined: a long name that is not defined";
    std::pair<std::string, std::size_t> last;
    long number = 0;
    for (; last.first != failure || last.second == 0; ++number) {
        last = process(number);
        EXPECT_TRUE(last.first == failure || last.first.substr(0, 14) == "std::bad_alloc")
            << last.first;
        EXPECT_LE(last.second, 3U);
    }
    EXPECT_EQ(last.second, 3U);
    EXPECT_GT(test::tell(GetParam() ? "a failure with a cache" : "a failure", number), 100);
}

/// A preprocessor after a call that failed, and what a host asks it and tells it between calls.
class out_of_memory_host : public out_of_memory_trace {
protected:
    void SetUp() override {
        out_of_memory_trace::SetUp();
        preprocessor.resolver_set(
            [this](const std::string&, const element_t&) { return dir.path("failing.xml"); });
        const quiet_t quiet;
        EXPECT_ANY_THROW(preprocessor.process(source.root, preprocessor_t::process_include));
    }

    file_cache_t cache;
    document_t output;
    preprocessor_t preprocessor{output, GetParam() ? &cache : nullptr};
};

TEST_P(out_of_memory_host, is_told_the_trace_again_after_a_failure_to_tell_it) {
    const auto ask = [&] {
        EXPECT_EQ(preprocessor.trace_get().size(), 3U);
    };
    EXPECT_GT(test::fail_each("trace_get", ask), 3);
    ask();
}

TEST_P(out_of_memory_host, is_told_the_files_again_after_a_failure_to_tell_them) {
    const std::vector<std::string> expected_files{dir.path("failing.xml")};
    std::vector<std::string> files;
    EXPECT_GT(test::fail_each("files_get", [&] { files = preprocessor.files_get(); }), 1);
    EXPECT_EQ(files, expected_files);
}

TEST_P(out_of_memory_host, keeps_the_resolver_that_it_had) {
    const std::string path = dir.path("good.xml");
    dir.write("good.xml", "<part><a/></part>");
    long number = 0;
    const auto replace = [&] {
        preprocessor.resolver_set([path](const std::string&, const element_t&) { return path; });
    };
    for (; test::outcome(replace, number) != "not reached"; ++number) {
        const quiet_t quiet;
        EXPECT_ANY_THROW(preprocessor.process(source.root, preprocessor_t::process_include));
        EXPECT_EQ(preprocessor.files_get().size(), GetParam() ? 0U : 1U)
            << "allocation " << number;
    }
    EXPECT_GT(test::tell("resolver_set", number), 0);
    EXPECT_NE(preprocessor.process(source.root, preprocessor_t::process_include), nullptr);
}

TEST_P(out_of_memory_host, sets_an_argument_or_leaves_it) {
    const std::string name = "an argument with a long name";
    const std::string value = "a value that is too long for a short string";
    const ko::alg::algebra_t& algebra = preprocessor.algebra_get();
    const auto set = [&] {
        preprocessor.insert_argument(name, value);
    };
    for (long number = 0; test::outcome(set, number) != "not reached"; ++number) {
        EXPECT_FALSE(algebra.find(name)) << "allocation " << number;
    }
    EXPECT_EQ(algebra.get(name).string_get(false, 0), value);
    EXPECT_EQ(test::fail_each("set an argument to a number",
                              [&] { preprocessor.insert_argument(name, 5000000000LL); }),
              0);
    EXPECT_EQ(algebra.get(name).string_get(false, 0), "5e+09");
}

TEST_P(out_of_memory_host, allocates_nothing_for_limits_observer_and_evaluator) {
    asking_t asking(preprocessor);
    ko::xpp::limits_t limits = preprocessor.limits_get();
    limits.passes = 1;
    EXPECT_EQ(test::fail_each("limits_set, observer_set and algebra_get",
                              [&] {
                                  preprocessor.limits_set(limits);
                                  preprocessor.observer_set(&asking);
                                  preprocessor.algebra_get();
                              }),
              0);
    EXPECT_EQ(preprocessor.limits_get().passes, 1U);
}

/// Gives the source a name that nobody has used before.
class naming_t : public ko::xpp::plugin_t {
public:
    element_t* generate(element_t* directive) override {
        directive->document->atoms->get("a name that is too long for a short string");
        return nullptr;
    }
};

// The table of the included files then lacks a name of the source.
TEST(out_of_memory_at_the_end, leaves_the_result) {
    const test::temp_dir_t dir;
    const std::string path = dir.write("part.xml", test::wrapped("<b/>"));
    const std::string text =
        test::wrapped("<x:include file='" + path + "'/><x:plugin name='naming'/>");
    const quiet_t quiet;
    long without = 0;
    std::string message;
    for (long number = 0; message != "not reached"; ++number) {
        document_t source;
        source.load_from_string(text);
        document_t output;
        preprocessor_t preprocessor(output, nullptr);
        preprocessor.register_plugin("naming", new naming_t);
        const element_t* top = nullptr;
        const auto process = [&] {
            top = preprocessor.process(source.root, preprocessor_t::process_include);
        };
        message = test::outcome(process, number);
        if (message == "no exception") {
            ++without;
            EXPECT_EQ(test::printed(top), "<r ><b /></r>");
        }
    }
    EXPECT_GT(test::tell("the end of a run", without), 0);
}

INSTANTIATE_TEST_SUITE_P(without_and_with_cache, out_of_memory_host, testing::Bool());
INSTANTIATE_TEST_SUITE_P(without_and_with_cache, out_of_memory_trace, testing::Bool());
INSTANTIATE_TEST_SUITE_P(without_and_with_cache, out_of_memory_preprocessor, testing::Bool());

} // namespace

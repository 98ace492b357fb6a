/// @file
/// Verbs for tests of the preprocessor.
#pragma once

#include <gtest/gtest.h>

#include <list>
#include <sstream>
#include <string>

#include "support/throws.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace test {

using ko::lxml::document_t;
using ko::lxml::element_t;
using ko::xpp::preprocessor_t;

/// The opening and closing tag of an element `r` that binds "x" to the namespace of directives
/// and "e" to that of expression attributes, around `content`.
inline std::string wrapped(const std::string& content) {
    return "<r xmlns:x=\"kobase.org/xmlns/xmlpreprocessor\" "
           "xmlns:e=\"kobase.org/xmlns/xmlpreprocessor/expressionevaluator\">" +
           content + "</r>";
}

/// A tree as text, without a declaration; "null" for none.
inline std::string printed(const element_t* element) {
    if (element == nullptr) {
        return "null";
    }
    std::ostringstream out;
    element->print(out, 0, 0, true, false);
    return out.str();
}

/// Standard output of an action.
template <class A> std::string standard_output(A&& action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

/// A plug-in that generates an element that the test made.
class generator_t : public ko::xpp::plugin_t {
public:
    explicit generator_t(element_t* top) : generated(top) {}
    element_t* generate(element_t*) override { return generated; }

private:
    element_t* generated;
};

/// A test with a preprocessor, and with sources that live as long as it.
class preprocessor_test_t : public testing::Test {
protected:
    explicit preprocessor_test_t(ko::xpp::file_cache_t* cache = nullptr)
        : preprocessor(output, cache) {}

    /// The top element of a new source.
    element_t* source(const std::string& text) {
        sources.emplace_back();
        sources.back().load_from_string(text);
        return sources.back().root;
    }

    /// Processes a whole document and prints what comes out.
    std::string process(const std::string& text) {
        return printed(preprocessor.process(source(text), flags));
    }

    /// Processes `content` inside an element `r` and prints what comes out inside of it.
    std::string run(const std::string& content) {
        const std::string all = process(wrapped(content));
        const std::string open = "<r >";
        const std::string close = "</r>";
        if (all == "<r />") {
            return "";
        }
        return all.substr(open.size(), all.size() - open.size() - close.size());
    }

    /// Whether `content` fails with this whole message.
    testing::AssertionResult fails(const std::string& content, const std::string& message) {
        return throws([&] { run(content); }, message);
    }

    std::list<document_t> sources;
    document_t output;
    preprocessor_t preprocessor;
    preprocessor_t::flags_e flags = preprocessor_t::process_include;
};

} // namespace test

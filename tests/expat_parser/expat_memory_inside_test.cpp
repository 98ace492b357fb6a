#include <dlfcn.h>
#include <expat.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <new>

#include "expat_parser/memory.h"
#include "lxml/lxml.h"
#include "support/allocations.h"
#include "support/temp_dir.h"
#include "support/trees.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

thread_local long allocations_left = -1; ///< of expat, before one fails; negative when none does

bool allocation_fails() {
    return allocations_left >= 0 && allocations_left-- == 0;
}

XML_Memory_Handling_Suite library; ///< the functions that the library gives to expat

void* allocate(std::size_t size) {
    return allocation_fails() ? nullptr : library.malloc_fcn(size);
}

void* reallocate(void* block, std::size_t size) {
    return allocation_fails() ? nullptr : library.realloc_fcn(block, size);
}

void release(void* block) {
    library.free_fcn(block);
}

constexpr XML_Memory_Handling_Suite memory = {allocate, reallocate, release};

} // namespace

// Takes the place of expat's own for the whole program: an allocation of expat can be made to
// fail.
extern "C" XML_Parser XML_ParserCreate_MM(const XML_Char* encoding,
                                          const XML_Memory_Handling_Suite* functions,
                                          const XML_Char* separator) {
    void* const own = dlsym(RTLD_NEXT, "XML_ParserCreate_MM");
    library = *functions;
    return reinterpret_cast<decltype(&XML_ParserCreate_MM)>(own)(encoding, &memory, separator);
}

// AddressSanitizer would end the program at a size that no system has.
extern "C" [[gnu::visibility("default")]] const char*
__asan_default_options() { // NOLINT(bugprone-reserved-identifier): its name
    return "allocator_may_return_null=1";
}

namespace {

using ko::lxml::document_t;

const std::string text = "<!DOCTYPE p:a [<!ENTITY entity 'the text of an entity'>]>"
                         "<p:a xmlns:p='urn:namespace' p:b='" +
                         std::string(3000, 'x') +
                         "'>&entity;<![CDATA[data]]><c xmlns='urn:other'/>" +
                         std::string(9000, 'y') + "</p:a>";

/// What became of an action whose allocation number `number` by expat, counted from 0, failed:
/// the first words of its message.
template <class A> std::string outcome(A&& action, long number) {
    std::string message = "no exception";
    allocations_left = number;
    try {
        action();
        message = allocations_left >= 0 ? "not reached" : message;
    } catch (const ko::errorcode_t& e) {
        message = e.what();
    } catch (const std::bad_alloc&) {
        message = "bad_alloc";
    }
    allocations_left = -1;
    return message.substr(0, message.find(" line="));
}

/// How often each outcome comes when every allocation by expat fails in turn.
template <class A> std::map<std::string, int> outcomes(const char* operation, A&& action) {
    std::map<std::string, int> counts;
    for (long number = 0;; ++number) {
        const std::string message = outcome(action, number);
        if (message == "not reached") {
            test::tell(operation, number);
            return counts;
        }
        ++counts[message];
    }
}

const std::string no_memory = XML_ErrorString(XML_ERROR_NO_MEMORY);

TEST(expat_memory, that_runs_out_while_a_text_is_read_is_reported) {
    const auto counts =
        outcomes("expat's, load a text", [] { document_t().load_from_string(text); });
    EXPECT_EQ(counts.size(), 2u);
    EXPECT_GT(counts.at("bad_alloc"), 0);
    EXPECT_GT(counts.at(no_memory), 0);
}

TEST(expat_memory, that_runs_out_while_a_file_is_read_is_reported) {
    const test::temp_dir_t dir;
    const std::string path = dir.write("a.xml", text);
    const auto counts = outcomes("expat's, load a file", [&] { document_t().load_raw(path); });
    EXPECT_EQ(counts.size(), 3u);
    EXPECT_GT(counts.at("bad_alloc"), 0);
    EXPECT_GT(counts.at(no_memory), 0);
    EXPECT_GT(counts.at("XML_GetBuffer: xml internal error"), 0);
}

TEST(expat_memory, that_runs_out_for_a_parser_is_thrown_by_load_as_it_is) {
    document_t doc;
    testing::internal::CaptureStdout();
    EXPECT_EQ(outcome([&] { doc.load("a.xml"); }, 0), "bad_alloc");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Caught exception in a.xml\n");
}

TEST(expat_memory, that_runs_out_while_a_file_is_included_is_reported) {
    const test::temp_dir_t dir;
    document_t source;
    source.load_from_string("<r xmlns:x='" + ko::xpp::default_xpp_uri + "'><x:include file='" +
                            dir.write("a.xml", text) + "'/></r>");
    document_t output;
    ko::xpp::preprocessor_t preprocessor(output, nullptr);
    const auto process = [&] {
        return preprocessor.process(source.root, ko::xpp::preprocessor_t::process_include);
    };
    testing::internal::CaptureStdout();
    const auto counts = outcomes("expat's, include a file", process);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(counts.size(), 3u);
    EXPECT_GT(counts.at("bad_alloc"), 0);
    EXPECT_GT(counts.at(no_memory), 0);
    EXPECT_GT(counts.at("XML_GetBuffer: xml internal error"), 0);
    EXPECT_EQ(test::shape(process()), "r(c)");
}

TEST(expat_memory, that_ran_out_leaves_a_document_that_can_load) {
    document_t doc;
    EXPECT_GT(outcomes("expat's, load again", [&] { doc.load_from_string(text); }).size(), 1u);
    EXPECT_EQ(test::shape(doc.root), "a(c)");
}

TEST(expat_memory, that_the_system_refuses_is_not_charged) {
    ko::xml::expat_memory_t account;
    XML_ParserFree(account.parser_create(true)); // notes the functions that the library gives
    account.input_add(SIZE_MAX / 500);           // from now on the limit is all that there can be
    const ko::xml::expat_memory_t::use_t use(account);
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(library.malloc_fcn(SIZE_MAX / 2), nullptr);
        void* const block = library.realloc_fcn(nullptr, 10);
        EXPECT_NE(block, nullptr);
        EXPECT_EQ(library.realloc_fcn(block, SIZE_MAX / 2), nullptr);
        library.free_fcn(block);
        library.free_fcn(nullptr);
        EXPECT_FALSE(account.is_exceeded()) << "what was refused, or freed, counts";
    }
    EXPECT_EQ(library.malloc_fcn(SIZE_MAX / 2 + 1), nullptr);
    EXPECT_TRUE(account.is_exceeded());
}

} // namespace

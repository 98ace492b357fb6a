// The preprocessor: definitions, includes, plain elements and evaluated attributes.
#include "growth.h"

#include <memory>
#include <string>

#include "lxml/lxml.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

using bench::many;
using bench::size_of;
using ko::lxml::document_t;
using ko::lxml::element_t;
using ko::xpp::file_cache_t;
using ko::xpp::preprocessor_t;

/// A document around some content, with both namespaces of the preprocessor.
std::string wrapped(const std::string& content) {
    return "<r xmlns:x='" + ko::xpp::default_xpp_uri + "' xmlns:e='" + ko::xpp::default_xpr_uri +
           "'>" + content + "</r>";
}

/// Processes a text again and again, which has to give `count` children.
void process(benchmark::State& state, const std::string& text, std::size_t count,
             file_cache_t* cache = nullptr) {
    document_t source;
    source.load_from_string(text);
    for (auto _ : state) {
        document_t output;
        preprocessor_t preprocessor(output, cache);
        const element_t* const top =
            preprocessor.process(source.root, preprocessor_t::process_include);
        if (top->children.size() != count) {
            state.SkipWithError("another number of children came out");
        }
    }
}

void elements_process(benchmark::State& state) {
    const std::size_t count = size_of(state);
    process(state, wrapped(many(count, "<n# a#='1'/>")), count);
}

void evaluated_attributes_process(benchmark::State& state) {
    const std::size_t count = size_of(state);
    process(state, wrapped(many(count, "<a e:i='#+1'/>")), count);
}

void depth_process(benchmark::State& state) {
    const std::size_t levels = size_of(state);
    process(state, wrapped(many(levels, "<a>") + many(levels, "</a>")), 1);
}

void attributes_process(benchmark::State& state) {
    process(state, wrapped("<a" + many(size_of(state), " n#='1'") + "/>"), 1);
}

void definitions_process(benchmark::State& state) {
    const std::size_t count = size_of(state);
    process(state,
            wrapped(many(count, "<x:define name='d#'><a/></x:define>") +
                    many(count, "<x:insert name='d#'/>")),
            count);
}

/// A document that a cache takes over.
document_t* part(file_cache_t& cache) {
    auto document = std::make_unique<document_t>(&cache.atom_table_get());
    document->load_from_string("<r><a/></r>");
    return document.release();
}

void includes_of_one_file_process(benchmark::State& state) {
    const std::size_t count = size_of(state);
    file_cache_t cache;
    cache.insert("part.xml", part(cache));
    process(state, wrapped(many(count, "<x:include file='part.xml'/>")), count, &cache);
}

void includes_of_as_many_files_process(benchmark::State& state) {
    const std::size_t count = size_of(state);
    file_cache_t cache;
    for (std::size_t i = 0; i < count; ++i) {
        cache.insert("part" + std::to_string(i) + ".xml", part(cache));
    }
    process(state, wrapped(many(count, "<x:include file='part#.xml'/>")), count, &cache);
}

BENCHMARK(elements_process)->Apply(bench::sizes);
BENCHMARK(evaluated_attributes_process)->Apply(bench::sizes);
BENCHMARK(depth_process)->Apply(bench::sizes);
BENCHMARK(attributes_process)->Apply(bench::sizes);
BENCHMARK(definitions_process)->Apply(bench::sizes);
BENCHMARK(includes_of_one_file_process)->Apply(bench::sizes);
BENCHMARK(includes_of_as_many_files_process)->Apply(bench::sizes);

} // namespace

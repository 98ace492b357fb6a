// The library's side of the workloads with the preprocessor.
#include "xml_preprocessor/xml_preprocessor.h"

#include <list>
#include <memory>
#include <string>

#include "lxml/lxml.h"
#include "preprocessed.h"
#include "tally.h"
#include "workload.h"

namespace {

using bench::tally_t;
using ko::lxml::document_t;
using ko::lxml::element_t;
using ko::xpp::file_cache_t;
using ko::xpp::preprocessor_t;

/// A document around some directives.
std::string wrapped(const std::string& content) {
    return "<r xmlns:x='" + ko::xpp::default_xpp_uri + "' xmlns:e='" + ko::xpp::default_xpr_uri +
           "'>" + content + "</r>";
}

double tally_of(const element_t& top) {
    tally_t tally;
    std::list<const element_t*> open{&top};
    while (!open.empty()) {
        const element_t& e = *open.front();
        open.pop_front();
        tally.element(e.name_get());
        for (const ko::lxml::attribute_t* attribute : e.attributes) {
            tally.attribute(attribute->name_get(), attribute->value);
        }
        tally.text(e.text);
        open.insert(open.begin(), e.children.begin(), e.children.end());
    }
    return tally.number();
}

/// A preprocessor with its output and, if wanted, its cache.
class run_t {
public:
    explicit run_t(bool cached) : preprocessor(output, cached ? &cache : nullptr) {}

    file_cache_t cache;
    document_t output;
    preprocessor_t preprocessor;
    element_t* top = nullptr;
};

/// Processes a document, each time with a preprocessor of its own.
void process(benchmark::State& state, std::size_t items, document_t& source, bool cached) {
    std::unique_ptr<run_t> run;
    bench::measure(state, items,
                   {[&] { run = std::make_unique<run_t>(cached); },
                    [&] {
                        run->top = run->preprocessor.process(source.root,
                                                             preprocessor_t::process_include);
                    },
                    [&] {
                        return tally_of(*run->top);
                    }});
}

void process(benchmark::State& state, std::size_t items, const std::string& text) {
    document_t source;
    source.load_from_string(text);
    process(state, items, source, false);
}

/// Processes a document that lies in a folder with the files that it includes.
void process_includes(benchmark::State& state, const std::string& text, bool cached) {
    const bench::scratch_folder_t folder;
    bench::parts_write(folder);
    folder.write("whole.xml", wrapped(text));
    document_t source;
    source.load(folder.file("whole.xml"));
    process(state, bench::includes(), source, cached);
}

void loop(benchmark::State& state) {
    const std::size_t count = bench::loop_passes();
    process(state, count,
            wrapped("<x:repeat index='n' first='1' last='" + std::to_string(count) +
                    "'><amp e:id='n' e:address='n*2+1' e:name='\"amplifier \"+n'/></x:repeat>"));
}

void include_files(benchmark::State& state) {
    process_includes(
        state, bench::directives(bench::includes(), "<x:include file='part", ".xml'/>"), true);
}

void include_one_file(benchmark::State& state, bool cached) {
    process_includes(
        state, bench::directives(bench::includes(), "<x:include file='part", ".xml'/>", false),
        cached);
}

void include_from_cache(benchmark::State& state) {
    include_one_file(state, true);
}

void include_without_cache(benchmark::State& state) {
    include_one_file(state, false);
}

void plain_elements(benchmark::State& state) {
    process(state, bench::sized(100000), bench::plain_elements());
}

void definition(benchmark::State& state) {
    const std::size_t count = bench::rows();
    process(state, count,
            wrapped("<x:define name='row'><row e:id='n' e:address='n*2+1'>"
                    "<x:if condition='n%2==0'><even/></x:if>"
                    "<x:switch condition='n%3'>"
                    "<x:case expression='0'><zone name='bar'/></x:case>"
                    "<x:case expression='1'><zone name='hall'/></x:case>"
                    "<x:default><zone name='terrace'/></x:default></x:switch>"
                    "</row></x:define>"
                    "<x:repeat index='n' first='1' last='" +
                    std::to_string(count) + "'><x:insert name='row'/></x:repeat>"));
}

void included_definition(benchmark::State& state) {
    const std::size_t count = bench::sized(10000);
    const bench::scratch_folder_t folder;
    folder.write("library.xml",
                 wrapped("<x:define name='row'><row id='1' gain='-3.5'/></x:define>"));
    folder.write("whole.xml",
                 wrapped("<x:include file='library.xml'/>"
                         "<x:repeat index='n' first='1' last='" +
                         std::to_string(count) + "'><x:insert name='row'/></x:repeat>"));
    document_t source;
    source.load(folder.file("whole.xml"));
    process(state, count, source, false);
}

constexpr bench::workload_t rows[] = {
    {"P1", loop},
    {"P2", include_files},
    {"P2c", include_from_cache},
    {"P2n", include_without_cache},
    {"P3", plain_elements},
    {"P4", definition},
    {"P4i", included_definition},
};
const bench::workloads_t workloads(rows);

} // namespace

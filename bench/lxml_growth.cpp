// Documents and queries: children, attributes, depth, distinct names, steps and filters.
#include "growth.h"

#include <list>
#include <ostream>
#include <streambuf>
#include <string>

#include "lxml/lxml.h"

namespace {

using bench::many;
using bench::size_of;
using namespace ko::lxml;

std::string with_children(std::size_t count) {
    return "<r>" + many(count, "<a i='1'/>") + "</r>";
}

std::string with_attributes(std::size_t count) {
    return "<r" + many(count, " n#='1'") + "/>";
}

std::string nested(std::size_t levels) {
    return "<r>" + many(levels, "<a i='1'>") + many(levels, "</a>") + "</r>";
}

std::string with_names(std::size_t count) {
    return "<r>" + many(count, "<n# a#='1'/>") + "</r>";
}

/// A stream buffer that takes everything and keeps nothing.
class sink_t : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void load(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        document_t document;
        document.load_from_string(text);
    }
}

void print(benchmark::State& state, const std::string& text) {
    document_t document;
    document.load_from_string(text);
    sink_t sink;
    std::ostream out(&sink);
    for (auto _ : state) {
        document.root->print(out, 0, 0, true, true);
    }
}

void copy(benchmark::State& state, const std::string& text) {
    document_t document;
    document.load_from_string(text);
    for (auto _ : state) {
        const document_t other(document);
    }
}

void remove(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        state.PauseTiming();
        document_t document;
        document.load_from_string(text);
        state.ResumeTiming();
        document.root->children_delete();
    }
}

/// Selects again and again what a path names, which has to be `count` nodes.
void select(benchmark::State& state, const std::string& text, const std::string& path,
            std::size_t count) {
    document_t document;
    document.load_from_string(text);
    for (auto _ : state) {
        std::list<node_t*> nodes;
        document.root->select_nodes(path, nodes);
        if (nodes.size() != count) {
            state.SkipWithError("another number of nodes was selected");
        }
    }
}

void children_load(benchmark::State& state) {
    load(state, with_children(size_of(state)));
}

void children_print(benchmark::State& state) {
    print(state, with_children(size_of(state)));
}

void children_copy(benchmark::State& state) {
    copy(state, with_children(size_of(state)));
}

void children_delete(benchmark::State& state) {
    remove(state, with_children(size_of(state)));
}

void children_select(benchmark::State& state) {
    select(state, with_children(size_of(state)), "a", size_of(state));
}

void children_select_with_filter(benchmark::State& state) {
    select(state, with_children(size_of(state)), "a[@i=\"1\"]", size_of(state));
}

void attributes_load(benchmark::State& state) {
    load(state, with_attributes(size_of(state)));
}

void attributes_print(benchmark::State& state) {
    print(state, with_attributes(size_of(state)));
}

void attributes_copy(benchmark::State& state) {
    copy(state, with_attributes(size_of(state)));
}

void attributes_set(benchmark::State& state) {
    for (auto _ : state) {
        document_t document;
        element_t* const element = document.element_create("r", "");
        for (std::size_t i = 0; i < size_of(state); ++i) {
            element->attribute_set("n" + std::to_string(i), "1");
        }
    }
}

void attributes_get(benchmark::State& state) {
    document_t document;
    document.load_from_string(with_attributes(size_of(state)));
    for (auto _ : state) {
        for (std::size_t i = 0; i < size_of(state); ++i) {
            benchmark::DoNotOptimize(document.root->attribute_get("n" + std::to_string(i)));
        }
    }
}

void depth_load(benchmark::State& state) {
    load(state, nested(size_of(state)));
}

void depth_print(benchmark::State& state) {
    print(state, nested(size_of(state)));
}

void depth_copy(benchmark::State& state) {
    copy(state, nested(size_of(state)));
}

void depth_delete(benchmark::State& state) {
    remove(state, nested(size_of(state)));
}

void distinct_names_load(benchmark::State& state) {
    load(state, with_names(size_of(state)));
}

void distinct_names_copy(benchmark::State& state) {
    copy(state, with_names(size_of(state)));
}

void steps_select(benchmark::State& state) {
    const std::size_t steps = size_of(state);
    select(state, nested(steps), "a" + many(steps - 1, "/a"), 1);
}

void filters_select(benchmark::State& state) {
    const std::size_t steps = size_of(state);
    select(state, nested(steps), "a[@i=\"1\"]" + many(steps - 1, "/a[@i=\"1\"]"), 1);
}

BENCHMARK(children_load)->Apply(bench::sizes);
BENCHMARK(children_print)->Apply(bench::sizes);
BENCHMARK(children_copy)->Apply(bench::sizes);
BENCHMARK(children_delete)->Apply(bench::sizes);
BENCHMARK(children_select)->Apply(bench::sizes);
BENCHMARK(children_select_with_filter)->Apply(bench::sizes);
BENCHMARK(attributes_load)->Apply(bench::sizes);
BENCHMARK(attributes_print)->Apply(bench::sizes);
BENCHMARK(attributes_copy)->Apply(bench::sizes);
BENCHMARK(attributes_set)->Apply(bench::sizes);
BENCHMARK(attributes_get)->Apply(bench::sizes);
BENCHMARK(depth_load)->Apply(bench::sizes);
BENCHMARK(depth_print)->Apply(bench::sizes);
BENCHMARK(depth_copy)->Apply(bench::sizes);
BENCHMARK(depth_delete)->Apply(bench::sizes);
BENCHMARK(distinct_names_load)->Apply(bench::sizes);
BENCHMARK(distinct_names_copy)->Apply(bench::sizes);
BENCHMARK(steps_select)->Apply(bench::sizes);
BENCHMARK(filters_select)->Apply(bench::sizes);

} // namespace

// What the memory of the machine costs: standard containers, to compare the other rows with. Both
// grow faster than their own n and n log n as soon as they do not fit into the caches any more.
#include "growth.h"

#include <list>
#include <map>
#include <string>

namespace {

using bench::size_of;

std::string text_of(std::size_t number) {
    return "a text that is too long for a short string " + std::to_string(number);
}

void reference_list_of_strings(benchmark::State& state) {
    for (auto _ : state) {
        std::list<std::string> list;
        for (std::size_t i = 0; i < size_of(state); ++i) {
            list.push_back(text_of(i));
        }
    }
}

void reference_map_of_strings(benchmark::State& state) {
    for (auto _ : state) {
        std::map<std::string, int> map;
        for (std::size_t i = 0; i < size_of(state); ++i) {
            map.emplace(text_of(i), 1);
        }
    }
}

BENCHMARK(reference_list_of_strings)->Apply(bench::sizes);
BENCHMARK(reference_map_of_strings)->Apply(bench::sizes);

} // namespace

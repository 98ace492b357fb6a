/// @file
/// What the measurements of growth share.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

namespace bench {

/// The text of `count` copies of `pattern`, in each of which the number of the copy, counted from
/// 0, stands for every '#'.
inline std::string many(std::size_t count, const std::string& pattern) {
    std::string text;
    for (std::size_t number = 0; number < count; ++number) {
        for (const char c : pattern) {
            if (c == '#') {
                text += std::to_string(number);
            } else {
                text += c;
            }
        }
    }
    return text;
}

/// The size that a run measures.
inline std::size_t size_of(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Measures at 1000, 10,000, 100,000 and 1,000,000.
inline void sizes(benchmark::internal::Benchmark* row) {
    row->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond)->MinTime(0.05);
}

} // namespace bench

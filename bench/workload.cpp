// The program of one side: measures its workloads, all or those named, by Google Benchmark.
// Usage: kobase_SIDE [--divide=N] [--iterations=N] [--list] [OPTION OF GOOGLE BENCHMARK...]
//                    [WORKLOAD...]
// --divide makes the inputs N times smaller; --iterations fixes the number of iterations.
#include "workload.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace bench {

namespace {

std::size_t divide = 1;
benchmark::IterationCount iterations = 0;

/// A function of its own and not inlined, so that instructions can be counted in it alone.
[[gnu::noinline]] void counted(const std::function<void()>& run) {
    run();
}

void give(benchmark::State& state, double value, std::size_t items, double check) {
    state.counters["value"] = value;
    state.counters["items"] = static_cast<double>(items);
    state.counters["check"] = check;
}

/// The number behind `option` when `argument` begins with it.
bool takes(const char* argument, const char* option, long& number) {
    const std::size_t length = std::strlen(option);
    if (std::strncmp(argument, option, length) != 0) {
        return false;
    }
    number = std::max(1L, std::strtol(argument + length, nullptr, 10));
    return true;
}

/// Takes this program's own options and the names out of the arguments.
std::vector<std::string> arguments_take(int& argc, char** argv) {
    std::vector<std::string> names;
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        long number = 0;
        if (takes(argv[i], "--divide=", number)) {
            divide = static_cast<std::size_t>(number);
        } else if (takes(argv[i], "--iterations=", number)) {
            iterations = number;
        } else if (argv[i][0] != '-' || std::strcmp(argv[i], "--list") == 0) {
            names.emplace_back(argv[i]);
        } else {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    return names;
}

void add(const workload_t& workload) {
    auto* const row = benchmark::RegisterBenchmark(workload.name, workload.measure);
    const auto fixed = iterations != 0 ? iterations : workload.iterations;
    if (fixed != 0) {
        row->Iterations(fixed);
    }
}

} // namespace

std::size_t sized(std::size_t full) {
    return std::max<std::size_t>(full / divide, 1);
}

void measure(benchmark::State& state, std::size_t items, const operation_t& operation) {
    for (auto _ : state) {
        if (operation.prepare) {
            state.PauseTiming();
            operation.prepare();
            state.ResumeTiming();
        }
        counted(operation.run);
    }
    give(state, 0, items, operation.check());
}

void measure(benchmark::State& state, std::size_t items, const std::function<double()>& run) {
    double check = 0;
    measure(state, items,
            {nullptr, [&] { check = run(); },
             [&] {
                 return check;
             }});
}

void report(benchmark::State& state, std::size_t items, double amount, double check) {
    for (auto _ : state) {
        counted([] {});
    }
    give(state, amount / static_cast<double>(items), items, check);
}

} // namespace bench

int main(int argc, char** argv) {
    const std::vector<std::string> names = bench::arguments_take(argc, argv);
    const auto given = [&](const char* name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    const bool lists = given("--list");
    for (const auto* source = bench::workloads_t::all(); source; source = source->others()) {
        for (const bench::workload_t& workload : *source) {
            if (lists) {
                std::puts(workload.name);
            } else if (names.empty() || given(workload.name)) {
                bench::add(workload);
            }
        }
    }
    benchmark::Initialize(&argc, argv);
    if (!lists) {
        benchmark::RunSpecifiedBenchmarks();
    }
    return benchmark::ReportUnrecognizedArguments(argc, argv) ? 2 : 0;
}

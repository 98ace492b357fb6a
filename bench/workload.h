/// @file
/// What the sides of the workloads share: how an operation is measured.
///
/// A workload is a piece of work under a short name, such as E1. Each library that can do it is a
/// side: a program of its own that knows the workload by that name. A side gives a check number,
/// a value made from the results of the work, which is the same for all sides.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>

namespace bench {

/// A workload's name and the benchmark that measures it.
struct workload_t {
    const char* name = nullptr;
    void (*measure)(benchmark::State&) = nullptr;
    benchmark::IterationCount iterations = 0; ///< where preparing takes long; else 0
};

/// Makes the workloads of a source known to the program; one static object a source.
class workloads_t {
public:
    template <std::size_t count>
    explicit workloads_t(const workload_t (&rows)[count]) noexcept
        : first(rows), last(rows + count), next(head) {
        head = this;
    }

    const workload_t* begin() const { return first; }
    const workload_t* end() const { return last; }
    const workloads_t* others() const { return next; }

    /// The object made last, from which `others` leads to those before; null without any.
    static const workloads_t* all() { return head; }

private:
    const workload_t* first;
    const workload_t* last;
    const workloads_t* next;

    static inline const workloads_t* head = nullptr;
};

/// The size of a workload: `full`, or less of it when the program was told to divide.
std::size_t sized(std::size_t full);

/// The work of one iteration.
struct operation_t {
    std::function<void()> prepare; ///< comes before `run`, untimed; may be empty
    std::function<void()> run;     ///< what is measured
    std::function<double()> check; ///< the check number of the last `run`; untimed
};

/// Measures an operation that handles `items` items; the result is the time of one.
void measure(benchmark::State& state, std::size_t items, const operation_t& operation);

/// The same without preparation; `run` gives the check number.
void measure(benchmark::State& state, std::size_t items, const std::function<double()>& run);

/// Gives a figure that is no time, an item's share of `amount`.
void report(benchmark::State& state, std::size_t items, double amount, double check);

} // namespace bench

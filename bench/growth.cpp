// Measures how the cost of an input grows with its size, from a thousand to a million, and prints
// a table with a row an operation. The exit status is 0 when no row grows faster than n log n.
#include "growth.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

/// How much faster than n log n a row may grow from one size to the next. Larger inputs miss the
/// processor's caches more often, which costs several times as much an item; a quadratic cost is
/// beyond it by far: it grows by 7.5 to 8.3 times n log n.
constexpr double caches = 4;

struct point_t {
    double size;
    double time; ///< in milliseconds
};

using rows_t = std::map<std::string, std::vector<point_t>>;

double n_log_n(double n) {
    return n * std::log(n);
}

/// The largest growth from one size to the next, as a multiple of the growth of n log n.
double growth_of(const std::vector<point_t>& row) {
    double largest = 0;
    for (std::size_t i = 1; i < row.size(); ++i) {
        const double growth = row[i].time / row[i - 1].time;
        const double allowed = n_log_n(row[i].size) / n_log_n(row[i - 1].size);
        largest = std::fmax(largest, growth / allowed);
    }
    return largest;
}

/// Collects the points of every row and prints the table at the end.
class table_t : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const std::string& name = run.run_name.function_name;
            if (run.error_occurred) {
                std::printf("%s: %s\n", name.c_str(), run.error_message.c_str());
                failed = true;
                continue;
            }
            if (rows.find(name) == rows.end()) {
                order.push_back(name);
            }
            rows[name].push_back({std::stod(run.run_name.args), run.GetAdjustedCPUTime()});
        }
    }

    void Finalize() override {
        std::printf("| milliseconds | 10^3 | 10^4 | 10^5 | 10^6 | growth / n log n |\n"
                    "| --- | --- | --- | --- | --- | --- |\n");
        for (const std::string& name : order) {
            print(name, rows.at(name));
        }
    }

    bool good() const { return !failed && !order.empty(); }

private:
    void print(const std::string& name, const std::vector<point_t>& row) {
        std::printf("| %s |", name.c_str());
        for (const point_t& point : row) {
            std::printf(" %.3g |", point.time);
        }
        const double growth = growth_of(row);
        std::printf(" %.2f%s |\n", growth, growth > caches ? " TOO MUCH" : "");
        failed = failed || growth > caches;
    }

    rows_t rows;
    std::vector<std::string> order;
    bool failed = false;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    table_t table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.good() ? 0 : 1;
}

// The library's side of the workloads with expressions.
#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "expressions.h"
#include "workload.h"

namespace {

using bench::batch;
using ko::alg::algebra_t;
using ko::alg::result_t;

/// An evaluator with some variables and a program.
class program_t {
public:
    program_t() {
        algebra.assign("a", bench::values_of_a[0]);
        algebra.assign("b", bench::value_of_b);
        algebra.assign("c", bench::value_of_c);
        algebra.assign("z", 0);
        algebra.assign("s", bench::text_s);
        algebra.assign("t", bench::text_t);
        algebra.assign("w", bench::text_w);
    }

    void variables_add(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            algebra.assign("v" + std::to_string(i), 1);
        }
    }

    /// Parses a text and evaluates it a batch of times; before each, `change` is given its
    /// number.
    template <typename change_t>
    void evaluate(benchmark::State& state, const std::string& text, change_t change) {
        if (!algebra.parse(text)) {
            state.SkipWithError(algebra.parse_error_get().c_str());
            return;
        }
        bench::measure(state, batch, [&] {
            double sum = 0;
            for (std::size_t i = 0; i < batch; ++i) {
                change(i);
                sum += static_cast<double>(algebra.evaluate().float_get());
            }
            return sum;
        });
    }

    /// Evaluates while `a` is changed through a held reference.
    void evaluate(benchmark::State& state, const std::string& text) {
        result_t& a = algebra["a"];
        evaluate(state, text, [&](std::size_t i) { a = result_t(bench::values_of_a[i % 8]); });
    }

    /// Evaluates with the same `a` all the time.
    void evaluate_unchanged(benchmark::State& state, const std::string& text) {
        evaluate(state, text, [](std::size_t) {});
    }

    /// Evaluates a batch of texts, in turn.
    double evaluate(const std::vector<std::string>& texts) {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            sum += static_cast<double>(algebra.evaluate(texts[i % texts.size()]).float_get());
        }
        return sum;
    }

    algebra_t algebra;
};

void formula(benchmark::State& state) {
    program_t().evaluate(state, bench::formula);
}

void formula_by_name(benchmark::State& state) {
    program_t program;
    const std::string name = "a";
    program.evaluate(state, bench::formula, [&](std::size_t i) {
        program.algebra.assign(name, bench::values_of_a[i % 8]);
    });
}

void formula_among_variables(benchmark::State& state) {
    program_t program;
    program.variables_add(bench::further_variables);
    program.evaluate(state, bench::formula);
}

void texts_in_turn(benchmark::State& state) {
    program_t program;
    const std::vector<std::string> texts = bench::texts();
    bench::measure(state, batch, [&] { return program.evaluate(texts); });
}

void new_texts(benchmark::State& state) {
    program_t program;
    std::vector<std::string> texts;
    std::size_t number = 0;
    double sum = 0;
    bench::measure(state, batch,
                   {[&] { texts = bench::new_texts(number); },
                    [&] { sum = program.evaluate(texts); },
                    [&] {
                        return sum;
                    }});
}

void fresh_evaluators(benchmark::State& state) {
    const std::vector<std::string> texts = bench::constant_texts();
    bench::measure(state, batch, [&] {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            result_t value;
            ko::alg::algebra(texts[i % texts.size()], value, true);
            sum += static_cast<double>(value.float_get());
        }
        return sum;
    });
}

void functions(benchmark::State& state) {
    program_t program;
    result_t& a = program.algebra["a"];
    result_t& b = program.algebra["b"];
    program.evaluate(state, bench::functions, [&](std::size_t i) {
        a = result_t(bench::legs[i % 4].a);
        b = result_t(bench::legs[i % 4].b);
    });
}

void script_function(benchmark::State& state) {
    program_t program;
    program.algebra.macro_define("sq(x)", "x*x");
    program.evaluate_unchanged(state, bench::call);
}

void script_function_among_variables(benchmark::State& state) {
    program_t program;
    program.variables_add(bench::further_variables);
    program.algebra.macro_define("sq(x)", "x*x");
    benchmark::DoNotOptimize(&program.algebra["v0"]);
    program.evaluate_unchanged(state, bench::call);
}

void host_function(benchmark::State& state) {
    program_t program;
    program.algebra.define(
        "sq", +[](algebra_t&, result_t x) { return x * x; });
    program.evaluate_unchanged(state, bench::call);
}

void fibonacci(benchmark::State& state) {
    algebra_t algebra;
    algebra.macro_define("fib(n)", "n < 2 ? n : BEFORE");
    algebra.macro_define("BEFORE", "fib(n - 1) + fib(n - 2)");
    algebra.parse("fib(20)");
    bench::measure(state, bench::calls_of_fibonacci_20,
                   [&] { return double(algebra.evaluate().int_get()); });
}

void parse_terms(benchmark::State& state, std::size_t terms) {
    program_t program;
    const std::string text = bench::sum_of(terms);
    bench::measure(state, terms,
                   {nullptr, [&] { program.algebra.parse(text); },
                    [&] {
                        return double(program.algebra.evaluate().float_get());
                    }});
}

void parse_1000_terms(benchmark::State& state) {
    parse_terms(state, bench::sized(1000));
}

void parse_10000_terms(benchmark::State& state) {
    parse_terms(state, bench::sized(10000));
}

void parse_100000_terms(benchmark::State& state) {
    parse_terms(state, bench::sized(100000));
}

void join_texts(benchmark::State& state) {
    program_t program;
    program.algebra.parse("s+\"-\"+t");
    bench::measure(state, batch, [&] {
        std::size_t length = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            length += program.algebra.evaluate().string_get(false, 0).size();
        }
        return double(length);
    });
}

void compare_texts(benchmark::State& state) {
    program_t().evaluate_unchanged(state, "(s+\"-\"+t)==w");
}

/// Copies an evaluator; the check number says that the copy works.
void copy(benchmark::State& state, algebra_t& algebra) {
    bench::measure(state, batch, [&] {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            const algebra_t other(algebra);
            sum += double(other.find("v0"));
        }
        return sum;
    });
}

void copy_empty(benchmark::State& state) {
    algebra_t algebra;
    copy(state, algebra);
}

void copy_with_variables(benchmark::State& state) {
    algebra_t algebra;
    for (int i = 0; i < 100; ++i) {
        algebra.assign("v" + std::to_string(i), i);
    }
    copy(state, algebra);
}

void copy_with_program(benchmark::State& state) {
    program_t program;
    program.algebra.parse(bench::formula);
    copy(state, program.algebra);
}

constexpr bench::workload_t rows[] = {
    {"E1", formula},
    {"E1n", formula_by_name},
    {"E1v", formula_among_variables},
    {"E2", texts_in_turn},
    {"E2u", new_texts},
    {"E2f", fresh_evaluators},
    {"E3", functions},
    {"E4", script_function},
    {"E4v", script_function_among_variables},
    {"E4h", host_function},
    {"E4r", fibonacci},
    {"E5-1k", parse_1000_terms},
    {"E5-10k", parse_10000_terms},
    {"E5-100k", parse_100000_terms},
    {"E6", join_texts},
    {"E6c", compare_texts},
    {"E7", copy_empty},
    {"E7v", copy_with_variables},
    {"E7p", copy_with_program},
};
const bench::workloads_t workloads(rows);

} // namespace

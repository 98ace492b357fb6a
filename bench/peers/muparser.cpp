// muParser's side of the workloads with expressions. It computes in double precision and knows no
// integers; a text is parsed when it is first evaluated, and has at most 5,000 characters.
#include <muParser.h>

#include <algorithm>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "expressions.h"
#include "workload.h"

namespace {

using bench::batch;

/// A parser with variables, which it refers to.
class program_t {
public:
    program_t() {
        variable_add("a", a);
        variable_add("b", b);
        variable_add("c", c);
        variable_add("z", z);
    }

    void variables_add(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            further.push_back(1);
            variable_add("v" + std::to_string(i), further.back());
        }
    }

    /// Evaluates a text a batch of times; before each, `change` is given its number.
    template <typename change_t>
    void evaluate(benchmark::State& state, const std::string& text, change_t change) {
        parser.SetExpr(text);
        bench::measure(state, batch, [&] {
            double sum = 0;
            for (std::size_t i = 0; i < batch; ++i) {
                change(i);
                sum += parser.Eval();
            }
            return sum;
        });
    }

    void evaluate(benchmark::State& state, const std::string& text) {
        evaluate(state, text, [&](std::size_t i) { a = double(bench::values_of_a[i % 8]); });
    }

    double evaluate(const std::vector<std::string>& texts) {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            parser.SetExpr(texts[i % texts.size()]);
            sum += parser.Eval();
        }
        return sum;
    }

    double a = double(bench::values_of_a[0]);
    double b = double(bench::value_of_b);
    double c = double(bench::value_of_c);
    mu::Parser parser;

private:
    void variable_add(const std::string& name, double& value) { parser.DefineVar(name, &value); }

    double z = 0;
    std::list<double> further;
};

void formula(benchmark::State& state) {
    program_t().evaluate(state, bench::formula);
}

void formula_by_name(benchmark::State& state) {
    program_t program;
    const std::string name = "a";
    program.evaluate(state, bench::formula, [&](std::size_t i) {
        *program.parser.GetVar().find(name)->second = double(bench::values_of_a[i % 8]);
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
            mu::Parser parser;
            parser.SetExpr(texts[i % texts.size()]);
            sum += parser.Eval();
        }
        return sum;
    });
}

void functions(benchmark::State& state) {
    program_t program;
    program.evaluate(state, bench::functions, [&](std::size_t i) {
        program.a = double(bench::legs[i % 4].a);
        program.b = double(bench::legs[i % 4].b);
    });
}

double square(double x) {
    return x * x;
}

void host_function(benchmark::State& state) {
    program_t program;
    program.parser.DefineFun("sq", square);
    program.evaluate(state, bench::call, [](std::size_t) {});
}

void parse_1000_terms(benchmark::State& state) {
    program_t program;
    const std::size_t terms = bench::sized(1000);
    const std::string text = bench::sum_of(terms);
    bench::measure(state, terms, [&] {
        program.parser.SetExpr(text);
        return program.parser.Eval();
    });
}

constexpr bench::workload_t rows[] = {
    {"E1", formula},       {"E1n", formula_by_name}, {"E1v", formula_among_variables},
    {"E2", texts_in_turn}, {"E2u", new_texts},       {"E2f", fresh_evaluators},
    {"E3", functions},     {"E4h", host_function},   {"E5-1k", parse_1000_terms},
};
const bench::workloads_t workloads(rows);

} // namespace

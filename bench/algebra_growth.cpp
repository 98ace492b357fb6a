// Expressions: terms, parentheses, macros, variables and script functions.
#include "growth.h"

#include <string>

#include "algebra/algebra.h"

namespace {

using bench::many;
using bench::size_of;
using ko::alg::algebra_t;
using ko::alg::list_t;

std::string sum_of(std::size_t terms) {
    return "0" + many(terms, "+1");
}

std::string in_parentheses(std::size_t levels) {
    return many(levels, "-(") + "1" + std::string(levels, ')');
}

/// Parses a text again and again.
void parse(benchmark::State& state, algebra_t& algebra, const std::string& text) {
    for (auto _ : state) {
        list_t tokens;
        if (!algebra.parse(text, tokens)) {
            state.SkipWithError(algebra.parse_error_get().c_str());
        }
    }
}

/// Evaluates a text, which was parsed once, again and again.
void evaluate(benchmark::State& state, algebra_t& algebra, const std::string& text) {
    list_t tokens;
    algebra.parse(text, tokens);
    for (auto _ : state) {
        benchmark::DoNotOptimize(algebra.evaluate(tokens));
    }
}

void terms_parse(benchmark::State& state) {
    algebra_t algebra;
    parse(state, algebra, sum_of(size_of(state)));
}

void terms_evaluate(benchmark::State& state) {
    algebra_t algebra;
    evaluate(state, algebra, sum_of(size_of(state)));
}

void terms_copy(benchmark::State& state) {
    algebra_t algebra;
    algebra.parse(sum_of(size_of(state)));
    for (auto _ : state) {
        const algebra_t copy(algebra);
    }
}

void parentheses_parse(benchmark::State& state) {
    algebra_t algebra;
    parse(state, algebra, in_parentheses(size_of(state)));
}

void parentheses_evaluate(benchmark::State& state) {
    algebra_t algebra;
    evaluate(state, algebra, in_parentheses(size_of(state)));
}

void define_macros(algebra_t& algebra, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        algebra.macro_define("m" + std::to_string(i), "1");
    }
}

void macros_define(benchmark::State& state) {
    for (auto _ : state) {
        algebra_t algebra;
        define_macros(algebra, size_of(state));
    }
}

void macros_use(benchmark::State& state) {
    algebra_t algebra;
    define_macros(algebra, size_of(state));
    parse(state, algebra, "0" + many(40, "+m#"));
}

void define_variables(algebra_t& algebra, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        algebra.assign("v" + std::to_string(i), 1);
    }
}

void variables_assign(benchmark::State& state) {
    for (auto _ : state) {
        algebra_t algebra;
        define_variables(algebra, size_of(state));
    }
}

void variables_evaluate(benchmark::State& state) {
    algebra_t algebra;
    define_variables(algebra, size_of(state));
    evaluate(state, algebra, "0" + many(size_of(state), "+v#"));
}

void variables_push_and_pop_diff(benchmark::State& state) {
    algebra_t algebra;
    define_variables(algebra, size_of(state));
    for (auto _ : state) {
        algebra.memory_push();
        algebra.assign("v0", 2);
        algebra.memory_pop_diff();
    }
}

/// Evaluates as many copies of a term as there are variables, each of which evaluates a text or
/// calls a script function in turn.
void variables_with(benchmark::State& state, const std::string& term) {
    algebra_t algebra;
    define_variables(algebra, size_of(state));
    algebra.macro_define("f(x)", "x");
    evaluate(state, algebra, "0" + many(size_of(state), "+" + term));
}

void variables_and_calls(benchmark::State& state) {
    variables_with(state, "f(v#)");
}

void variables_and_evaluations(benchmark::State& state) {
    variables_with(state, "evaluate('v#')");
}

void variables_and_assignments(benchmark::State& state) {
    variables_with(state, "assign('v#', '2')");
}

void define_functions(algebra_t& algebra, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        algebra.macro_define("f" + std::to_string(i) + "(x)", "x");
    }
}

void script_functions_define(benchmark::State& state) {
    for (auto _ : state) {
        algebra_t algebra;
        define_functions(algebra, size_of(state));
    }
}

void script_functions_call(benchmark::State& state) {
    algebra_t algebra;
    define_functions(algebra, size_of(state));
    evaluate(state, algebra, "0" + many(size_of(state), "+f#(1)"));
}

BENCHMARK(terms_parse)->Apply(bench::sizes);
BENCHMARK(terms_evaluate)->Apply(bench::sizes);
BENCHMARK(terms_copy)->Apply(bench::sizes);
BENCHMARK(parentheses_parse)->Apply(bench::sizes);
BENCHMARK(parentheses_evaluate)->Apply(bench::sizes);
BENCHMARK(macros_define)->Apply(bench::sizes);
BENCHMARK(macros_use)->Apply(bench::sizes);
BENCHMARK(variables_assign)->Apply(bench::sizes);
BENCHMARK(variables_evaluate)->Apply(bench::sizes);
BENCHMARK(variables_push_and_pop_diff)->Apply(bench::sizes);
BENCHMARK(variables_and_calls)->Apply(bench::sizes);
BENCHMARK(variables_and_evaluations)->Apply(bench::sizes);
BENCHMARK(variables_and_assignments)->Apply(bench::sizes);
BENCHMARK(script_functions_define)->Apply(bench::sizes);
BENCHMARK(script_functions_call)->Apply(bench::sizes);

} // namespace

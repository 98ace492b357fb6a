#include "algebra/builtin_functions.h"

#include <algorithm>
#include <iterator>

namespace ko::alg {

namespace {

/// A row of the table: a name and one function; constant data.
struct builtin_t {
    constexpr builtin_t(const char* n, function1_t f) : name(n), count(1), function1(f) {}
    constexpr builtin_t(const char* n, function2_t f) : name(n), count(2), function2(f) {}
    constexpr builtin_t(const char* n, function3_t f) : name(n), count(3), function3(f) {}

    const char* name;
    int count;
    function1_t function1 = nullptr;
    function2_t function2 = nullptr;
    function3_t function3 = nullptr;
};

constexpr builtin_t builtins[] = {
    {"abs", abs_f},
    {"sqrt", sqrt_f},
    {"sin", sin_f},
    {"cos", cos_f},
    {"tan", tan_f},
    {"max", max_f},
    {"min", min_f},
    {"pow", pow_f},
    {"log", log_f},
    {"log10", log10_f},
    {"floor", floor_f},
    {"ceil", ceil_f},
    {"quad", quad_f},
    {"func_error", func_error_f},
    {"func_output", func_output_f},
    {"return", return_f},
    {"evaluate", evaluate_f},
    {"assign", assign_f},
    {"strlen", strlen_f},
    {"defined", defined_f},
    {"exists", exists_f},
};

} // namespace

bool builtin_find(const std::string& name, function_prototype_t& function) {
    const auto* const row = std::find_if(std::begin(builtins), std::end(builtins),
                                         [&](const builtin_t& b) { return name == b.name; });
    if (row == std::end(builtins)) {
        return false;
    }
    function = {name,           row->count,     nullptr, row->function1,
                row->function2, row->function3, nullptr};
    return true;
}

} // namespace ko::alg

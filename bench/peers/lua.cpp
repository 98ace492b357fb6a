// The side of Lua 5.4, and built with its headers of LuaJIT, of the workloads with expressions. A
// text becomes a chunk that returns its value; variables are globals.
#include <lua.hpp>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "expressions.h"
#include "workload.h"

namespace {

using bench::batch;

class lua_t {
public:
    lua_t() : state(luaL_newstate()) {}
    lua_t(const lua_t&) = delete;
    lua_t& operator=(const lua_t&) = delete;
    ~lua_t() { lua_close(state); }

    void set(const char* name, double value) {
        lua_pushnumber(state, value);
        lua_setglobal(state, name);
    }

    void set(const char* name, const char* value) {
        lua_pushstring(state, value);
        lua_setglobal(state, name);
    }

    /// Opens a library, whose table becomes a global.
    void open(const char* name, lua_CFunction library) {
        lua_pushcfunction(state, library);
        lua_pushstring(state, name);
        lua_call(state, 1, 1);
        lua_setglobal(state, name);
    }

    /// Puts the function of a chunk on the stack.
    void load(const std::string& chunk) {
        require(luaL_loadbuffer(state, chunk.data(), chunk.size(), "text") == 0);
    }

    /// Runs a chunk once.
    void run(const std::string& chunk) {
        load(chunk);
        require(lua_pcall(state, 0, 0, 0) == 0);
    }

    /// Calls the function on the stack, under its `arguments`; the value takes their place.
    void call(int arguments = 0) { require(lua_pcall(state, arguments, 1, 0) == 0); }

    /// Takes the value off the stack, a boolean as 0 or 1.
    double number() {
        const double value =
            lua_isboolean(state, -1) ? lua_toboolean(state, -1) : lua_tonumber(state, -1);
        lua_pop(state, 1);
        return value;
    }

    /// Takes the text off the stack and gives its length.
    std::size_t length() {
        std::size_t length = 0;
        lua_tolstring(state, -1, &length);
        lua_pop(state, 1);
        return length;
    }

    lua_State* state;

private:
    void require(bool good) {
        if (!good) {
            throw std::runtime_error(lua_tostring(state, -1));
        }
    }
};

std::string returning(const std::string& text) {
    return "return " + text;
}

std::vector<std::string> returning(std::vector<std::string> texts) {
    for (std::string& text : texts) {
        text = returning(text);
    }
    return texts;
}

/// A state with some variables and, at the bottom of its stack, a function.
class program_t : public lua_t {
public:
    program_t() {
        luaL_openlibs(state);
        set("a", double(bench::values_of_a[0]));
        set("b", double(bench::value_of_b));
        set("c", double(bench::value_of_c));
        set("z", 0.0);
        set("s", bench::text_s);
        set("t", bench::text_t);
        set("w", bench::text_w);
    }

    void variables_add(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            set(("v" + std::to_string(i)).c_str(), 1);
        }
    }

    /// Loads a chunk and calls it a batch of times; before each, `change` is given its number
    /// and gives how many arguments it has pushed.
    template <typename change_t>
    void evaluate(benchmark::State& row, const std::string& chunk, change_t change) {
        load(chunk);
        bench::measure(row, batch, [&] {
            double sum = 0;
            for (std::size_t i = 0; i < batch; ++i) {
                lua_pushvalue(state, 1);
                call(change(i));
                sum += number();
            }
            return sum;
        });
    }

    /// Evaluates with `a` given as an argument.
    void evaluate(benchmark::State& row, const std::string& text) {
        evaluate(row, "local a = ... " + returning(text), [&](std::size_t i) {
            lua_pushnumber(state, double(bench::values_of_a[i % 8]));
            return 1;
        });
    }

    void evaluate_unchanged(benchmark::State& row, const std::string& text) {
        evaluate(row, returning(text), [](std::size_t) { return 0; });
    }

    /// Loads and calls a batch of chunks, in turn.
    double evaluate(const std::vector<std::string>& chunks) {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            load(chunks[i % chunks.size()]);
            call();
            sum += number();
        }
        return sum;
    }
};

void formula(benchmark::State& state) {
    program_t().evaluate(state, bench::formula);
}

void formula_by_name(benchmark::State& state) {
    program_t program;
    program.evaluate(state, returning(bench::formula), [&](std::size_t i) {
        program.set("a", double(bench::values_of_a[i % 8]));
        return 0;
    });
}

void formula_among_variables(benchmark::State& state) {
    program_t program;
    program.variables_add(bench::further_variables);
    program.evaluate(state, bench::formula);
}

void texts_in_turn(benchmark::State& state) {
    program_t program;
    const std::vector<std::string> chunks = returning(bench::texts());
    bench::measure(state, batch, [&] { return program.evaluate(chunks); });
}

void new_texts(benchmark::State& state) {
    program_t program;
    std::vector<std::string> chunks;
    std::size_t number = 0;
    double sum = 0;
    bench::measure(state, batch,
                   {[&] { chunks = returning(bench::new_texts(number)); },
                    [&] { sum = program.evaluate(chunks); },
                    [&] {
                        return sum;
                    }});
}

/// With what the library's evaluators have built in: the functions of numbers.
void fresh_evaluators(benchmark::State& state) {
    const std::vector<std::string> chunks = returning(bench::constant_texts());
    bench::measure(state, batch, [&] {
        double sum = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            lua_t lua;
            lua.open("", luaopen_base);
            lua.open("math", luaopen_math);
            lua.load(chunks[i % chunks.size()]);
            lua.call();
            sum += lua.number();
        }
        return sum;
    });
}

void functions(benchmark::State& state) {
    program_t program;
    program.run("sqrt, max = math.sqrt, math.max");
    program.evaluate(state, std::string("local a, b = ... ") + returning(bench::functions),
                     [&](std::size_t i) {
                         lua_pushnumber(program.state, double(bench::legs[i % 4].a));
                         lua_pushnumber(program.state, double(bench::legs[i % 4].b));
                         return 2;
                     });
}

void script_function(benchmark::State& state) {
    program_t program;
    program.run("function sq(x) return x*x end");
    program.evaluate_unchanged(state, bench::call);
}

void script_function_among_variables(benchmark::State& state) {
    program_t program;
    program.variables_add(bench::further_variables);
    program.run("function sq(x) return x*x end");
    program.evaluate_unchanged(state, bench::call);
}

int square(lua_State* state) {
    const double x = lua_tonumber(state, 1);
    lua_pushnumber(state, x * x);
    return 1;
}

void host_function(benchmark::State& state) {
    program_t program;
    lua_register(program.state, "sq", square);
    program.evaluate_unchanged(state, bench::call);
}

void fibonacci(benchmark::State& state) {
    program_t program;
    program.run("function fib(n) return n < 2 and n or fib(n - 1) + fib(n - 2) end");
    program.load("return fib(20)");
    bench::measure(state, bench::calls_of_fibonacci_20, [&] {
        lua_pushvalue(program.state, 1);
        program.call();
        return program.number();
    });
}

void parse_terms(benchmark::State& state, std::size_t terms) {
    program_t program;
    const std::string chunk = returning(bench::sum_of(terms));
    bench::measure(state, terms,
                   {nullptr,
                    [&] {
                        lua_settop(program.state, 0);
                        program.load(chunk);
                    },
                    [&] {
                        program.call();
                        return program.number();
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
    program.load("return s..\"-\"..t");
    bench::measure(state, batch, [&] {
        std::size_t length = 0;
        for (std::size_t i = 0; i < batch; ++i) {
            lua_pushvalue(program.state, 1);
            program.call();
            length += program.length();
        }
        return double(length);
    });
}

void compare_texts(benchmark::State& state) {
    program_t().evaluate_unchanged(state, "(s..\"-\"..t)==w");
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
};
const bench::workloads_t workloads(rows);

} // namespace

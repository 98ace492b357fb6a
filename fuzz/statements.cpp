/// @file
/// Runs lines of input as statements of one evaluator, in the order written. A line may begin
/// with a word that says what to do with the rest:
///
///     macro KEY=VALUE     defines a macro or a script function
///     undefine KEY        removes a macro
///     decode TEXT         replaces the macros in a text
///     assign NAME=TEXT    assigns the value of an expression
///     safe TEXT           evaluates without exceptions
///     numeric TEXT        evaluates in numeric-only mode
///     push, pop, diff     saves and restores the variables
///
/// Any other line is evaluated. A backslash before an "n" stands for a line feed.

#include <list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "algebra/algebra.h"
#include "support/target.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::result_t;

result_t host_nothing(algebra_t&) {
    return 7;
}

result_t host_sum(algebra_t&, std::vector<result_t> values) {
    return values[0] + values[1] + values[2] + values[3];
}

/// Uses the evaluator that calls it.
result_t host_count(algebra_t& algebra, result_t name) {
    result_t& counter = algebra[name.string_get(false, 6)];
    counter = counter + result_t(1);
    return counter;
}

void define_host_functions(algebra_t& algebra) {
    algebra.define("nothing", host_nothing);
    algebra.define("sum", host_sum, 4);
    algebra.define("count", host_count);
}

std::string shown(const result_t& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

/// The value of a statement; the text of an exception depends on what was evaluated before.
std::string outcome(algebra_t& algebra, const std::string& text) {
    std::string value = "exception";
    fuzz::attempt([&] { value = shown(algebra.evaluate(text)); });
    return value;
}

/// A copy behaves as the evaluator that it was made of, which need not be there any longer.
void check_copy(algebra_t& algebra, const std::string& text) {
    algebra_t copy;
    {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const algebra_t middle(algebra);
        copy = middle;
    }
    const std::string value = outcome(algebra, text);
    fuzz::require(outcome(copy, text) == value, "a copy gives another value");
    algebra.memory_copy(copy);
}

/// A list can be evaluated whether it was parsed well or not, and so can a copy of it.
void check_list(algebra_t& algebra, const std::string& text) {
    ko::alg::list_t tokens;
    fuzz::attempt([&] { algebra.parse(text, tokens); });
    const ko::alg::list_t copy(tokens);
    fuzz::attempt([&] { algebra.evaluate(copy); });
    fuzz::attempt([&] { algebra.evaluate(tokens); });
    fuzz::attempt([&] { algebra.evaluate(); });
}

void evaluate(algebra_t& algebra, const std::string& text) {
    check_copy(algebra, text);
    check_list(algebra, text);
}

void evaluate_numeric(algebra_t& algebra, const std::string& text) {
    algebra.numeric_only_set(true);
    fuzz::attempt([&] { algebra.evaluate(text); });
    algebra.numeric_only_set(false);
}

void decode(algebra_t& algebra, const std::string& text) {
    std::string decoded = text;
    fuzz::attempt([&] { algebra.macro_decode(decoded, decoded); });
}

std::pair<std::string, std::string> split(const std::string& text) {
    const std::size_t equals = text.find('=');
    return {text.substr(0, equals), equals == std::string::npos ? "" : text.substr(equals + 1)};
}

void macro_define(algebra_t& algebra, const std::string& text) {
    const auto [key, value] = split(text);
    algebra.macro_define(key, value);
}

void assign(algebra_t& algebra, const std::string& text) {
    const auto [name, value] = split(text);
    algebra.eval_and_assign(name, value);
}

void undefine(algebra_t& algebra, const std::string& text) {
    algebra.macro_undefine(text);
}

void evaluate_safe(algebra_t& algebra, const std::string& text) {
    algebra.evaluate_safe(text);
}

void push(algebra_t& algebra, const std::string&) {
    algebra.memory_push();
}

void pop(algebra_t& algebra, const std::string&) {
    algebra.memory_pop();
}

void pop_diff(algebra_t& algebra, const std::string&) {
    algebra.memory_pop_diff();
}

struct command_t {
    const char* word;
    void (*run)(algebra_t& algebra, const std::string& text);
};

constexpr command_t commands[] = {
    {"macro ", macro_define}, {"undefine ", undefine},
    {"decode ", decode},      {"assign ", assign},
    {"safe ", evaluate_safe}, {"numeric ", evaluate_numeric},
    {"push", push},           {"pop", pop},
    {"diff", pop_diff},       {"", evaluate},
};

void run_line(algebra_t& algebra, const std::string& line) {
    for (const command_t& command : commands) {
        const std::string word = command.word;
        if (line.compare(0, word.size(), word) == 0) {
            fuzz::attempt([&] { command.run(algebra, line.substr(word.size())); });
            return;
        }
    }
}

std::string with_line_feeds(std::string line) {
    for (std::size_t at = line.find("\\n"); at != std::string::npos; at = line.find("\\n", at)) {
        line.replace(at, 2, "\n");
    }
    return line;
}

void run(const std::string& input) {
    algebra_t algebra;
    define_host_functions(algebra);
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        run_line(algebra, with_line_feeds(line));
    }
    std::list<std::pair<std::string, std::string>> macros;
    algebra.macros_get(macros);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run_limited(run, data, size);
    return 0;
}

#include "expression_failure.h"

#include <cstdint>

#include "definition.h"
#include "exception/exception.h"
#include "expression_words.h"

namespace tool {

namespace {

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n\v\f") == std::string::npos;
}

std::string without_line_break(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

constexpr std::size_t no_mark = static_cast<std::size_t>(-1);

/// Steps that a second evaluation may take.
constexpr std::uint64_t locating_steps_max = 1000000;

/// What stands in `text` between two others; empty when they are not there.
std::string between(const std::string& text, const std::string& before,
                    const std::string& after) {
    const std::size_t start = text.find(before);
    if (start == std::string::npos) {
        return "";
    }
    const std::size_t name = start + before.size();
    const std::size_t end = text.find(after, name);
    return end == std::string::npos ? "" : text.substr(name, end - name);
}

/// The byte of the name that a message speaks of, in a variable or a call; `other` when it speaks
/// of none. The evaluator writes "%s" for the name of a function that lacks its arguments.
std::size_t named_mark(const std::string& message, const std::string& expression,
                       std::size_t other) {
    std::string name = between(message, "undefined term, '", "'");
    name = name.empty() ? between(message, "ternal function ", " --") : name;
    for (const word_t& word : expression_words(expression)) {
        const bool lacks_arguments = name == "%s" && word.use != word_use_t::call &&
                                     word.use != word_use_t::quoted &&
                                     is_function_name(word.name);
        if ((word.name == name && word.use != word_use_t::quoted) || lacks_arguments) {
            return word.offset;
        }
    }
    return other;
}

/// Whether an expression can be read; the evaluator's message of a failed parse may change.
bool can_be_read(ko::alg::algebra_t& algebra, const std::string& expression) {
    try {
        ko::alg::list_t program;
        return algebra.parse(expression, program);
    } catch (const ko::exception_t&) {
        return false;
    }
}

/// The byte of the token that a parse complains of without saying where it is; `other` when there
/// is none to be found.
std::size_t misfit_mark(const ko::alg::algebra_t& algebra, const ko::alg::error_t& error,
                        std::size_t other) {
    const bool placeless = error.message.find("not enough operators") != std::string::npos ||
                           error.message.find("unmatched parenthesis") != std::string::npos;
    const std::size_t misfit =
        placeless ? misfit_find(error.statement, algebra.function_names()) : std::string::npos;
    return misfit == std::string::npos ? other : misfit;
}

/// What an evaluation reported. Where nothing is known of the token, an expression that cannot be
/// read is marked at its end, and one that fails later not at all.
failure_t failure_of(ko::alg::algebra_t& algebra, const std::string& expression,
                     const ko::alg::error_t& error) {
    failure_t failure;
    failure.statement = error.statement.empty() ? expression : error.statement;
    if (is_blank(expression)) {
        failure.message = "the expression is blank";
        return failure;
    }
    failure.message = without_line_break(error.message);
    failure.mark = error.offset;
    if (error.offset >= failure.statement.size()) {
        failure.mark = can_be_read(algebra, expression)
                           ? no_mark
                           : misfit_mark(algebra, error, error.offset);
    }
    failure.mark = named_mark(error.message, failure.statement, failure.mark);
    return failure;
}

} // namespace

bool parses(ko::alg::algebra_t& algebra, const std::string& expression, failure_t& failure) {
    if (can_be_read(algebra, expression)) {
        return true;
    }
    // It fails again before anything is evaluated.
    ko::alg::result_t value;
    ko::alg::error_t error;
    algebra.evaluate(expression, value, error);
    failure = failure_of(algebra, expression, error);
    return false;
}

bool evaluates(ko::alg::algebra_t& algebra, const std::string& expression,
               ko::alg::result_t& value, failure_t& failure) {
    ko::alg::error_t error;
    if (algebra.evaluate(expression, value, error)) {
        return true;
    }
    failure = failure_of(algebra, expression, error);
    return false;
}

failure_t failure_locate(const ko::alg::algebra_t& algebra, const std::string& expression,
                         const std::string& message) {
    ko::alg::algebra_t copy(algebra);
    copy.output_set([](const std::string&) {});
    ko::alg::limits_t limits = copy.limits_get();
    limits.steps = locating_steps_max;
    copy.limits_set(limits);
    ko::alg::result_t value;
    ko::alg::error_t error;
    failure_t failure;
    failure.statement = expression;
    failure.message =
        is_blank(expression) ? "the expression is blank" : without_line_break(message);
    if (!copy.evaluate(expression, value, error) && error.message == message) {
        failure = failure_of(copy, expression, error);
    }
    return failure;
}

} // namespace tool

#include "expression_failure.h"

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

} // namespace

bool parses(ko::alg::algebra_t& algebra, const std::string& expression, failure_t& failure) {
    failure.statement = expression;
    if (is_blank(expression)) {
        failure.message = "the expression is blank";
        return false;
    }
    try {
        ko::alg::list_t program;
        if (algebra.parse(expression, program)) {
            return true;
        }
        failure.message = without_line_break(algebra.parse_error_get());
    } catch (const ko::exception_t& e) {
        failure.message = without_line_break(e.what());
    }
    failure.mark = named_mark(failure.message, failure.statement, failure.mark);
    return false;
}

bool evaluates(ko::alg::algebra_t& algebra, const std::string& expression,
               ko::alg::result_t& value, failure_t& failure) {
    failure.statement = expression;
    try {
        value = algebra.evaluate(expression);
        return true;
    } catch (const ko::exception_t& e) {
        failure.message = without_line_break(e.what());
    }
    failure.mark = named_mark(failure.message, failure.statement, failure.mark);
    return false;
}

failure_t failure_locate(const ko::alg::algebra_t&, const std::string& expression,
                         const std::string& message) {
    failure_t failure;
    failure.statement = expression;
    failure.message =
        is_blank(expression) ? "the expression is blank" : without_line_break(message);
    failure.mark = named_mark(failure.message, failure.statement, failure.mark);
    return failure;
}

} // namespace tool

#include "expression_failure.h"

#include "exception/exception.h"

namespace tool {

namespace {

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n\v\f") == std::string::npos;
}

std::string without_line_break(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
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
    return false;
}

failure_t failure_locate(const ko::alg::algebra_t&, const std::string& expression,
                         const std::string& message) {
    failure_t failure;
    failure.statement = expression;
    failure.message =
        is_blank(expression) ? "the expression is blank" : without_line_break(message);
    return failure;
}

} // namespace tool

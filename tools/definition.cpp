#include "definition.h"

#include <algorithm>
#include <charconv>

namespace tool {

namespace {

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads the whole of `text` as a number of type `T`; a word such as "nan" is none.
template <class T> bool number_read(const std::string& text, T& number) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && text.find('(') == std::string::npos &&
           std::any_of(text.begin(), text.end(), is_digit);
}

/// Reads a number that is printed by the same characters.
template <class T> bool number_read_exactly(const std::string& text, ko::alg::result_t& value) {
    T number = 0;
    if (!number_read(text, number)) {
        return false;
    }
    value = ko::alg::result_t(number);
    return value.string_get(false, 0) == text;
}

bool guessed_number(const std::string& text, ko::alg::result_t& value) {
    return number_read_exactly<int>(text, value) || number_read_exactly<double>(text, value);
}

} // namespace

const std::vector<std::string>& function_names() {
    static const std::vector<std::string> names = ko::alg::algebra_t().function_names();
    return names;
}

bool is_function_name(const std::string& text) {
    return std::binary_search(function_names().begin(), function_names().end(), text);
}

bool is_variable_name(const std::string& text) {
    return !text.empty() && is_letter(text[0]) && !is_function_name(text) &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return is_letter(c) || is_digit(c); });
}

definition_t definition_read(const std::string& text, value_form_t form) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw definition_error_t("not of the form NAME=VALUE: " + text);
    }
    definition_t definition{text.substr(0, equals), text.substr(equals + 1), form};
    if (is_function_name(definition.name)) {
        throw definition_error_t(definition.name + " is a function and cannot be set: " + text);
    }
    if (!is_variable_name(definition.name)) {
        throw definition_error_t("not the name of a variable: " + definition.name);
    }
    return definition;
}

ko::alg::result_t definition_value(ko::alg::algebra_t& algebra, const definition_t& definition) {
    if (definition.form == value_form_t::expression) {
        return algebra.evaluate(definition.value);
    }
    ko::alg::result_t value;
    if (definition.form == value_form_t::guessed && guessed_number(definition.value, value)) {
        return value;
    }
    return ko::alg::result_t(definition.value);
}

bool is_number(const std::string& value) {
    ko::alg::result_t number;
    return guessed_number(value, number);
}

bool looks_like_number(const std::string& value) {
    double number = 0;
    return number_read(value, number);
}

} // namespace tool

#include "xml_preprocessor/expressions.h"

#include <algorithm>
#include <charconv>

#include "exception/diagnosis.h"
#include "exception/exception.h"
#include "str/str.h"

namespace ko::xpp {

namespace {

constexpr std::size_t programs_max = 1024;
constexpr std::size_t bytes_max = 262144;

bool is_part_of_name(char c) {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Whether a text is made of parts of a name only.
bool is_name(const std::string& text) {
    return std::all_of(text.begin(), text.end(), is_part_of_name);
}

/// Reads a decimal integer of up to nine digits, which is no other kind of literal.
bool integer_read(const std::string& text, int& value) {
    const char* const begin = text.data() + std::min(text.find_first_not_of(' '), text.size());
    const char* const end = text.data() + text.size();
    const auto size = end - begin;
    if (size == 0 || size > 9 || (*begin == '0' && size > 1) || *begin == '-') {
        return false;
    }
    return std::from_chars(begin, end, value).ptr == end;
}

} // namespace

std::string assigned_name(const std::string& expression) {
    const std::size_t equals = expression.find('=');
    if (equals == std::string::npos || expression.compare(equals, 2, "==") == 0) {
        return {};
    }
    std::string name = expression.substr(0, equals);
    str::strip_leading_whitespace(name);
    str::strip_trailing_whitespace(name);
    return is_name(name) ? name : std::string();
}

alg::result_t expressions_t::evaluate(const std::string& text) {
    alg::list_t own;
    const alg::list_t* const program = program_get(text, own);
    if (program == nullptr) {
        throw exception_t(algebra.parse_error_get());
    }
    return algebra.evaluate(*program);
}

bool expressions_t::evaluate_safe(const std::string& text, std::string& value,
                                  std::string& message) {
    alg::list_t own;
    alg::result_t result;
    try {
        const alg::list_t* const program = program_get(text, own);
        if (program == nullptr) {
            message =
                str::all_whitespace(text) ? "expression is blank" : algebra.parse_error_get();
            return false;
        }
        result = algebra.evaluate(*program);
    } catch (const exception_t& failure) {
        diagnose("Caught exception in expression : ", text);
        message = failure.what();
        return false;
    }
    value = result.string_get(false, 0);
    return true;
}

void expressions_t::assign(const std::string& name, const std::string& piece) {
    int value = 0;
    const bool is_integer = !shared && integer_read(piece, value);
    if (is_integer && name == variable) {
        algebra.assign(name, value);
        return;
    }
    algebra.evaluate(name + " = " + piece);
    if (is_integer && is_name(name)) {
        variable = name;
    }
}

alg::algebra_t& expressions_t::algebra_get() {
    shared = true;
    return algebra;
}

/// The program of a text, kept or in `own`; null where it does not parse.
const alg::list_t* expressions_t::program_get(const std::string& text, alg::list_t& own) {
    if (shared || text.size() > bytes_max) {
        return algebra.parse(text, own) ? &own : nullptr;
    }
    const auto known = programs.find(text);
    return known != programs.end() ? &known->second : program_keep(text);
}

const alg::list_t* expressions_t::program_keep(const std::string& text) {
    if (programs.size() >= programs_max || kept_bytes + text.size() > bytes_max) {
        programs.clear();
        kept_bytes = 0;
    }
    const auto entry = programs.try_emplace(text).first;
    try {
        if (algebra.parse(text, entry->second)) {
            kept_bytes += text.size();
            return &entry->second;
        }
    } catch (...) {
        programs.erase(entry);
        throw;
    }
    programs.erase(entry);
    return nullptr;
}

} // namespace ko::xpp

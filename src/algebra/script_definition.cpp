#include "algebra/function.h"

#include <string_view>
#include <utility>

#include "algebra/label_scan.h"
#include "algebra/translator.h"
#include "str/str.h"

namespace ko::alg {

namespace {

std::string head_error(const std::string& key, std::string_view rest) {
    return "parse error in '" + key + "' after '" + key.substr(0, key.size() - rest.size()) + "'";
}

/// Reads "name(p1, ...)" into `function`.
/// @return false with the message in `error`
bool head_parse(const std::string& key, function_t& function, std::string& error) {
    std::string_view rest = key;
    if (!valid_label_get(rest, function.name)) {
        error = "illegal or missing function name";
        return false;
    }
    if (!char_get(rest, '(')) {
        error = head_error(key, rest);
        return false;
    }
    std::string parameter;
    while (valid_label_get(rest, parameter)) {
        function.parameters.push_back(parameter);
        if (!char_get(rest, ',')) {
            break;
        }
    }
    if (!char_get(rest, ')')) {
        error = head_error(key, rest);
        return false;
    }
    const std::string behind(rest);
    if (!str::all_whitespace(behind)) {
        error = "parse error in internal function name '" + key +
                "' : extra characters found( '" + behind + "' )";
        return false;
    }
    return true;
}

} // namespace

bool function_t::parse(const std::string& key, const std::string& body_text, std::string& error) {
    function_t parsed;
    if (!head_parse(key, parsed, error)) {
        return false;
    }
    // The built-in functions are all that the check knows.
    translator_t translator;
    program_t program;
    std::string body_error;
    if (!translator.statement_get(body_text, nullptr) ||
        !translator.translate(lexer_settings_t(), program, body_error)) {
        error = body_error;
        return false;
    }
    parsed.body = body_text;
    std::swap(*this, parsed);
    return true;
}

} // namespace ko::alg

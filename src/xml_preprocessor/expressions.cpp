#include "xml_preprocessor/expressions.h"

#include <algorithm>
#include <charconv>

#include "algebra/context.h"
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

/// Writes the line of an expression that failed, as `algebra_t::evaluate_safe` does.
void failure_tell(alg::algebra_t& algebra, const std::string& text) noexcept {
    try {
        alg::context_of(algebra).line_write("Caught exception in expression : " + text);
    } catch (...) {
        // No memory for the line, which is left out then.
    }
}

/// Counts an evaluation for as long as it lives.
class count_t {
public:
    explicit count_t(unsigned& counter) : count(counter) { ++count; }
    count_t(const count_t&) = delete;
    count_t& operator=(const count_t&) = delete;
    ~count_t() { --count; }

private:
    unsigned& count;
};

/// Reads a decimal integer of up to nine digits, which is no other kind of literal.
bool integer_read(const std::string& text, int& value) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    while (begin != end && *begin == ' ') {
        ++begin;
    }
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
    int value = 0;
    if (!shared && integer_read(text, value)) {
        return value;
    }
    if (const alg::list_t* const known = program_find(text)) {
        return run(*known);
    }
    alg::list_t own;
    const alg::list_t* const program = program_make(text, own);
    if (program == nullptr) {
        throw exception_t(algebra.parse_error_get());
    }
    return run(*program);
}

bool expressions_t::evaluate_safe(const std::string& text, std::string& value,
                                  std::string& message) {
    try {
        if (const alg::list_t* const known = program_find(text)) {
            value = run(*known).string_get(false, 0);
            return true;
        }
        alg::list_t own;
        const alg::list_t* const program = program_make(text, own);
        if (program == nullptr) {
            message =
                str::all_whitespace(text) ? "expression is blank" : algebra.parse_error_get();
            return false;
        }
        value = run(*program).string_get(false, 0);
        return true;
    } catch (const exception_t& failure) {
        failure_tell(algebra, text);
        message = failure.what();
        return false;
    }
}

void expressions_t::assign(const std::string& name, const std::string& piece) {
    int value = 0;
    const bool is_integer = !shared && integer_read(piece, value);
    if (is_integer && name == number.name) {
        assign(number, value);
        return;
    }
    algebra.evaluate(name + " = " + piece);
    if (is_integer && is_name(name)) {
        number = {};
        number.name = name;
    }
}

void expressions_t::assign(assigned_t& variable, int value) {
    alg::context_t& state = alg::context_of(algebra);
    alg::variables_t& variables = state.variables;
    if (variable.generation != variables.generation_get() || variable.family != state.family) {
        variable.cell = &variables.cell(variable.name);
        variable.generation = variables.generation_get();
        variable.family = state.family;
    }
    variable.cell->value = alg::result_t(value);
    variable.cell->is_present = true;
}

alg::algebra_t& expressions_t::algebra_get() {
    shared = true;
    return algebra;
}

alg::result_t expressions_t::run(const alg::list_t& program) {
    const count_t count(running);
    return algebra.evaluate(program);
}

void expressions_t::environment_check() {
    const alg::context_t& state = alg::context_of(algebra);
    const alg::environment_t tables = alg::environment_of(state);
    const environment_t now = {tables.hosts, tables.scripts, tables.macros,
                               state.numeric_only ? 1U : 0U};
    if (now != environment || state.family != family) {
        programs_drop();
        environment = now;
        family = state.family;
    }
}

void expressions_t::programs_drop() {
    recent = {};
    programs.clear();
    kept_bytes = 0;
}

/// The kept program of a text, or null.
const alg::list_t* expressions_t::program_find(const std::string& text) {
    if (running != 0 || text.size() > bytes_max) {
        return nullptr;
    }
    if (shared) {
        environment_check();
    }
    recent_t& last = recent[std::hash<const std::string*>()(&text) / 32 % recent.size()];
    if (last.text == nullptr || *last.text != text) {
        const auto known = programs.find(text);
        if (known == programs.end()) {
            return nullptr;
        }
        last = {&known->first, &known->second};
    }
    return last.program;
}

/// The program of a text that has none yet, kept or in `own`; null where it does not parse.
const alg::list_t* expressions_t::program_make(const std::string& text, alg::list_t& own) {
    if (running != 0 || text.size() > bytes_max) {
        return algebra.parse(text, own) ? &own : nullptr;
    }
    return program_keep(text);
}

const alg::list_t* expressions_t::program_keep(const std::string& text) {
    if (programs.size() >= programs_max || kept_bytes + text.size() > bytes_max) {
        programs_drop();
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

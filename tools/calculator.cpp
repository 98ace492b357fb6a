#include "calculator.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <list>
#include <utility>

#include "diagnostic.h"
#include "exception/exception.h"
#include "expression_failure.h"

namespace tool {

namespace {

constexpr std::array<const char*, 4> commands{"functions", "help", "macros", "vars"};

const char* const help =
    "Type an expression, such as  2 * (3 + 4)  or  gain = 0.5 ; the value of each is shown with\n"
    "its type: (i) an integer, (f) a float, (s) a string. A ; stands between two on a line.\n"
    "\n"
    "  vars        the variables and their values\n"
    "  functions   the functions that can be called\n"
    "  macros      the macros and the functions defined with -m\n"
    "  help        this text\n"
    "\n"
    "The tabulator completes names, the arrows bring lines back, control-D ends.\n";

using macros_t = std::list<std::pair<std::string, std::string>>;

macros_t macros_of(const ko::alg::algebra_t& algebra) {
    macros_t macros;
    algebra.macros_get(macros);
    return macros;
}

} // namespace

bool calculator_t::evaluate(const std::vector<statement_t>& statements,
                            const std::string& place) {
    for (const statement_t& statement : statements) {
        ko::alg::result_t value;
        failure_t failure;
        if (!evaluates(algebra, statement.text, value, failure)) {
            std::cout.flush();
            const std::string line = place.empty() ? "" : std::to_string(statement.line) + ": ";
            std::cerr << "kobase-calc: " << place << line << failure.message << '\n'
                      << marked_text(failure.statement, failure.mark);
            return false;
        }
        if (!(std::cout << value << std::endl)) {
            throw ko::exception_t("error writing standard output");
        }
    }
    return true;
}

bool calculator_t::command(const std::string& word) {
    if (std::find(commands.begin(), commands.end(), word) == commands.end() ||
        algebra.find(word)) {
        return false;
    }
    if (word == "help") {
        std::cout << help;
    } else if (word == "vars") {
        for (const std::string& name : algebra.variable_names()) {
            std::cout << name << " = " << algebra.get(name) << '\n';
        }
    } else if (word == "functions") {
        for (const std::string& name : algebra.function_names()) {
            std::cout << name << '\n';
        }
    } else {
        for (const auto& [name, text] : macros_of(algebra)) {
            std::cout << name << " = " << text << '\n';
        }
    }
    return true;
}

std::vector<std::string> calculator_t::names_starting(const std::string& start) const {
    std::vector<std::string> names = algebra.variable_names();
    const std::vector<std::string> functions = algebra.function_names();
    names.insert(names.end(), functions.begin(), functions.end());
    names.insert(names.end(), commands.begin(), commands.end());
    for (const auto& entry : macros_of(algebra)) {
        names.push_back(entry.first.substr(0, entry.first.find('(')));
    }
    const auto other = [&](const std::string& name) {
        return name.rfind(start, 0) != 0;
    };
    names.erase(std::remove_if(names.begin(), names.end(), other), names.end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace tool

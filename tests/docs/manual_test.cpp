// Runs the examples of the manual: every block marked `calc` is a session with one evaluator.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "algebra/algebra.h"
#include "exception/exception.h"

namespace {

struct line_t {
    std::string text;
    unsigned number;
};

using session_t = std::vector<line_t>;

std::vector<session_t> sessions_of(const std::string& page) {
    std::ifstream file(std::string(KOBASE_TEST_DATA) + "/../docs/" + page);
    std::vector<session_t> sessions;
    bool inside = false;
    unsigned number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        if (text == "```calc") {
            sessions.emplace_back();
            inside = true;
        } else if (text == "```") {
            inside = false;
        } else if (inside) {
            sessions.back().push_back({text, number});
        }
    }
    return sessions;
}

std::string value_text(ko::alg::algebra_t& algebra, const std::string& expression) {
    try {
        std::ostringstream out;
        out << algebra.evaluate(expression);
        return out.str();
    } catch (const ko::exception_t& e) {
        return std::string("error: ") + e.what();
    }
}

void run(ko::alg::algebra_t& algebra, const line_t& line) {
    const std::string macro = "macro ";
    if (line.text.compare(0, macro.size(), macro) == 0) {
        const std::size_t middle = line.text.find(" := ");
        ASSERT_NE(middle, std::string::npos) << "line " << line.number;
        algebra.macro_define(line.text.substr(macro.size(), middle - macro.size()),
                             line.text.substr(middle + 4));
        return;
    }
    const std::size_t arrow = line.text.find(" --> ");
    ASSERT_NE(arrow, std::string::npos) << "line " << line.number;
    EXPECT_EQ(value_text(algebra, line.text.substr(0, arrow)), line.text.substr(arrow + 5))
        << "line " << line.number << ": " << line.text;
}

TEST(manual, expressions_give_the_values_it_states) {
    const std::vector<session_t> sessions = sessions_of("expressions.md");
    ASSERT_GT(sessions.size(), 8U);
    for (const session_t& session : sessions) {
        ko::alg::algebra_t algebra;
        for (const line_t& line : session) {
            run(algebra, line);
        }
    }
}

} // namespace

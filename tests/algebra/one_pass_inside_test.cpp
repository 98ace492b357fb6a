#include "algebra/one_pass.h"

#include <gtest/gtest.h>

#include <random>

#include "algebra/compiler.h"
#include "algebra/parser.h"
#include "support/host_records.h"
#include "support/throws.h"

namespace {

using namespace ko::alg;

/// Programs as text, what instructions refer to included, so that the order in which names and
/// texts were met makes no difference.
class described_t {
public:
    explicit described_t(const program_t& source) : program(source) {
        for (const instruction_t& step : program.code) {
            text += std::to_string(static_cast<int>(step.opcode));
            operand(step.left, step.a);
            operand(step.right, step.b);
            extra(step);
            text += "; ";
        }
        text += std::to_string(program.stack_need) + " slots, " + std::to_string(program.steps) +
                " steps" + (program.may_change ? ", may change" : "");
    }

    std::string text;

private:
    void operand(operand_e kind, const argument_t& argument) {
        if (kind == operand_e::name) {
            text += " " + program.names.at(argument.place);
        } else if (kind == operand_e::integer) {
            text += " " + std::to_string(argument.integer);
        } else if (kind == operand_e::real) {
            text += " " + std::to_string(argument.real) + "f";
        } else if (kind == operand_e::text) {
            text += " '" + program.texts.at(argument.place).string_get(false, 6) + "'";
        } else {
            text += " _";
        }
    }
    void extra(const instruction_t& step) {
        if (step.opcode == opcode_e::store) {
            text += " to " + program.names.at(step.a.place);
        } else if (step.opcode == opcode_e::branch || step.opcode == opcode_e::jump) {
            text += " to " + std::to_string(step.b.place);
        } else if (step.opcode >= opcode_e::builtin && step.opcode <= opcode_e::host_call) {
            text +=
                " " + program.targets.at(step.a.place).name + " " + std::to_string(step.b.place);
        }
    }

    const program_t& program;
};

class one_pass : public testing::Test {
protected:
    one_pass() {
        functions.host_define(test::host_of("h0", 0, 0));
        functions.host_define(test::host_of("h1", 1, 1));
        functions.host_define(test::host_of("h02", 0, 2));
        EXPECT_TRUE(functions.script_define("s0()", "1"));
        EXPECT_TRUE(functions.script_define("s1(x)", "x"));
        settings.functions = &functions;
    }

    bool translate(const std::string& line, program_t& program) {
        return line_translate(line, settings, room, compiler_room.writer, program);
    }

    /// Translates a line both ways, if it is one for the short way.
    void compare(const std::string& line) {
        program_t program;
        if (!translate(line, program)) {
            EXPECT_TRUE(program.code.empty() && program.names.empty()) << line;
            return;
        }
        ++translated;
        EXPECT_EQ(described_t(program).text, by_tree(line)) << line;
    }

    std::string by_tree(const std::string& line) {
        syntax_t tree;
        tree.text = line;
        std::string error;
        place_t failed = no_place;
        program_t program;
        EXPECT_TRUE(line_parse(tree, settings, parser_room, error, failed)) << line << error;
        tree_compile(tree, tree.first, false, compiler_room, program);
        return described_t(program).text;
    }

    template <std::size_t n> std::string one_of(const char* const (&words)[n]) {
        return words[random() % n];
    }

    std::string term(unsigned levels) {
        const std::string sign = one_of({"", "", "", "-", "!", "+"});
        const unsigned kind = levels == 0 ? 0 : static_cast<unsigned>(random() % 7);
        if (kind < 3) {
            return sign + one_of({"1", "x", "2.5", "'s'", "y", "x", "y", "h0", "s0", "0x1F"});
        }
        const std::string inside = expression(levels - 1);
        switch (kind) {
        case 3:
            return sign + one_of({"h1(", "s1(", "h02(", "sqrt(", "evaluate("}) + inside + ")";
        case 4:
            return sign + one_of({"max(", "h02(", "s1("}) + inside + "," +
                   expression(levels - 1) + ")";
        default:
            return sign + "(" + inside + ")";
        }
    }

    std::string expression(unsigned levels) {
        std::string line = term(levels);
        for (auto more = random() % 5; more != 0; --more) {
            line += one_of({"*", "/", "%", "-", "+", "<<", ">>", "<", "<=", ">",
                            ">=", "==", "!=", "&", "|", "&&", "||", "=", "?"});
            if (line.back() == '?') {
                line += term(levels) + one_of({":", ":", "*3:", "+x:", " "});
            }
            line += term(levels) + one_of({"", "", "", "", " ", ")", "(", " 1"});
        }
        return line;
    }

    ko::alg::family_t family;
    function_table_t functions{family};
    lexer_settings_t settings;
    one_pass_room_t room;
    parser_room_t parser_room;
    compiler_room_t compiler_room;
    std::mt19937 random{11};
    int translated = 0;
};

TEST_F(one_pass, gives_the_program_that_the_tree_gives) {
    for (int i = 0; i < 20000; ++i) {
        compare(expression(static_cast<unsigned>(i % 4)));
    }
    EXPECT_GT(translated, 3000);
}

TEST_F(one_pass, translates_what_is_well_formed) {
    for (const char* const line : {"1",
                                   "x",
                                   "'text'",
                                   "-x",
                                   "(a+10.25*b)*(c-2.5)-b*b/4+7",
                                   "a+b*(c-d)",
                                   "1+a*(2+b)",
                                   "a = b + 1",
                                   "(a) = 2",
                                   "x + (a = 3)",
                                   "t ? a : b",
                                   "t ? a*2 : b*(c+1) ? 5 : 6",
                                   "x * (t ? -a : !b)",
                                   "t ? (u ? 1 : 2) : 3",
                                   "max(a, b + 1) * sqrt(c)",
                                   "h0 + s0",
                                   "h02(1) + h02(1, a)",
                                   "x + s1(y) + h1(h0)",
                                   "s1(a = 1, b ? c : d)",
                                   "((((a))))"}) {
        compare(line);
        EXPECT_EQ(translated, 1) << line;
        translated = 0;
    }
}

TEST_F(one_pass, leaves_the_unusual_and_the_wrong_to_the_parser) {
    for (const char* const line : {"",
                                   "()",
                                   "(a",
                                   "a)",
                                   ")a(",
                                   "a b",
                                   "a +",
                                   "* a",
                                   "- - a",
                                   "!-a",
                                   "a ! b",
                                   "a, b",
                                   "(a, b)",
                                   "max((a, b))",
                                   "sqrt a",
                                   "sqrt()",
                                   "sqrt -a",
                                   "h1",
                                   "h02",
                                   "h0()",
                                   "s0()",
                                   "a = b = c",
                                   "1 = a",
                                   "a + b = c",
                                   "-a = 1",
                                   "'t' = 1",
                                   "t ? a",
                                   "t ? a b",
                                   ": a",
                                   "t ? a = 1 : b",
                                   "t ? a ? b : c : d",
                                   "t ? a, b",
                                   "(t ? a) : b",
                                   "a : b",
                                   "'open",
                                   "1 + $",
                                   "0:",
                                   "max(t ? a, b : c)",
                                   "t ? : b",
                                   "(t ? a : )",
                                   "f(1)(2)",
                                   "(1)(2)"}) {
        program_t program;
        program.names.emplace_back("parameter");
        EXPECT_FALSE(translate(line, program)) << line;
        EXPECT_EQ(program.names, std::vector<std::string>{"parameter"}) << line;
        EXPECT_TRUE(program.code.empty() && program.texts.empty() && program.targets.empty());
        EXPECT_TRUE(program.stack_need == 0 && program.steps == 0 && !program.may_change);
    }
}

TEST_F(one_pass, finds_names_that_the_program_has) {
    program_t program;
    for (int i = 0; i < 12; ++i) {
        program.names.push_back("p" + std::to_string(i));
    }
    EXPECT_TRUE(translate("p3 + p11 + q", program));
    EXPECT_EQ(program.names.size(), 13U);
    EXPECT_EQ(program.code[0].a.place, 3U);
    EXPECT_EQ(program.code[0].b.place, 11U);
}

} // namespace

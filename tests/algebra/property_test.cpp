// Random expressions: the evaluator and a slow, literal rendering of its rules agree.
#include <initializer_list>
#include <random>

#include "algebra/reference/reference.h"
#include "support/evaluation.h"

namespace {

/// Makes texts that are mostly expressions, always the same ones.
class generator_t {
public:
    explicit generator_t(unsigned seed) : random(seed) {}

    /// An expression; now and then a character of it is changed.
    std::string statement() {
        std::string text = expression(below(5));
        if (below(8) == 0) {
            text.insert(below(text.size()),
                        one_of({"/* a; b */", "// note\n", "/***/", "/**/ */"}));
        }
        if (below(6) == 0) {
            constexpr char characters[] = "()'\",:;?=!<>&|+-*/% \n.0x9eaf$";
            const std::size_t place = below(text.size());
            text[place] = characters[below(sizeof characters - 1)];
        }
        return text;
    }

private:
    using texts_t = std::initializer_list<const char*>;

    std::size_t below(std::size_t end) { return random() % end; }
    std::string one_of(texts_t texts) { return texts.begin()[below(texts.size())]; }

    /// The pieces are made from left to right, with every compiler.
    static std::string joined(std::initializer_list<std::string> pieces) {
        std::string text;
        for (const std::string& piece : pieces) {
            text += piece;
        }
        return text;
    }

    std::string number() {
        return below(2) == 0 ? std::to_string(below(12))
                             : one_of({"0.5", "2.25", "7.", "1.5e3", "2.5e-1", "1.5e+3", "0x1f",
                                       "017", "08", "0", "2147483647", "99999999999", "1.0e38",
                                       "9.9e38", "1.0e-50", "0x", "0X1", "16777217.0"});
    }

    std::string operand() {
        switch (below(5)) {
        case 0:
            return one_of({"'x'", "\"y\"", "''", "'10'", "'9'", "'abc'", "'1.5'"});
        case 1:
        case 2:
            return number();
        default:
            return one_of({"x", "y", "z", "s"});
        }
    }

    std::string arguments(std::size_t count, std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += i == 0 ? "" : ", ";
            text += expression(depth);
        }
        return "(" + text + ")";
    }

    std::string call(std::size_t depth) {
        switch (below(6)) {
        case 0:
            return joined(
                {one_of({"abs", "sq", "strlen"}), arguments(below(12) == 0 ? 2 : 1, depth)});
        case 1:
            return joined(
                {one_of({"max", "min", "two"}), arguments(below(12) == 0 ? 1 : 2, depth)});
        case 2:
            return one_of({"none", "none()"});
        case 3:
            return "return" + arguments(1, depth);
        case 4:
            return "strlen(" + one_of({"s", "'text'", "''"}) + ")";
        default: {
            const std::string inner = expression(depth > 1 ? 1 : depth);
            const char* const quote = inner.find('\'') == std::string::npos ? "'" : "\"";
            return "evaluate(" + (quote + inner) + quote + ")";
        }
        }
    }

    std::string expression(std::size_t depth) {
        if (depth == 0) {
            return operand();
        }
        const auto part = [&] {
            return expression(depth - 1);
        };
        switch (below(12)) {
        case 0:
            return joined({one_of({"-", "+", "!"}), part()});
        case 1:
            return joined({one_of({"-(", "+(", "!("}), part(), ")"});
        case 2:
            return joined({part(), " ? ", part(), " : ", part()});
        case 3:
            return joined({"(", one_of({"x", "y", "z", "s", "'x'", "1"}), " = ", part(), ")"});
        case 4:
        case 5:
            return call(depth - 1);
        case 6:
        case 7:
            return joined({"(", part(), ")", operation(), part()});
        default:
            return joined({part(), operation(), "(", part(), ")"});
        }
    }

    std::string operation() {
        return one_of({" + ", "-",  " * ", "/", "%", "<<", ">>", " < ", " <= ", ">",
                       ">=",  "==", "!=",  "&", "|", "&&", "||", "+",   " - ",  ", "});
    }

    std::mt19937 random;
};

class random_expressions : public testing::TestWithParam<unsigned> {};

TEST_P(random_expressions, come_to_what_the_rules_say) {
    generator_t generator(GetParam());
    ko::alg::algebra_t algebra;
    test::reference::reference_t reference;
    algebra.macro_define("sq(x)", "x * x");
    reference.define("sq", {"x"}, "x * x");
    algebra.macro_define("two(x, s)", "(y = x) + s * z");
    reference.define("two", {"x", "s"}, "(y = x) + s * z");
    algebra.macro_define("none()", "x + 1");
    reference.define("none", {}, "x + 1");
    for (const char* start : {"x = 3", "y = -2.5", "z = 'abc'", "s = '12'"}) {
        reference.outcome(start);
        algebra.evaluate(start);
    }
    constexpr int count = 1000;
    int values = 0;
    for (int i = 0; i < count; ++i) {
        const std::string text = generator.statement();
        const std::string expected = reference.outcome(text);
        ASSERT_EQ(test::outcome_of([&] { return algebra.evaluate(text); }), expected)
            << "of expression " << i << ": " << text;
        values += expected.front() == '!' ? 0 : 1;
    }
    EXPECT_GT(values, count / 3) << "the others are errors";
}

INSTANTIATE_TEST_SUITE_P(seeds, random_expressions, testing::Range(1U, 7U));

} // namespace

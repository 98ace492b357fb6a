// The order of binding, which one sort fixes, is that of repeated searches for the greatest
// token.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "algebra/parser.h"
#include "support/host_records.h"

namespace {

using namespace ko::alg;

/// A token of the slow parser, which searches anew for each token to bind.
struct node_t {
    std::string text;
    unsigned unbound;
    int strength;
    int depth;
    bool is_string;
    std::vector<node_t> operands;
};

using nodes_t = std::vector<node_t>;

class slow_parser_t {
public:
    slow_parser_t(const syntax_t& lexed, bool is_numeric)
        : line(lexed.text), numeric_only(is_numeric) {
        for (const item_t& item : lexed.items) {
            nodes.push_back({std::string(lexed.text_of(item)),
                             syntax_t::is_unbound(item) ? 1U : 0U,
                             syntax_t::strength_of(item),
                             0,
                             item.kind == item_e::text,
                             {}});
        }
    }

    bool run() {
        if (!depths_set()) {
            return fail("unmatched parenthesis");
        }
        if (numeric_only) {
            const auto is_comma = [](const node_t& node) {
                return node.text == ",";
            };
            nodes.erase(std::remove_if(nodes.begin(), nodes.end(), is_comma), nodes.end());
        }
        for (std::size_t i = greatest(); i != nodes.size(); i = greatest()) {
            if (!construct(i)) {
                return false;
            }
            if (nodes.size() == 1) {
                return true;
            }
        }
        return nodes.size() == 1 || fail("syntax error in " + line + " -- not enough operators");
    }

    nodes_t nodes;
    std::string error;

private:
    bool fail(const std::string& message) {
        error = message;
        return false;
    }

    bool depths_set() {
        nodes_t kept;
        int depth = 0;
        for (node_t& node : nodes) {
            if (!node.is_string && node.text == "(") {
                ++depth;
            } else if (!node.is_string && node.text == ")") {
                --depth;
            } else if (node.is_string || node.text != ":") {
                node.depth = depth;
                kept.push_back(node);
            }
        }
        nodes.swap(kept);
        return depth == 0;
    }

    static bool less(const node_t& a, const node_t& b) {
        if (a.unbound != b.unbound) {
            return b.unbound != 0;
        }
        return a.depth != b.depth ? a.depth < b.depth : a.strength < b.strength;
    }

    /// The place of the token that binds next; the number of tokens when none is left.
    std::size_t greatest() const {
        std::size_t best = 0;
        while (best < nodes.size() && nodes[best].unbound == 0) {
            ++best;
        }
        for (std::size_t i = best; i < nodes.size(); ++i) {
            best = less(nodes[best], nodes[i]) ? i : best;
        }
        return best;
    }

    bool construct(std::size_t i) {
        const int strength = nodes[i].strength;
        nodes[i].unbound = 0;
        nodes[i].strength = -15;
        --nodes[i].depth;
        switch (strength) {
        case 3:
            return function(i);
        case 2:
            return unary(i);
        case -10:
            return conditional(i);
        case -11:
            return binary(i, "assign_t::construct() -- ");
        default:
            return binary(i, "binary_t::construct() -- ");
        }
    }

    bool is_missing(std::size_t i) const { return i >= nodes.size(); }
    bool is_unbound(std::size_t i) const { return nodes[i].unbound != 0; }

    /// Moves the token at `from` to the operands of the token at `to`.
    void take(std::size_t from, std::size_t to) {
        node_t taken = nodes[from];
        nodes[to].operands.push_back(taken);
        nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(from));
    }

    bool function(std::size_t i) {
        const bool is_host = nodes[i].text.front() == 'h';
        if (nodes[i].text.back() == '0') {
            return true;
        }
        if (is_missing(i + 1)) {
            return fail(is_host ? "external function %s -- not enough arguments"
                                : "internal function %s -- not enough arguments");
        }
        if (is_unbound(i + 1)) {
            return fail(is_host ? "external function %s -- parse error"
                                : "internal function %s -- no arguments or parse error");
        }
        take(i + 1, i);
        return true;
    }

    bool unary(std::size_t i) {
        if (is_missing(i + 1)) {
            return fail("unary_t::construct() -- expected right operand");
        }
        if (is_unbound(i + 1)) {
            return fail("unary_t::construct() -- right operand does not evaluate to a term");
        }
        take(i + 1, i);
        return true;
    }

    bool binary(std::size_t i, const std::string& name) {
        if (i == 0) {
            return fail(name + "expected left operand");
        }
        if (is_missing(i + 1)) {
            return fail(name + "expected right operand");
        }
        if (is_unbound(i - 1)) {
            return fail(name + "left operand does not evaluate to a term");
        }
        if (is_unbound(i + 1)) {
            return fail(name + "right operand does not evaluate to a term");
        }
        take(i - 1, i);
        take(i, i - 1);
        return true;
    }

    bool conditional(std::size_t i) {
        const std::string name = "conditional_assignment_t::construct() -- ";
        if (i == 0) {
            return fail(name + "expected test operand");
        }
        if (is_missing(i + 1)) {
            return fail(name + "expected first operand");
        }
        if (is_missing(i + 2)) {
            return fail(name + "expected second operand");
        }
        const char* const operands[] = {"test", "first", "second"};
        const std::size_t places[] = {i - 1, i + 1, i + 2};
        for (unsigned n = 0; n < 3; ++n) {
            if (is_unbound(places[n])) {
                return fail(name + operands[n] + " operand does not evaluate to a term");
            }
        }
        take(i + 1, i);
        take(i + 1, i);
        take(i - 1, i);
        auto& operands_of = nodes[i - 1].operands;
        std::rotate(operands_of.begin(), operands_of.end() - 1, operands_of.end());
        return true;
    }

    const std::string line;
    const bool numeric_only;
};

std::string described(const node_t& node) {
    std::string text = "'" + node.text + "'" + std::to_string(node.unbound) + "/" +
                       std::to_string(node.strength) + "/" + std::to_string(node.depth);
    for (const node_t& operand : node.operands) {
        text += "[" + described(operand) + "]";
    }
    return text;
}

/// What `node_t` tells of an item and the operands that it has taken.
node_t node_of(const syntax_t& syntax, const item_t& item) {
    node_t node{std::string(syntax.text_of(item)), syntax_t::is_unbound(item) ? 1U : 0U,
                syntax_t::strength_of(item),       item.depth,
                item.kind == item_e::text,         {}};
    for (const place_t operand : item.operands) {
        if (operand != no_place) {
            node.operands.push_back(node_of(syntax, syntax.items[operand]));
        }
    }
    return node;
}

class binding_order : public testing::Test {
protected:
    binding_order() {
        functions.host_define(test::host_of("h0", 0, 0));
        functions.host_define(test::host_of("h1", 1, 1));
        EXPECT_TRUE(functions.script_define("s0()", "1"));
        EXPECT_TRUE(functions.script_define("s1(x)", "x"));
    }

    template <std::size_t n> std::string one_of(const char* const (&words)[n]) {
        return words[random() % n];
    }

    std::string operand() {
        return one_of({"1", "x", "2.5", "'s'", "','", "'('", "h0", "s0", "h1 2", "s1(3)"});
    }
    std::string operation() {
        return one_of({"*",  "/",  "%",  "-", "+", "<<", ">>", "<", "<=", ">",
                       ">=", "==", "!=", "&", "|", "&&", "||", "=", ",",  "?"});
    }

    /// Words in any order; hardly ever well formed.
    std::string jumble() {
        std::string text;
        for (auto left = random() % 10; left != 0; --left) {
            text += " " + one_of({"1", "x", "'a'", "(", "(",  ")",  ")",  ":",  "?",  "=", ",",
                                  "-", "+", "!",   "*", "<<", "&&", "h0", "h1", "s0", "s1"});
        }
        return text;
    }

    /// More operators than insertion sorts, at several depths.
    std::string long_expression() {
        std::string text = "1";
        for (int i = 0; i < 40; ++i) {
            const std::string operators =
                one_of({"*", "-", "+", "<<", "<", "==", "&", "|", "&&", "||", "=", ",", "? 2 :"});
            text += " " + operators + one_of({" 1", " (x", " h1 2", " -1", " 1)"});
        }
        const auto open = std::count(text.begin(), text.end(), '(');
        const auto close = std::count(text.begin(), text.end(), ')');
        return open > close ? text + std::string(static_cast<std::size_t>(open - close), ')')
                            : std::string(static_cast<std::size_t>(close - open), '(') + text;
    }

    /// Terms and operators in turn, some of them in parentheses, and now and then a slip.
    std::string expression(unsigned levels) {
        std::string text;
        for (auto terms = 1 + random() % 5; terms != 0; --terms) {
            const bool is_group = levels != 0 && random() % 3 == 0;
            text += one_of({"", "", "", "", "-", "!", "h1", "s1"}) + " ";
            text += is_group ? "(" + expression(levels - 1) + ")" : operand();
            text += terms == 1 ? "" : " " + operation() + " ";
            text += random() % 20 == 0 ? one_of({" 1 ", "(", ")", " : ", " + ", " h1 "}) : "";
        }
        return text;
    }

    /// Compares the parsers; counts the texts that parse.
    void compare(const std::string& text) {
        lexer_settings_t settings;
        settings.functions = &functions;
        settings.numeric_only = numeric_only;
        std::string error;
        syntax_t flat;
        flat.text = text;
        ASSERT_TRUE(line_lex(flat, settings, error)) << text;
        slow_parser_t slow(flat, numeric_only);
        const bool is_good = slow.run();
        syntax_t tree;
        tree.text = text;
        place_t failed = no_place;
        EXPECT_EQ(line_parse(tree, settings, room, error, failed), is_good) << text;
        EXPECT_EQ(error, slow.error) << text;
        expect_same(tree, slow.nodes, text);
        good += is_good ? 1 : 0;
    }

    static void expect_same(const syntax_t& tree, const nodes_t& nodes, const std::string& text) {
        place_t place = tree.first;
        for (const node_t& node : nodes) {
            ASSERT_NE(place, no_place) << text;
            EXPECT_EQ(described(node_of(tree, tree.items[place])), described(node)) << text;
            place = tree.items[place].next;
        }
        EXPECT_EQ(place, no_place) << text;
    }

    parser_room_t room;
    std::mt19937 random{7};
    ko::alg::family_t family;
    function_table_t functions{family};
    bool numeric_only = false;
    int good = 0;
};

TEST_F(binding_order, of_words_in_any_order_is_that_of_repeated_searches) {
    for (int i = 0; i < 5000; ++i) {
        compare(jumble());
    }
    EXPECT_GT(good, 100);
}

TEST_F(binding_order, of_expressions_is_that_of_repeated_searches) {
    for (int i = 0; i < 5000; ++i) {
        compare(expression(3));
    }
    EXPECT_GT(good, 1000);
}

TEST_F(binding_order, of_long_expressions_is_that_of_repeated_searches) {
    for (int i = 0; i < 1000; ++i) {
        compare(long_expression());
    }
    EXPECT_GT(good, 100);
}

TEST_F(binding_order, in_numeric_only_mode_is_that_of_repeated_searches) {
    numeric_only = true;
    for (int i = 0; i < 2000; ++i) {
        std::string text = expression(2);
        std::replace(text.begin(), text.end(), '=', '+');
        compare(text);
    }
    EXPECT_GT(good, 100);
}

} // namespace

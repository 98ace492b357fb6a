// Measures how much stack the library uses where an input asks for recursion, at half of the
// limit and at the limit, and where an input is merely large. Prints a table. The exit status is
// 0 when a stack of 1 MB has room for everything, with 256 KB to spare for the host program.
#include <cstdio>
#include <iostream>
#include <list>
#include <sstream>
#include <string>

#include "kobase.h"
#include "stack/painted_stack.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::result_t;
using ko::lxml::document_t;
using ko::xpp::preprocessor_t;

constexpr std::size_t stack_max = 768 << 10;
constexpr int large = 100000;

std::string repeated(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

result_t down(algebra_t& algebra, result_t n) {
    const int next = n.int_get() - 1;
    return next < 0 ? n : algebra.evaluate("down(" + std::to_string(next) + ")");
}

result_t down_on_copy(algebra_t& algebra, result_t n) {
    algebra_t copy(algebra);
    const int next = n.int_get() - 1;
    return next < 0 ? n : copy.evaluate("down_on_copy(" + std::to_string(next) + ")");
}

void evaluate(int n, const std::string& text) {
    algebra_t algebra;
    algebra.define("down", down);
    algebra.define("down_on_copy", down_on_copy);
    algebra.macro_define("f(n)", "n < 1 ? 0 : max(1, 2 * (1 + (AGAIN)))");
    algebra.macro_define("AGAIN", "f(n - 1)");
    algebra.assign("again", "(n = n - 1) < 1 ? 0 : evaluate(again)");
    algebra.assign("further", "(n = n - 1) < 1 ? 0 : assign('x', further)");
    algebra.assign("n", n);
    algebra.evaluate(text);
}

void select(int filters) {
    document_t document;
    document.load_from_string(repeated(filters + 1, "<a>") + repeated(filters + 1, "</a>"));
    std::list<ko::lxml::node_t*> nodes;
    document.root->select_nodes("a" + repeated(filters - 1, "[a") + repeated(filters - 1, "]"),
                                nodes);
}

/// The directives of a document, inside its top element.
std::string wrapped(const std::string& content) {
    return "<r xmlns:x='" + ko::xpp::default_xpp_uri + "'>" + content + "</r>";
}

/// Gives the same element again and again.
class again_t : public ko::xpp::plugin_t {
public:
    explicit again_t(const std::string& text) { document.load_from_string(text); }
    ko::lxml::element_t* generate(ko::lxml::element_t*) override { return document.root; }

private:
    document_t document;
};

/// Carries out a directive that brings itself in again, `n` times in all.
void process(int n, const std::string& directive) {
    const std::string again = "<x:if condition='(n=n-1)&gt;0'>" + directive + "</x:if>";
    document_t source;
    source.load_from_string(wrapped("<x:define name='d'>" + again + "</x:define>" + directive));
    auto* const part = new document_t;
    ko::xpp::file_cache_t cache;
    cache.insert("d", part);
    part->load_from_string(wrapped(again));
    document_t output;
    preprocessor_t preprocessor(output, &cache);
    preprocessor.register_plugin("d", new again_t(wrapped(again)));
    preprocessor.insert_argument("n", n);
    preprocessor.process(source.root, preprocessor_t::process_include);
}

std::string terms(int n) {
    return "1" + repeated(n, "+1");
}

std::string parentheses(int n) {
    return repeated(n, "-(") + "1" + repeated(n, ")");
}

void evaluate_alone(const std::string& text) {
    algebra_t algebra;
    algebra.evaluate(text);
    const algebra_t copy(algebra);
}

/// Loads, prints, copies, searches, processes and destroys a document.
void handle(const std::string& text, const std::string& path) {
    document_t document;
    document.load_from_string(text);
    std::ostringstream out;
    document.root->print(out, 0, 0, true, true);
    const document_t copy(document);
    document.root->select_single_node(path);
    document_t output;
    preprocessor_t(output, nullptr).process(document.root, preprocessor_t::process_include);
    document.root->children_delete();
}

/// Loads a document with a chain of entities, used in text and in an attribute.
void expand(int entities) {
    std::string chain = "<!ENTITY e0 'x'>";
    std::string last = "&e0;";
    for (int i = 1; i <= entities; ++i) {
        chain += "<!ENTITY e" + std::to_string(i) + " '" + last + "'>";
        last = "&e" + std::to_string(i) + ";";
    }
    document_t document;
    document.load_from_string("<!DOCTYPE r [" + chain + "]><r a='" + last + "'>" + last + "</r>");
}

struct case_t {
    const char* what;
    int levels; ///< the limit, or what is large
    std::function<void(int)> action;
};

const case_t cases[] = {
    {"script function", 999,
     [](int n) {
         evaluate(n, "f(n)");
     }},
    {"built-in `evaluate`", 999,
     [](int n) {
         evaluate(n, "evaluate(again)");
     }},
    {"built-in `assign`", 999,
     [](int n) {
         evaluate(n, "assign('x', further)");
     }},
    {"host function that evaluates", 999,
     [](int n) {
         evaluate(n, "down(n)");
     }},
    {"host function that evaluates on a copy", 999,
     [](int n) {
         evaluate(n, "down_on_copy(n)");
     }},
    {"filters of a path", 200, select},
    {"insert", 10000,
     [](int n) {
         process(n, "<x:insert name='d'/>");
     }},
    {"include", 200,
     [](int n) {
         process(n, "<x:include file='d'/>");
     }},
    {"plugin", 200,
     [](int n) {
         process(n, "<x:plugin name='d'/>");
     }},
    {"entities that refer to entities", 1000, expand},
    {"terms", large,
     [](int n) {
         evaluate_alone(terms(n));
     }},
    {"parentheses and signs", large,
     [](int n) {
         evaluate_alone(parentheses(n));
     }},
    {"levels of a document, steps of a path", large,
     [](int n) {
         handle(repeated(n, "<a>") + repeated(n, "</a>"), "a" + repeated(n - 2, "/a"));
     }},
    {"children, attributes", large,
     [](int n) {
         handle("<r>" + repeated(n, "<a i='1'/>") + "</r>", "a[@i=\"2\"]");
     }},
};

/// @return whether there was room for it
bool print(test::painted_stack_t& stack, const case_t& row) {
    const std::size_t half = stack.used_by([&] { row.action(row.levels / 2); });
    const std::size_t all = stack.used_by([&] { row.action(row.levels); });
    const auto levels = static_cast<std::size_t>(row.levels - row.levels / 2);
    std::printf("| %s | %d | %zu | %zu |%s\n", row.what, row.levels,
                (all > half ? all - half : 0) / levels, all, all > stack_max ? " TOO MUCH" : "");
    return all <= stack_max;
}

} // namespace

int main() {
    try {
        test::painted_stack_t stack;
        bool good = true;
        std::printf(
            "| what | levels | bytes a level | bytes in all |\n| --- | --- | --- | --- |\n");
        for (const case_t& row : cases) {
            good = print(stack, row) && good;
        }
        return good ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 2;
    }
}

// Objects that know nothing of each other, used on two threads at once. Run under
// ThreadSanitizer this shows that they share no state that is written to.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "kobase.h"

namespace {

constexpr int rounds = 200;

/// Runs both at the same time, each `rounds` times.
void at_once(const std::function<void()>& a, const std::function<void()>& b) {
    auto repeat = [](const std::function<void()>& action) {
        for (int i = 0; i < rounds; ++i) {
            action();
        }
    };
    std::thread other([&] { repeat(b); });
    repeat(a);
    other.join();
}

/// An evaluator with a variable, a macro, a script function and a parsed program.
void prepare(ko::alg::algebra_t& algebra) {
    algebra.assign("x", 3);
    algebra.macro_define("TWICE", "2 *");
    algebra.macro_define("square(a)", "a * a");
    ASSERT_TRUE(algebra.parse("y = square(x) + strlen(\"ab\")")) << algebra.parse_error_get();
}

/// Everything an evaluator does with what it owns; 11 and 6 whatever the other one does.
void use(ko::alg::algebra_t& algebra) {
    EXPECT_EQ(11, algebra.evaluate().int_get());
    EXPECT_EQ(6, algebra.evaluate("TWICE x").int_get());
    algebra.memory_push();
    algebra.assign("x", "text");
    EXPECT_THROW(algebra.evaluate("x * 1"), ko::exception_t);
    algebra.memory_pop();
    EXPECT_FALSE(algebra.parse("1 +"));
    ASSERT_TRUE(algebra.parse("y = square(x) + strlen(\"ab\")"));
}

const char* const source = "<r xmlns:x='kobase.org/xmlns/xmlpreprocessor' "
                           "xmlns:e='kobase.org/xmlns/xmlpreprocessor/expressionevaluator'>"
                           "<x:repeat index='n' first='1' last='3'><c e:id='n * 10'/>"
                           "</x:repeat></r>";

std::string print(const ko::lxml::document_t& document) {
    std::ostringstream out;
    document.root->print(out, 0, 0, true, false);
    return out.str();
}

/// Loads, queries, changes, copies and prints a document.
void use_document() {
    ko::lxml::document_t document;
    document.load_from_string("<r><c id='1'>a&amp;b</c><c id='2'/></r>");
    EXPECT_EQ(
        "2",
        ko::lxml::element_find(document, "c[@id=\"2\"]", true)->attribute_get_value("id", ""));
    const std::string before = print(document);
    document.element_remove(ko::lxml::element_find(document, "c", true));
    EXPECT_NE(before, print(ko::lxml::document_t(document)));
    EXPECT_THROW(document.load_from_string("<r>"), ko::errorcode_t);
}

void use_preprocessor() {
    ko::lxml::document_t input;
    input.load_from_string(source);
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor(output, nullptr);
    output.root = preprocessor.process(input.root, ko::xpp::preprocessor_t::process_include);
    EXPECT_NE(nullptr, ko::lxml::element_find(output, "c[@id=\"30\"]", false));
}

TEST(threads, may_each_use_an_evaluator) {
    ko::alg::algebra_t a;
    ko::alg::algebra_t b;
    prepare(a);
    prepare(b);
    at_once([&] { use(a); }, [&] { use(b); });
}

TEST(threads, may_use_an_evaluator_and_its_copy) {
    ko::alg::algebra_t original;
    prepare(original);
    ko::alg::algebra_t copy(original);
    at_once([&] { use(original); }, [&] { use(copy); });
}

TEST(threads, may_use_copies_of_copies_and_make_more) {
    ko::alg::algebra_t original;
    prepare(original);
    ko::alg::algebra_t copy(original);
    ko::alg::algebra_t copy_of_copy(copy);
    auto copied = [](ko::alg::algebra_t& origin) {
        ko::alg::algebra_t own(origin);
        use(own);
        origin = own;
        use(origin);
    };
    at_once([&] { copied(original); }, [&] { copied(copy_of_copy); });
}

TEST(threads, may_each_evaluate_a_list_of_their_own_on_copies_of_one_evaluator) {
    ko::alg::algebra_t original;
    prepare(original);
    auto evaluate = [](ko::alg::algebra_t& origin) {
        ko::alg::list_t list;
        ASSERT_TRUE(origin.parse("square(x) + TWICE x", list));
        ko::alg::algebra_t own(origin);
        ko::alg::algebra_t unrelated;
        unrelated.assign("x", 5);
        EXPECT_EQ(15, origin.evaluate(list).int_get());
        EXPECT_EQ(35, unrelated.evaluate(list).int_get());
        EXPECT_EQ(15, own.evaluate(list).int_get());
    };
    ko::alg::algebra_t copy(original);
    at_once([&] { evaluate(original); }, [&] { evaluate(copy); });
}

TEST(threads, may_each_make_and_destroy_evaluators) {
    auto live = [] {
        ko::alg::algebra_t algebra;
        prepare(algebra);
        use(algebra);
        float value = 0;
        EXPECT_TRUE(ko::alg::algebra("1.5 + 1", value));
    };
    at_once(live, live);
}

/// Calls a closure with a state of its own and one that the evaluator and its copies share.
void call(ko::alg::algebra_t& algebra) {
    EXPECT_EQ(8, algebra.evaluate("offset(square(x) - 3, 2)").int_get());
    algebra.define(
        "own", [n = 1](ko::alg::algebra_t&, const auto&) mutable { return n++; }, 0, 0);
    EXPECT_EQ(2, algebra.evaluate("own()*0 + own()").int_get());
    EXPECT_TRUE(algebra.undefine("own"));
}

TEST(threads, may_call_a_closure_of_an_evaluator_and_its_copy) {
    ko::alg::algebra_t original;
    prepare(original);
    const std::string state = "a state that the copies share";
    original.define(
        "offset",
        [state](ko::alg::algebra_t& caller, const std::vector<ko::alg::result_t>& values) {
            caller.assign("z", state);
            return values.at(0) + values.at(1);
        },
        1, 3);
    original.resolver_set([state](const std::string& name, ko::alg::result_t& value) {
        value = state;
        return name == "known";
    });
    ko::alg::algebra_t copy(original);
    auto resolve = [&](ko::alg::algebra_t& algebra) {
        call(algebra);
        EXPECT_EQ(state, algebra.evaluate("known").string_get(false, 0));
    };
    at_once([&] { resolve(original); }, [&] { resolve(copy); });
}

/// Evaluates what ends by an interruption only.
void run_until_interrupted(ko::alg::algebra_t& algebra) {
    try {
        algebra.evaluate("double(60)");
        ADD_FAILURE() << "came to an end";
    } catch (const ko::exception_t& e) {
        EXPECT_STREQ("algebra_t -- evaluation interrupted", e.what());
    }
}

TEST(threads, may_interrupt_an_evaluation) {
    std::atomic<bool> flag{false};
    std::atomic<int> turns{0};
    ko::alg::algebra_t algebra;
    algebra.define(
        "turn", [&](ko::alg::algebra_t&, const auto&) { return ++turns; }, 0, 0);
    algebra.macro_define("double(n)", "n ? TWICE : 0");
    algebra.macro_define("TWICE", "double(n - 1) + double(n - 1) + turn");
    algebra.interrupt_set(&flag);
    std::thread runs([&] { run_until_interrupted(algebra); });
    while (turns < 100) {
        std::this_thread::yield();
    }
    flag = true;
    runs.join();
    flag = false;
    EXPECT_EQ(2, algebra.evaluate("1 + 1").int_get());
}

TEST(threads, may_interrupt_the_evaluations_of_copies_all_at_once) {
    std::atomic<bool> flag{false};
    ko::alg::algebra_t original;
    prepare(original);
    original.interrupt_set(&flag);
    ko::alg::algebra_t copy(original);
    auto work = [](ko::alg::algebra_t& algebra) {
        for (;;) {
            try {
                algebra.evaluate("square(x) + evaluate('1 + 2')");
            } catch (const ko::exception_t& e) {
                EXPECT_STREQ("algebra_t -- evaluation interrupted", e.what());
                return;
            }
        }
    };
    std::thread other([&] { work(copy); });
    std::thread third([&] { flag = true; });
    work(original);
    other.join();
    third.join();
}

TEST(threads, may_each_use_a_document) {
    at_once(use_document, use_document);
}

TEST(threads, may_each_use_a_preprocessor) {
    at_once(use_preprocessor, use_preprocessor);
}

TEST(threads, may_each_read_the_constants) {
    auto read = [] {
        EXPECT_STREQ("xml_parse_error",
                     ko::errorcode::entry_find(ko::errorcode::xml_parse_error)->name);
        EXPECT_TRUE(ko::lxml::str_empty.empty());
        EXPECT_STREQ(KO_VERSION_STRING, ko::version());
    };
    at_once(read, read);
}

/// Reads a whole document without adding a name to it.
void read(const ko::lxml::document_t& document) {
    const ko::lxml::element_t& root = *document.root;
    EXPECT_EQ("2", root.child_find("d")->attribute_find("id", "urn:x")->value);
    EXPECT_EQ(nullptr, root.attribute_find("a name that nobody knows"));
    EXPECT_EQ(nullptr, root.child_find("c", "urn:unknown"));
    std::size_t found = 0;
    for (const ko::lxml::element_t* c : root.children_named("c")) {
        found += c->attributes.size() + document.elements.count(c) + c->name_get().size();
    }
    EXPECT_EQ(9U, found);
    EXPECT_EQ(1UL, document.position_get(&root)->line);
}

TEST(threads, may_read_one_document_that_nobody_changes) {
    ko::lxml::document_t document;
    ko::lxml::load_options_t options;
    options.positions = true;
    document.load_from_string(
        "<r xmlns:x='urn:x'><c a='1'/><c a='2'/><d x:id='2'/><c a='3'/></r>", options);
    at_once([&] { read(document); }, [&] { read(document); });
}

} // namespace

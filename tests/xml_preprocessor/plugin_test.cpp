#include "xml_preprocessor/fixture.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;
using ko::xpp::preprocessor_t;

/// Does what a function says, and counts its deletions.
class plugin_t : public ko::xpp::plugin_t {
public:
    using function_t = std::function<element_t*(element_t*)>;

    explicit plugin_t(function_t f, int* counter = nullptr)
        : function(std::move(f)), deletions(counter) {}
    ~plugin_t() override {
        if (deletions != nullptr) {
            ++*deletions;
        }
    }
    element_t* generate(element_t* directive) override { return function(directive); }

private:
    function_t function;
    int* deletions;
};

class plugins : public test::preprocessor_test_t {
protected:
    void add(const std::string& name, plugin_t::function_t function) {
        preprocessor.register_plugin(name, new plugin_t(std::move(function)));
    }
    /// The output element whose last child has that name.
    element_t* output_with_child(const std::string& name) {
        const auto has_it = [&](const element_t* e) {
            return !e->children.empty() && e->children.back()->name_get() == name;
        };
        return *std::find_if(output.elements.begin(), output.elements.end(), has_it);
    }
    /// A plug-in that always generates the children of the same element.
    void add_fixed(const std::string& name, const std::string& content) {
        element_t* generated = source(test::wrapped(content));
        add(name, [generated](element_t*) { return generated; });
    }
};

TEST_F(plugins, children_of_the_generated_element_stand_in_place_of_the_directive) {
    add_fixed("gen", "<b/><x:if condition='1'><c e:n='1+1'/></x:if>");
    EXPECT_EQ(run("<a/><x:plugin name='gen'><no/></x:plugin><z/>"),
              "<a /><b /><c n=\"2\" /><z />");
}

TEST_F(plugins, get_the_directive_as_written) {
    element_t* seen = nullptr;
    add("gen", [&](element_t* directive) {
        seen = directive;
        return nullptr;
    });
    element_t* top = source(test::wrapped("<x:plugin name='gen' e:k='1+1'><x:if/></x:plugin>"));
    preprocessor.process(top, flags);
    EXPECT_EQ(seen, top->children.front());
    EXPECT_EQ(seen->attribute_get("k", ko::xpp::default_xpr_uri)->value, "1+1");
    EXPECT_EQ(seen->children.size(), 1U);
}

TEST_F(plugins, may_give_back_the_directive_itself) {
    add("echo", [](element_t* directive) { return directive; });
    EXPECT_EQ(run("<x:plugin name='echo'><a e:n='1+1'/></x:plugin>"), "<a n=\"2\" />");
}

TEST_F(plugins, may_give_nothing) {
    add("none", [](element_t*) { return nullptr; });
    EXPECT_EQ(run("<a/><x:plugin name='none'><b/></x:plugin>"), "<a />");
}

TEST_F(plugins, may_change_an_expression_between_two_passes_in_its_place) {
    element_t* const top = source(test::wrapped("<x:repeat index='i' first='1' last='3'>"
                                                "<x:plugin name='next'/><a e:v='1+i'/>"
                                                "</x:repeat>"));
    element_t* const shown = top->children.front()->children.back();
    add("next", [&](element_t*) -> element_t* {
        shown->attribute_find("v", ko::xpp::default_xpr_uri)->value[0]++;
        return nullptr;
    });
    EXPECT_EQ(test::printed(preprocessor.process(top, flags)),
              "<r ><a v=\"3\" /><a v=\"5\" /><a v=\"7\" /></r>");
}

TEST_F(plugins, may_do_what_they_like_to_the_variable_of_a_loop) {
    ko::alg::algebra_t other;
    std::vector<ko::alg::algebra_t> seen;
    add("meddle", [&](element_t*) -> element_t* {
        ko::alg::algebra_t& algebra = preprocessor.algebra_get();
        seen.push_back(algebra);
        const auto pass = seen.size();
        pass == 1 ? static_cast<void>(algebra.erase("i")) : algebra.memory_copy(other);
        if (pass == 3) {
            algebra = other;
        }
        return nullptr;
    });
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='4'>"
                  "<a e:v='i'/><x:plugin name='meddle'/></x:repeat>"),
              "<a v=\"1\" /><a v=\"2\" /><a v=\"3\" /><a v=\"4\" />");
    for (int pass = 1; pass <= 4; ++pass) {
        EXPECT_EQ(seen[static_cast<std::size_t>(pass) - 1].get("i").int_get(), pass);
    }
}

TEST_F(plugins, are_found_by_exact_name) {
    add_fixed("gen", "<a/>");
    EXPECT_TRUE(fails("<x:plugin name='Gen'/>", "plugin name not defined: Gen"));
    EXPECT_TRUE(fails("<x:plugin name='\"gen\"'/>", "plugin name not defined: \"gen\""));
    EXPECT_TRUE(fails("<x:plugin/>", "attribute name missing in element plugin"));
    EXPECT_EQ(run("<x:plugin e:name='gen'/>"), "<a />") << "the name is never evaluated";
}

TEST_F(plugins, may_rebuild_their_document_on_each_call) {
    std::unique_ptr<document_t> document;
    int calls = 0;
    add("gen", [&](element_t*) {
        document = std::make_unique<document_t>();
        for (int i = 0; i < calls; ++i) {
            document->atoms->get("shift" + std::to_string(i));
        }
        ++calls;
        document->load_from_string(test::wrapped("<x:if condition='i'><a e:i='i'/></x:if>"));
        return document->root;
    });
    EXPECT_EQ(run("<x:repeat index='i' first='0' last='3'><x:plugin name='gen'/></x:repeat>"),
              "<a i=\"1\" /><a i=\"2\" /><a i=\"3\" />");
}

TEST_F(plugins, generate_for_other_plugins_too) {
    add_fixed("inner", "<a/>");
    add_fixed("outer", "<x:plugin name='inner'/><b/>");
    EXPECT_EQ(run("<x:plugin name='outer'/>"), "<a /><b />");
}

TEST_F(plugins, that_generate_for_themselves_end_at_the_limit) {
    add_fixed("gen", "<a><x:plugin name='gen'/></a>");
    EXPECT_TRUE(fails("<x:plugin name='gen'/>", "plugin nested more than 200 levels deep: gen"));
    EXPECT_EQ(run("<a/>"), "<a />");
}

TEST_F(plugins, that_generate_for_themselves_work_to_the_limit_and_not_one_level_more) {
    add_fixed("gen", "<x:if condition='n=n-1'><x:plugin name='gen'/></x:if>");
    EXPECT_EQ(run("<x:evaluate expression='n=200'/><x:plugin name='gen'/>"), "");
    EXPECT_TRUE(fails("<x:evaluate expression='n=201'/><x:plugin name='gen'/>",
                      "plugin nested more than 200 levels deep: gen"));
}

TEST_F(plugins, may_define_what_is_inserted_later) {
    add_fixed("gen", "<x:define name='d'><x:if condition='1'><a/></x:if></x:define>");
    EXPECT_EQ(run("<x:plugin name='gen'/><x:insert name='d'/>"), "<a />");
}

TEST_F(plugins, may_process_with_the_preprocessor_that_calls_them) {
    flags = preprocessor_t::include_comments;
    element_t* part = source(test::wrapped("<x:if condition='v=5'><inner/></x:if>"));
    add("gen", [&, part](element_t*) {
        return preprocessor.process(part, preprocessor_t::process_include);
    });
    EXPECT_EQ(run("<x:plugin name='gen'/><x:include file='dropped'/><a e:v='v'/>"),
              "<inner /><a v=\"5\" />");
}

TEST_F(plugins, that_process_themselves_end_at_the_limit) {
    element_t* part = source(test::wrapped("<x:plugin name='gen'/>"));
    add("gen", [&, part](element_t*) { return preprocessor.process(part, flags); });
    EXPECT_TRUE(fails("<x:plugin name='gen'/>", "plugin nested more than 200 levels deep: gen"));
    EXPECT_EQ(run("<a/>"), "<a />");
}

TEST_F(plugins, let_a_failure_through_from_inner_specify_to_outer) {
    element_t* part = source(test::wrapped("<x:specify namespace='inner' index='i' values='1'>"
                                           "<x:pragma><x:insert name='no'/></x:pragma>"
                                           "</x:specify>"));
    add("gen", [&, part](element_t*) { return preprocessor.process(part, flags); });
    const std::string lines = test::standard_output([&] {
        EXPECT_TRUE(fails("<x:specify namespace='outer' index='i' values='1'>"
                          "<x:plugin name='gen'/></x:specify>",
                          "insert name not defined: no"));
    });
    EXPECT_EQ(lines,
              "Caught exception in specify : inner\nCaught exception in specify : outer\n");
}

TEST_F(plugins, may_change_the_directive) {
    add("more", [](element_t* directive) {
        const std::string n = directive->attribute_get_value("n", "") + "i";
        directive->attribute_set("n", n);
        directive->append(directive->document->element_create(n, ""));
        return directive;
    });
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='2'><x:plugin name='more'/></x:repeat>"),
              "<i /><i /><ii />");
}

TEST_F(plugins, may_free_the_directive) {
    add("once", [](element_t* directive) {
        directive->document->element_remove(directive);
        return nullptr;
    });
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='2'><x:plugin name='once'><no/></x:plugin>"
                  "<a e:i='i'/></x:repeat>"),
              "<a i=\"1\" /><a i=\"2\" />");
}

TEST_F(plugins, may_change_the_namespaces_at_once) {
    add("switch", [&](element_t*) {
        preprocessor.set_namespace("urn:d", "urn:v");
        return nullptr;
    });
    EXPECT_EQ(run("<x:plugin name='switch'/><d:if xmlns:d='urn:d' condition='0'><a/></d:if>"),
              "");
}

TEST_F(plugins, may_generate_in_the_output_document) {
    add("gen", [&](element_t*) {
        element_t* generated = output.element_create("g", "");
        generated->append(output.element_create("a", ""))->text = "t";
        return generated;
    });
    EXPECT_EQ(run("<x:plugin name='gen'/><b><x:plugin name='gen'/></b>"),
              "<a >t</a><b ><a >t</a></b>");
}

TEST_F(plugins, must_not_generate_what_is_being_filled) {
    add("loop", [&](element_t*) { return output_with_child("last")->children.back(); });
    EXPECT_TRUE(fails("<a/><last><b/><x:plugin name='loop'/></last>",
                      "plugin generated what is being filled: loop"));
    EXPECT_EQ(run("<a/>"), "<a />");
}

TEST_F(plugins, must_not_generate_what_holds_what_is_being_filled) {
    add("loop", [&](element_t*) { return output_with_child("last"); });
    EXPECT_TRUE(fails("<a/><last><b/><x:plugin name='loop'/></last>",
                      "plugin generated what is being filled: loop"));
}

TEST_F(plugins, refuse_null) {
    EXPECT_THROWS(preprocessor.register_plugin("gen", nullptr),
                  "preprocessor_t::register_plugin() -- plug-in is null");
    EXPECT_TRUE(fails("<x:plugin name='gen'/>", "plugin name not defined: gen"));
}

/// A preprocessor with plug-ins that generate nothing and count their deletions.
class plugin_ownership : public testing::Test {
protected:
    plugin_t* make(int& counter) {
        return new plugin_t([](element_t*) { return nullptr; }, &counter);
    }

    document_t output;
    std::unique_ptr<preprocessor_t> preprocessor =
        std::make_unique<preprocessor_t>(output, nullptr);
    int first = 0;
    int second = 0;
};

TEST_F(plugin_ownership, both_of_two_are_deleted_once) {
    preprocessor->register_plugin("a", make(first));
    preprocessor->register_plugin("b", make(second));
    EXPECT_EQ(first + second, 0);
    preprocessor.reset();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST_F(plugin_ownership, a_replaced_one_is_left_to_the_caller) {
    const std::unique_ptr<plugin_t> replaced(make(first));
    preprocessor->register_plugin("a", replaced.get());
    preprocessor->register_plugin("a", make(second));
    preprocessor.reset();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST_F(plugin_ownership, one_under_two_names_is_deleted_once) {
    plugin_t* shared = make(first);
    preprocessor->register_plugin("a", shared);
    preprocessor->register_plugin("b", shared);
    preprocessor.reset();
    EXPECT_EQ(first, 1);
}

TEST_F(plugin_ownership, one_that_throws_is_still_deleted_once) {
    preprocessor->register_plugin(
        "a", new plugin_t([](element_t*) -> element_t* { throw 1; }, &first));
    document_t source;
    source.load_from_string(test::wrapped("<x:plugin name='a'/>"));
    EXPECT_THROW(preprocessor->process(source.root, preprocessor_t::process_include), int);
    preprocessor.reset();
    EXPECT_EQ(first, 1);
}

} // namespace

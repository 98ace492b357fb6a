// What a host decides: the resolver of includes, limits, and the evaluator.
#include "xml_preprocessor/include_fixture.h"

#include <cstdint>
#include <limits>

namespace {

using ko::lxml::element_t;
using ko::xpp::preprocessor_t;
class include_resolver : public test::include_test_t {
protected:
    include_resolver() {
        preprocessor.resolver_set([this](const std::string& file, const element_t& directive) {
            asked += "[" + file + " " + directive.name_get() + "]";
            return file == "none" ? std::string() : dir.path("real-" + file);
        });
    }

    std::string asked;
};

TEST_F(include_resolver, gives_the_path_of_a_file) {
    write("real-a", "<a/>");
    EXPECT_EQ(run("<x:include file='a' searchpath='false'/>"), "<a />");
    EXPECT_EQ(asked, "[a include]");
    EXPECT_EQ(preprocessor.files_get(), std::vector<std::string>{dir.path("real-a")});
}

TEST_F(include_resolver, that_gives_no_path_is_a_file_that_is_not_found) {
    EXPECT_TRUE(fails("<x:include file='none'/>", "failed to load xml file:none"));
}

TEST_F(include_resolver, that_gives_a_path_where_nothing_is_fails_as_reading_does) {
    test::standard_output([&] { EXPECT_THROW(run("<x:include file='b'/>"), ko::errorcode_t); });
}

TEST_F(include_resolver, ends_the_process_by_what_it_throws) {
    preprocessor.resolver_set(
        [](const std::string&, const element_t&) -> std::string { throw 5; });
    EXPECT_THROW(run("<x:include file='a'/>"), int);
}

TEST_F(include_resolver, is_not_asked_without_the_flag) {
    flags = preprocessor_t::include_comments;
    EXPECT_EQ(run("<x:include file='a'/>"), "");
    EXPECT_EQ(asked, "");
}

TEST_F(include_resolver, that_is_empty_leaves_the_search_as_it_is) {
    preprocessor.resolver_set(nullptr);
    write("a", "<found/>");
    write("main", "<x:include file='a'/>");
    EXPECT_EQ(process_file("main"), "<r ><found /></r>");
}

TEST_F(include_resolver, tells_apart_in_a_cache_what_has_one_name_and_two_paths) {
    ko::xpp::file_cache_t cache;
    preprocessor_t cached(output, &cache);
    int calls = 0;
    cached.resolver_set([&](const std::string& file, const element_t&) {
        return dir.path(file + std::to_string(++calls % 2));
    });
    write("a0", "<zero/>");
    write("a1", "<one/>");
    write("main", "<x:include file='a'/><x:include file='a'/><x:include file='a'/>");
    EXPECT_EQ(process_file(cached, "main"), "<r ><one /><zero /><one /></r>");
    EXPECT_NE(cache.get(dir.path("a0")), nullptr);
    EXPECT_EQ(cache.get("a"), nullptr);
    EXPECT_EQ(cached.files_get().size(), 2U);
}

class preprocessor_limits : public test::include_test_t {
protected:
    /// Sets one limit.
    template <class T> void limit(T ko::xpp::limits_t::*member, T value) {
        ko::xpp::limits_t all;
        all.*member = value;
        preprocessor.limits_set(all);
    }
    static std::string loop(int passes) {
        return "<x:repeat index='i' first='1' last='" + std::to_string(passes) +
               "'><a/></x:repeat>";
    }
    using limits_t = ko::xpp::limits_t;
};

TEST_F(preprocessor_limits, are_none_but_those_of_nesting_by_default) {
    const limits_t set = preprocessor.limits_get();
    EXPECT_EQ(set.elements, 0U);
    EXPECT_EQ(set.passes, 0U);
    EXPECT_EQ(set.include, 200U);
    EXPECT_EQ(set.insert, 10000U);
    EXPECT_EQ(set.plugin, 200U);
}

TEST_F(preprocessor_limits, of_elements_let_as_many_be_made) {
    limit(&limits_t::elements, std::size_t(4));
    EXPECT_EQ(run(loop(3)), "<a /><a /><a />");
    EXPECT_TRUE(fails(loop(4), "preprocessor_t::process() -- more than 4 elements made"));
    EXPECT_EQ(run(loop(3)), "<a /><a /><a />");
    EXPECT_EQ(preprocessor.limits_get().elements, 4U);
}

TEST_F(preprocessor_limits, of_passes_count_those_of_all_loops) {
    limit(&limits_t::passes, std::size_t(5));
    const std::string rest = "<x:for initialize='i=0' condition='i&lt;2' "
                             "update='i=i+1'/><x:specify index='j' values='";
    EXPECT_EQ(run(loop(1) + rest + "1,2'/>"), "<a />");
    EXPECT_TRUE(fails(loop(1) + rest + "1,2,3'/>",
                      "preprocessor_t::process() -- more than 5 passes of loops"));
}

TEST_F(preprocessor_limits, of_passes_end_a_loop_without_an_end) {
    limit(&limits_t::passes, std::size_t(1000));
    EXPECT_TRUE(fails("<x:for initialize='i=0' condition='1' update='i=i+1'/>",
                      "preprocessor_t::process() -- more than 1000 passes of loops"));
    EXPECT_EQ(run("<a e:i='i'/>"), "<a i=\"1000\" />");
}

TEST_F(preprocessor_limits, of_nesting_take_the_place_of_the_usual_ones) {
    write("a.xml", "<x:include file='a.xml'/>");
    limit(&limits_t::include, 3U);
    EXPECT_TRUE(file_fails("a.xml", "include nested more than 3 levels deep: a.xml"));
    limit(&limits_t::insert, 4U);
    EXPECT_TRUE(fails("<x:define name='d'><x:insert name='d'/></x:define><x:insert name='d'/>",
                      "insert nested more than 4 levels deep: d"));
    preprocessor.register_plugin(
        "p", new test::generator_t(source(test::wrapped("<x:plugin name='p'/>"))));
    limit(&limits_t::plugin, 2U);
    EXPECT_TRUE(fails("<x:plugin name='p'/>", "plugin nested more than 2 levels deep: p"));
}

TEST_F(preprocessor_limits, of_nesting_may_be_none) {
    limit(&limits_t::insert, 0U);
    EXPECT_EQ(run("<x:evaluate expression='i=0'/><x:define name='d'><x:if condition='i&lt;12000'>"
                  "<x:evaluate expression='i=i+1'/><x:insert name='d'/></x:if></x:define>"
                  "<x:insert name='d'/><a e:i='i'/>"),
              "<a i=\"12000\" />");
}

class preprocessor_evaluator : public test::preprocessor_test_t {};

TEST_F(preprocessor_evaluator, has_the_variables_that_a_configuration_set) {
    run("<x:evaluate expression='v = 6'/>");
    EXPECT_EQ(preprocessor.algebra_get().get("v").int_get(), 6);
    preprocessor.algebra_get().assign("v", 7);
    EXPECT_EQ(run("<a e:v='v'/>"), "<a v=\"7\" />");
}

TEST_F(preprocessor_evaluator, takes_functions_and_macros) {
    ko::alg::algebra_t& algebra = preprocessor.algebra_get();
    algebra.define("twice", [](ko::alg::algebra_t&, ko::alg::result_t v) { return v + v; });
    algebra.macro_define("half(x)", "x/2");
    algebra.macro_define("LEVEL", "(3+1)");
    EXPECT_EQ(run("<a e:a='twice(4)' e:b='half(LEVEL)'/>"), "<a a=\"8\" b=\"2\" />");
}

TEST_F(preprocessor_evaluator, counts_what_is_changed_between_two_processes) {
    const std::string content = "<a e:v='rate(1)+LEVEL'/>";
    ko::alg::algebra_t& algebra = preprocessor.algebra_get();
    algebra.macro_define("rate(x)", "x");
    algebra.macro_define("LEVEL", "10");
    EXPECT_EQ(run(content), "<a v=\"11\" />");
    EXPECT_EQ(run(content), "<a v=\"11\" />");
    algebra.macro_define("rate(x)", "x*2");
    algebra.macro_define("LEVEL", "20");
    EXPECT_EQ(run(content), "<a v=\"22\" />");
    algebra.define("rate",
                   [](ko::alg::algebra_t&, ko::alg::result_t) { return ko::alg::result_t(5); });
    EXPECT_EQ(run(content), "<a v=\"25\" />");
    algebra.macro_undefine("LEVEL");
    EXPECT_EQ(
        test::standard_output([&] { EXPECT_EQ(run(content), "<a v=\"rate(1)+LEVEL\" />"); }),
        "Caught exception in expression : rate(1)+LEVEL\n");
}

TEST_F(preprocessor_evaluator, counts_what_a_plugin_changes_while_a_loop_runs) {
    class changing_t : public ko::xpp::plugin_t {
    public:
        explicit changing_t(preprocessor_t& by) : preprocessor(by) {}
        element_t* generate(element_t*) override {
            preprocessor.algebra_get().macro_define("STEP", std::to_string(++calls));
            return nullptr;
        }

    private:
        preprocessor_t& preprocessor;
        int calls = 0;
    };
    preprocessor.register_plugin("change", new changing_t(preprocessor));
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='3'><x:plugin name='change'/>"
                  "<a e:s='STEP'/></x:repeat>"),
              "<a s=\"1\" /><a s=\"2\" /><a s=\"3\" />");
}

TEST_F(preprocessor_evaluator, counts_what_a_host_function_changes_while_a_loop_runs) {
    ko::alg::algebra_t& algebra = preprocessor.algebra_get();
    algebra.define("next", [](ko::alg::algebra_t& a) {
        const int count = a.find("count") ? a.get("count").int_get() + 1 : 1;
        a.assign("count", count);
        a.macro_define("NEXT", std::to_string(count * 10));
        return ko::alg::result_t(count);
    });
    EXPECT_EQ(
        run("<x:repeat index='i' first='1' last='3'><a e:a='next()' e:b='NEXT'/></x:repeat>"),
        "<a a=\"1\" b=\"10\" /><a a=\"2\" b=\"20\" /><a a=\"3\" b=\"30\" />");
}

TEST_F(preprocessor_evaluator, may_be_used_by_a_host_function_while_it_evaluates) {
    static preprocessor_t* by = nullptr;
    by = &preprocessor;
    preprocessor.algebra_get().define("more", [](ko::alg::algebra_t& a) {
        std::string texts;
        for (int i = 0; i < 3000; ++i) {
            texts += "<x:evaluate expression='w=" + std::to_string(i) + "'/>";
        }
        ko::lxml::document_t inner;
        inner.load_from_string(test::wrapped(texts));
        by->process(inner.root, preprocessor_t::process_include);
        a.macro_define("k", "2");
        return a.get("w");
    });
    EXPECT_EQ(run("<x:repeat index='i' first='1' last='2'><a e:n='more()+1'/></x:repeat>"),
              "<a n=\"3000\" /><a n=\"3000\" />");
}

TEST_F(preprocessor_evaluator, evaluates_more_texts_than_are_kept) {
    EXPECT_EQ(run("<x:evaluate expression='sum=0'/>"), "");
    std::string content;
    for (int i = 0; i < 3000; ++i) {
        content += "<x:evaluate expression='sum=sum+" + std::to_string(i) + "'/>";
    }
    run(content + content);
    EXPECT_EQ(run("<a e:s='sum'/>"), "<a s=\"8997000\" />");
}

class integer_argument : public test::preprocessor_test_t {
protected:
    template <class T> std::string value(T v) {
        preprocessor.insert_argument("v", v);
        return run("<a e:v='v'/>");
    }
};

TEST_F(integer_argument, of_every_type_is_an_integer_where_it_fits) {
    EXPECT_EQ(value(std::string("four").size()), "<a v=\"4\" />");
    EXPECT_EQ(value(7U), "<a v=\"7\" />");
    EXPECT_EQ(value(-7L), "<a v=\"-7\" />");
    EXPECT_EQ(value(7UL), "<a v=\"7\" />");
    EXPECT_EQ(value(std::numeric_limits<int>::min() + 0LL), "<a v=\"-2147483648\" />");
    EXPECT_EQ(value(2147483647ULL), "<a v=\"2147483647\" />");
    EXPECT_EQ(value(static_cast<short>(-3)), "<a v=\"-3\" />");
    EXPECT_EQ(value(std::uint8_t(200)), "<a v=\"200\" />");
}

TEST_F(integer_argument, that_does_not_fit_is_the_nearest_float) {
    EXPECT_EQ(value(4294967296LL), "<a v=\"4.29497e+09\" />");
    EXPECT_EQ(value(-4294967296LL), "<a v=\"-4.29497e+09\" />");
    EXPECT_EQ(value(std::numeric_limits<unsigned>::max()), "<a v=\"4.29497e+09\" />");
    EXPECT_EQ(value(std::numeric_limits<std::uint64_t>::max()), "<a v=\"1.84467e+19\" />");
}

} // namespace

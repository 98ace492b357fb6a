#include <string>

#include "support/temp_dir.h"
#include "xml_preprocessor/fixture.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;

/// Generates as many channels as its unit has outputs, numbered under the prefix that the
/// directive gives. They are directives themselves.
class channels_t : public ko::xpp::plugin_t {
public:
    explicit channels_t(int outputs) : count(outputs) {}

    element_t* generate(element_t* directive) override {
        element_t* top = document.element_create("generated", "");
        for (int i = 1; i <= count; ++i) {
            element_t* channel = top->append(document.element_create("channel", ""));
            channel->attribute_set("id", directive->attribute_get_value("prefix", "") +
                                             std::to_string(i));
            channel->attribute_set_ns("gain", ko::xpp::default_xpr_uri,
                                      "level + " + std::to_string(i));
            element_t* bright = document.element_create("if", ko::xpp::default_xpp_uri);
            bright->attribute_set("condition", std::to_string(i) + " == unit");
            channel->append(bright)->append(document.element_create("bright", ""));
        }
        return top;
    }

private:
    int count;
    document_t document;
};

/// The configuration of a unit, as a file.
std::string configuration(ko::xpp::file_cache_t& cache, int unit, int outputs) {
    const std::string folder = KOBASE_TEST_DATA "/xml_preprocessor/configuration/";
    document_t source;
    source.load(folder + "main.xml");
    document_t output;
    ko::xpp::preprocessor_t preprocessor(output, &cache);
    preprocessor.register_plugin("channels", new channels_t(outputs));
    preprocessor.insert_argument("unit", unit);
    preprocessor.insert_argument("outputs", outputs);
    output.root = preprocessor.process(source.root, ko::xpp::preprocessor_t::process_include);
    const test::temp_dir_t dir;
    output.save(dir.path("out.xml"), true, true);
    return dir.read("out.xml");
}

TEST(configuration, over_ten_files_comes_out_the_same_for_three_units_with_one_cache) {
    ko::xpp::file_cache_t cache;
    for (int unit = 1; unit <= 3; ++unit) {
        const std::string expected = KOBASE_TEST_DATA "/xml_preprocessor/configuration/unit_" +
                                     std::to_string(unit) + ".out";
        EXPECT_EQ(configuration(cache, unit, 2 * unit), test::read_file(expected)) << unit;
    }
    for (const char* name : {"defaults", "definitions", "network", "amplifier", "zones",
                             "presets", "limits", "schedule"}) {
        EXPECT_NE(cache.get(std::string("parts/") + name + ".xml"), nullptr) << name;
    }
    EXPECT_NE(cache.get("limiter.xml"), nullptr);
    EXPECT_NE(cache.get("services.xml"), nullptr);
}

} // namespace

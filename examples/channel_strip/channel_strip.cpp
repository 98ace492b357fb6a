// A plug-in that generates the channel strips of a mixing desk: channel_strip DESK.xml
#include <iostream>
#include <string>

#include "exception/exception.h"
#include "lxml/lxml.h"
#include "str/str.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

using ko::lxml::element_t;

// <x:plugin name="strips" names="vocals,bass,drums"/> becomes a strip for each name, with what
// the directive holds in each of them.
//
// The strips are made in a document of the plug-in, which lives as long as the preprocessor. Only
// elements are made here: what is inside is processed afterwards, so that it may hold directives
// and computed attributes.
class strips_t : public ko::xpp::plugin_t {
public:
    element_t* generate(element_t* directive) override {
        element_t* const strips = document.element_create("strips", "");
        std::string names = directive->attribute_get_value("names", "");
        for (int number = 1; !names.empty(); ++number) {
            const std::string name = ko::str::get_clump(names, ",");
            strips->append(strip_make(number, name, *directive));
        }
        return strips;
    }

private:
    element_t* strip_make(int number, const std::string& name, const element_t& directive) {
        element_t* const strip = document.element_create("strip", "");
        strip->attribute_set("number", std::to_string(number));
        strip->attribute_set("name", name);
        for (const element_t* child : directive.children) {
            strip->append(child->clone(document, true));
        }
        return strip;
    }

    ko::lxml::document_t document;
};

int run(const std::string& file) {
    try {
        ko::lxml::document_t source;
        source.root = source.load_raw(file);
        ko::lxml::document_t output;
        ko::xpp::preprocessor_t preprocessor(output, nullptr);
        preprocessor.register_plugin("strips", new strips_t); // owned from here on
        output.root = preprocessor.process(source.root, ko::xpp::preprocessor_t::process_include);
        for (const element_t* strip : output.root->children) {
            strip->print(std::cout, 0, 0, true, true);
        }
        return 0;
    } catch (const ko::exception_t& e) {
        std::cerr << "channel_strip: " << e.what() << '\n';
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: channel_strip DESK.xml\n";
        return 2;
    }
    return run(argv[1]);
}

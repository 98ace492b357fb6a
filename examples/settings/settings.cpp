// Changes one setting of a file, safely: settings FILE.xml NAME VALUE
//
// The file is read with limits, checked, changed and replaced in one step: after a failure, a
// kill or a power cut there is the old file or the new one.
#include <iostream>
#include <string>

#include "exception/exception.h"
#include "lxml/lxml.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;

// Settings are small and flat; what is not is none of ours.
void settings_load(document_t& settings, const std::string& file) {
    ko::lxml::load_options_t options;
    options.forbid_doctype = true;
    options.depth_max = 2;
    options.elements_max = 1000;
    settings.load(file, options);
}

element_t& setting_find(document_t& settings, const std::string& name) {
    for (element_t* setting : settings.root->children_named("setting")) {
        if (setting->attribute_get_value("name", "") == name) {
            return *setting;
        }
    }
    throw ko::exception_t("no such setting: " + name);
}

int run(const std::string& file, const std::string& name, const std::string& value) {
    try {
        document_t settings;
        settings_load(settings, file);
        element_t& setting = setting_find(settings, name);
        const std::string before = setting.attribute_get_value("value", "");
        setting.attribute_set("value", value);
        ko::lxml::write_options_t options;
        options.indent = 2;
        settings.save_atomically(file, options);
        std::cout << name << ": " << before << " -> " << value << '\n';
        return 0;
    } catch (const ko::exception_t& e) {
        std::cerr << "settings: " << e.what() << '\n';
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: settings FILE.xml NAME VALUE\n";
        return 2;
    }
    return run(argv[1], argv[2], argv[3]);
}

// Lists the channels of finished configurations: wiring FILE.xml...
#include <iostream>
#include <list>
#include <string>

#include "kobase.h"

namespace {

void list(const std::string& file) {
    ko::lxml::document_t rack;
    rack.root = rack.load_raw(file);
    std::cout << rack.root->attribute_get_value("hall", "?") << '\n';
    std::list<ko::lxml::node_t*> channels;
    rack.root->select_nodes("amplifier/channel", channels);
    for (ko::lxml::node_t* node : channels) {
        const ko::lxml::element_t* channel = node->as_element();
        std::cout << "  " << channel->attribute_get_value("id", "?") << ": "
                  << channel->attribute_get_value("gain", "?") << " dB\n";
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        for (int i = 1; i < argc; ++i) {
            list(argv[i]);
        }
        return 0;
    } catch (const ko::exception_t& e) {
        std::cerr << "wiring: " << e.what() << '\n';
        return 1;
    }
}

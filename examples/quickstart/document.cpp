#include <iostream>
#include <list>

#include "exception/exception.h"
#include "lxml/lxml.h"

int main() {
    try {
        ko::lxml::document_t document;
        document.load_from_string("<rack><amp id='1' gain='-3'/><amp id='2' gain='0'/></rack>");

        std::list<ko::lxml::node_t*> amps;
        document.root->select_nodes("amp", amps);
        for (ko::lxml::node_t* amp : amps) {
            std::cout << amp->as_element()->attribute_get_value("gain", "?") << " dB\n";
        }
        ko::lxml::element_find(document, "amp[@id=\"2\"]", true)->attribute_set("mute", "yes");
        document.save("rack.xml", true, true);
    } catch (const ko::exception_t& e) {
        std::cout << "error: " << e.what() << '\n';
    }
}

// Counts the elements of documents by their names, without making a tree: sax_counter FILE.xml...
//
// Memory depends on the number of names alone, so that files larger than memory can be read.
#include <exception>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>

#include "expat_parser/expat_parser.h"

namespace {

class counter_t : public ko::xml::expat_parser_t {
public:
    // Names are as written, with their prefixes.
    counter_t() : expat_parser_t(false) {}

    void start_element(const std::string& name, const attribute_map_t& attributes) override {
        ++elements[name];
        attribute_count += attributes.size();
    }

    void character_data(const std::string& text) override { bytes += text.size(); }

    void print() const {
        for (const auto& element : elements) {
            std::cout << std::setw(6) << element.second << "  " << element.first << '\n';
        }
        std::cout << attribute_count << " attributes, " << bytes << " bytes of text\n";
    }

private:
    std::map<std::string, unsigned long> elements;
    unsigned long attribute_count = 0;
    unsigned long bytes = 0;
};

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        try {
            counter_t counter; // reads one document
            counter.parse(argv[i]);
            counter.print();
        } catch (const std::exception& e) {
            std::cerr << "sax_counter: " << argv[i] << ": " << e.what() << '\n';
            return 1;
        }
    }
}

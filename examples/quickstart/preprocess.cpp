#include <iostream>

#include "exception/exception.h"
#include "xml_preprocessor/xml_preprocessor.h"

int main() {
    using namespace ko;
    try {
        lxml::document_t source;
        source.load_from_string("<rack xmlns:x='kobase.org/xmlns/xmlpreprocessor' xmlns:"
                                "e='kobase.org/xmlns/xmlpreprocessor/expressionevaluator'>"
                                "<x:repeat index='n' first='1' last='amps'>"
                                "<amp e:id='n' e:gain='0.5 - n'/></x:repeat></rack>");
        lxml::document_t output;
        xpp::preprocessor_t preprocessor(output, nullptr);
        preprocessor.insert_argument("amps", 2);
        output.root = preprocessor.process(source.root, xpp::preprocessor_t::process_include);
        output.root->print(std::cout, 0, 0, true, true);
    } catch (const exception_t& e) {
        std::cout << "error: " << e.what() << '\n';
    }
}

// A host program over the installed library: something of each module, one line each.
#include <iostream>
#include <list>
#include <string>

#include "kobase.h"

namespace {

const char* const source = "<rack xmlns:x='kobase.org/xmlns/xmlpreprocessor' "
                           "xmlns:e='kobase.org/xmlns/xmlpreprocessor/expressionevaluator'>"
                           "<x:repeat index='n' first='1' last='amps'>"
                           "<amp e:id='n' e:gain='0.5 - n'/></x:repeat></rack>";

void evaluate() {
    ko::alg::algebra_t algebra;
    algebra.assign("channels", 8);
    std::cout << algebra.evaluate("channels * 2 + 1") << '\n';
}

void preprocess() {
    ko::lxml::document_t input;
    input.load_from_string(source);
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor(output, nullptr);
    preprocessor.insert_argument("amps", 2);
    output.root = preprocessor.process(input.root, ko::xpp::preprocessor_t::process_include);

    std::list<ko::lxml::node_t*> gains;
    output.root->select_nodes("amp/@gain", gains);
    for (ko::lxml::node_t* gain : gains) {
        std::cout << "gain " << gain->as_attribute()->value << '\n';
    }
}

void tokenize() {
    ko::tokenizer_t tokens;
    std::cout << tokens.tokenize("a \"b c\" d", " ") << " tokens\n";
    std::cout << ko::str::to_upper(tokens[1]) << '\n';
}

void read_arguments(int argc, char** argv) {
    ko::util::cmd_arg_parser_t arguments(argc, argv);
    int number = 0;
    if (arguments.find("-n") && arguments.next(number)) {
        std::cout << "-n " << number << '\n';
    }
}

void fail() {
    ko::lxml::document_t document;
    try {
        document.load_from_string("<a>");
    } catch (const ko::errorcode_t& e) {
        std::cout << "code " << std::hex << e.code_get() << std::dec << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    std::cout << (std::string(KO_VERSION_STRING) == ko::version() ? "same version" : "mixed")
              << '\n';
    try {
        evaluate();
        preprocess();
        tokenize();
        read_arguments(argc, argv);
        fail();
    } catch (const ko::exception_t& e) {
        std::cout << "error: " << e.what() << '\n';
        return 1;
    }
    return 0;
}

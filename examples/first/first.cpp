// Reads a room from a file and works out the amplifier that it needs.
#include <exception>
#include <iostream>

#include "kobase.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: first FILE.xml\n";
        return 2;
    }
    try {
        ko::lxml::document_t room;
        room.root = room.load_raw(argv[1]);

        ko::alg::algebra_t algebra;
        algebra.assign("area", std::stoi(room.root->attribute_get_value("area", "0")));
        algebra.macro_define("watts(area)", "area < 50 ? 100 : area * 3");
        std::cout << "amplifier: " << algebra.evaluate("watts(area)").int_get() << " W\n";
    } catch (const std::exception& e) {
        std::cerr << "first: " << e.what() << '\n';
        return 1;
    }
}

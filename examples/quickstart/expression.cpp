#include <iostream>

#include "algebra/algebra.h"
#include "exception/exception.h"

int main() {
    try {
        ko::alg::algebra_t algebra;
        algebra.assign("channels", 8);
        algebra.macro_define("HEADROOM", "3.5");
        algebra.macro_define("gain(level)", "level > 0 ? 0 - level - HEADROOM : 0");

        std::cout << algebra.evaluate("channels * 2 + 1") << '\n';
        std::cout << algebra.evaluate("gain(12)") << '\n';
        std::cout << algebra.evaluate("\"zone \" + channels") << '\n';
        std::cout << algebra.evaluate("channels +") << '\n';
    } catch (const ko::exception_t& e) {
        std::cout << "error: " << e.what() << '\n';
    }
}

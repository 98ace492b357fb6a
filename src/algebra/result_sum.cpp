#include "algebra/result_sum.h"

#include <new>
#include <string>

namespace ko::alg {

void add_to(result_t& sum, const result_t& value) {
    const bool is_text =
        sum.is_string() && (value.is_int() || value.is_float() || value.is_string());
    if (is_text) {
        const std::string text = value.string_get(false, 0);
        if (text.size() > sum.string_value.max_size() - sum.string_value.size()) {
            throw std::bad_alloc(); // on a 32-bit system, before memory runs out
        }
        sum.int_value = 0;
        sum.float_value = 0;
        sum.string_value += text;
    } else {
        sum = sum + value;
    }
}

} // namespace ko::alg

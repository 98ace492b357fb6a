#include "algebra/result_sum.h"

namespace ko::alg {

void add_to(result_t& sum, const result_t& value) {
    const bool is_text =
        sum.is_string() && (value.is_int() || value.is_float() || value.is_string());
    if (is_text) {
        sum.int_value = 0;
        sum.float_value = 0;
        sum.string_value += value.string_get(false, 0);
    } else {
        sum = sum + value;
    }
}

} // namespace ko::alg

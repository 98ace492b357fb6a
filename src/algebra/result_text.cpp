#include "algebra/result_text.h"

#include <charconv>

namespace ko::alg {

namespace {

/// Number of significant digits of a float whose text is asked for without a precision.
constexpr int general_precision = 6;

} // namespace

result_text_t::result_text_t(const result_t& value) {
    char* const end = number + sizeof number;
    switch (result_members_t::type(value)) {
    case result_t::type_int:
        text = {number,
                static_cast<std::size_t>(
                    std::to_chars(number, end, result_members_t::integer(value)).ptr - number)};
        break;
    case result_t::type_float: {
        const double wide = static_cast<double>(result_members_t::real(value));
        const std::to_chars_result written =
            std::to_chars(number, end, wide, std::chars_format::general, general_precision);
        text = {number, static_cast<std::size_t>(written.ptr - number)};
        break;
    }
    case result_t::type_string:
        text = result_members_t::text(value);
        break;
    default:
        break; // a code that a host made up has no text
    }
}

} // namespace ko::alg

#include "report_scope.h"

namespace tool {

report_filter_t::int_type report_filter_t::overflow(int_type c) {
    if (c == traits_type::eof()) {
        return traits_type::not_eof(c);
    }
    line += traits_type::to_char_type(c);
    if (line.back() == '\n') {
        if (line.rfind("Caught exception in ", 0) != 0) {
            out << line;
        }
        line.clear();
    }
    return c;
}

} // namespace tool

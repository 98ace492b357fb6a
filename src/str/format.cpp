#include "exception/format.h"

#include <cstdarg>
#include <ostream>
#include <type_traits>

#include "str/str.h"

std::ostream& sprintf(std::ostream& out, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = ko::format_bounded(format, arguments);
    va_end(arguments);
    return out << text;
}

std::string& sprintf(std::string& out, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = ko::format_bounded(format, arguments);
    va_end(arguments);
    // Swapped in at the end: an argument may point into the old content.
    out.swap(text);
    return out;
}

namespace ko {

string_t::string_t(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    assign(format_bounded(format, arguments));
    va_end(arguments);
}

namespace str {

namespace {

/// Where `va_list` is a pointer, a call whose only argument is a literal 0 passes a null
/// `va_list`, though the caller means the number.
template <class A> bool is_literal_zero(const A& arguments) {
    if constexpr (std::is_pointer_v<A>) {
        return arguments == nullptr;
    } else {
        return false;
    }
}

} // namespace

// The two call each other at most once. NOLINTBEGIN(misc-no-recursion)
std::string safe_sprintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = safe_sprintf(format, arguments);
    va_end(arguments);
    return text;
}

std::string safe_sprintf(const char* format, va_list arguments) {
    if (is_literal_zero(arguments)) {
        return safe_sprintf(format, 0L, 0L);
    }
    char buffer[format_buffer_size] = {};
    va_list first_pass;
    va_copy(first_pass, arguments);
    const int reported = format_c_locale(buffer, sizeof buffer, format, first_pass);
    va_end(first_pass);
    if (reported < 0) {
        return buffer;
    }
    const std::size_t length = static_cast<std::size_t>(reported);
    if (length < sizeof buffer) {
        return std::string(buffer, length);
    }
    std::string text(length, '\0');
    // The limit is the length itself: a zero byte takes the place of the last character; callers
    // rely on it (quirk "zero at the end").
    format_c_locale(text.data(), length, format, arguments);
    return text;
}
// NOLINTEND(misc-no-recursion)

} // namespace str
} // namespace ko

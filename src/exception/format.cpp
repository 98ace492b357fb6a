#include "exception/format.h"

#include <clocale>
#include <cstdio>
#include <locale.h>

namespace ko {

namespace {

/// Puts the calling thread into the "C" locale for as long as the object lives.
class c_locale_scope_t {
public:
    c_locale_scope_t()
        : c_locale(newlocale(LC_ALL_MASK, "C", nullptr)), previous(uselocale(c_locale)) {}
    c_locale_scope_t(const c_locale_scope_t&) = delete;
    c_locale_scope_t& operator=(const c_locale_scope_t&) = delete;
    ~c_locale_scope_t() {
        uselocale(previous);
        freelocale(c_locale);
    }

private:
    locale_t c_locale;
    locale_t previous;
};

} // namespace

int format_c_locale(char* buffer, std::size_t limit, const char* format, va_list arguments) {
    if (format == nullptr) {
        format = "(null)";
    }
    const c_locale_scope_t scope;
    return std::vsnprintf(buffer, limit, format, arguments);
}

std::string format_bounded(const char* format, va_list arguments) {
    char buffer[format_buffer_size] = {};
    // The limit is one less than the buffer; callers rely on it (quirk "510 characters").
    if (format_c_locale(buffer, format_buffer_size - 1, format, arguments) < 0) {
        buffer[format_buffer_size - 1] = '\0';
    }
    return buffer;
}

} // namespace ko

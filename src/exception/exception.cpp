#include "exception/exception.h"

#include <cstdarg>

#include "exception/format.h"

namespace ko {

exception_t::exception_t(const std::string& text) : message(text) {}

exception_t::exception_t(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    message = format_bounded(format, arguments);
    va_end(arguments);
}

exception_t::exception_t(const exception_t& other) = default;
exception_t& exception_t::operator=(const exception_t& other) = default;
exception_t::~exception_t() = default;

const char* exception_t::what() const noexcept {
    return message.c_str();
}

} // namespace ko

/// @file
/// Bounded formatting in the "C" locale, shared by the exceptions and the string utilities.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace ko {

/// Size of the buffer that a bounded text is formatted into.
constexpr std::size_t format_buffer_size = 512;

/// `vsnprintf` in the "C" locale, whatever locale the host has set. A null format gives
/// "(null)".
int format_c_locale(char* buffer, std::size_t limit, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

/// The formatted text, cut after 510 characters and at an embedded zero byte.
std::string format_bounded(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

} // namespace ko

#include <algorithm>

#include "exception/exception.h"
#include "str/str.h"

namespace ko::str {

namespace {

/// The value of a hexadecimal digit. What is no digit has a value too, up to 24; callers rely on
/// it (quirk "any digit").
unsigned digit_value(char c) {
    const unsigned code = static_cast<unsigned char>(c);
    const unsigned low_bits = code & 0x0FU;
    return code < 64 ? low_bits : low_bits + 9;
}

} // namespace

std::string bin2ascii(void* data, unsigned int size) {
    if (data == nullptr && size != 0) {
        throw exception_t("ko::str::bin2ascii() -- data is null");
    }
    constexpr char digits[] = "0123456789ABCDEF";
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    std::string text;
    text.reserve(std::size_t{size} * 2);
    for (unsigned int i = 0; i < size; ++i) {
        text.push_back(digits[bytes[i] >> 4]);
        text.push_back(digits[bytes[i] & 0x0F]);
    }
    return text;
}

void ascii2bin(std::string& hex, void* data, unsigned int size) {
    const std::size_t count = std::min<std::size_t>(hex.size() / 2, size);
    if (data == nullptr && count != 0) {
        throw exception_t("ko::str::ascii2bin() -- data is null");
    }
    unsigned char* bytes = static_cast<unsigned char*>(data);
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned value = digit_value(hex[2 * i]) << 4 | digit_value(hex[2 * i + 1]);
        bytes[i] = static_cast<unsigned char>(value & 0xFFU);
    }
}

} // namespace ko::str

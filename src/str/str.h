/// @file
/// String utilities: formatting, white space, removal, replacement, search, hexadecimal text.
///
/// Everything here works on bytes in the "C" locale, whatever locale the host has set: letters,
/// digits and white space are the ASCII ones, and a decimal point is a point. A format that
/// cannot be carried out (a wide character that the "C" locale lacks) gives the text up to that
/// place, and never more than 511 characters of it; a null format gives "(null)".
///
/// @code
/// std::cout << str::safe_sprintf("%05.1f dB", -3.5) << '\n'; // -03.5 dB
/// @endcode
#pragma once

#include <cstdarg>
#include <iosfwd>
#include <string>

#include "export.h"

/// @name Formatting
/// @{

/// Formats as `printf` does and writes the text to `out`, cut after 510 characters and at an
/// embedded zero byte.
/// @return `out`
KO_API std::ostream& sprintf(std::ostream& out, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

/// Formats as `printf` does and replaces `out` by the text, cut after 510 characters and at
/// an embedded zero byte. An argument may point into `out`.
/// @return `out`
KO_API std::string& sprintf(std::string& out, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

/// @}

namespace ko {

/// A `std::string` whose first content is a formatted text.
///
/// @par Owns
/// Its text.
/// @par Threads
/// Used by one thread at a time.
class KO_API string_t : public std::string {
public:
    /// Formats as `printf` does, cut after 510 characters and at an embedded zero byte.
    explicit string_t(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

namespace str {

/// @name Formatting
/// @{

/// Formats as `printf` does, without a limit on the length.
///
/// A text of 512 characters or more keeps its length, but its last character is a zero byte;
/// callers rely on it (quirk "zero at the end").
KO_API std::string safe_sprintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
/// The same with the arguments of a function that has "..." itself.
KO_API std::string safe_sprintf(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

/// @}
/// @name Case and white space
/// @{

/// A copy with each letter a-z in upper case.
KO_API std::string to_upper(const std::string& text);
/// A copy with each letter A-Z in lower case.
KO_API std::string to_lower(const std::string& text);

/// True when every character is white space, so for the empty string too.
KO_API bool all_whitespace(const std::string& text);
/// Removes white space from the end.
KO_API void strip_trailing_whitespace(std::string& text);
/// Removes white space from the start.
KO_API void strip_leading_whitespace(std::string& text);
/// The first character that is not white space, or 0 when there is none.
KO_API char first_nonwhite(const std::string& text);

/// @}
/// @name Removal and replacement
/// @{

/// Removes every occurrence of the character `c`.
KO_API void strip(std::string& text, char c);
/// Removes every character that occurs in `set`.
KO_API void strip_all(std::string& text, const std::string& set);
/// Removes every occurrence of `part`, those that a removal creates included.
/// An empty `part` changes nothing.
KO_API void strip(std::string& text, const std::string& part);
/// Cuts `text` before the first occurrence of `part`; without one, and for an empty `part`,
/// nothing changes.
KO_API void strip_after(std::string& text, std::string part);
/// Removes everything up to and including the last character that occurs in `set`.
KO_API void keep_after_last(std::string& text, const std::string& set);
/// Replaces every `from` by `to`.
KO_API void replace(std::string& text, char from, char to);
/// Replaces every occurrence of `from` by `to`; inserted text is not searched again.
/// An empty `from` changes nothing.
KO_API void replace(std::string& text, const std::string& from, const std::string& to);

/// @}
/// @name Searching and splitting
/// @{

/// True when `text` begins with `prefix`.
KO_API bool starts_with(const std::string& text, const std::string& prefix);
/// True when `text` ends with `suffix`.
KO_API bool ends_with(const std::string& text, const std::string& suffix);

/// Finds `word` where no character of `delims` stands directly before or after it.
///
/// The search goes on after an occurrence that fails the test.
/// @return the position of the first such occurrence; -1 when there is none or `word` is empty
KO_API int find_delimited_not(const std::string& text, const std::string& word,
                              const std::string& delims);

/// Takes the first run of non-blanks from `text`, with the blanks before it.
///
/// The blank that ends the run stays. Only the space character is a blank here.
/// @return the run; empty, with `text` emptied, when there is none
KO_API std::string get_clump(std::string& text);
/// Takes the first run of characters outside `delims` from `text`, with the separators before and
/// after it.
/// @return the run; empty, with `text` emptied, when there is none
KO_API std::string get_clump(std::string& text, std::string delims);

/// Copies into `line` the characters from `pos` up to the next line break or the end.
///
/// A line break is a carriage return, a line feed, or the pair of them in this order. A `pos`
/// behind the end gives an empty line.
/// @return the position after the line break, which may be the length of `text`; -1 when the line
///         ended without one, at the end of `text`
KO_API int get_line(const std::string& text, unsigned int pos, std::string& line);

/// @}
/// @name Hexadecimal text
/// @{

/// Writes `size` bytes from `data` as two upper-case hexadecimal digits each, high nibble first.
/// @throws ko::exception_t when `data` is null and `size` is not 0
KO_API std::string bin2ascii(void* data, unsigned int size);
/// Reads pairs of hexadecimal digits into at most `size` bytes at `data`.
///
/// Nothing is validated: a character below 64 counts as its low four bits, any other as its low
/// four bits plus 9. A trailing odd character is ignored.
/// @throws ko::exception_t when `data` is null and there are bytes to write
KO_API void ascii2bin(std::string& hex, void* data, unsigned int size);

/// @}

} // namespace str
} // namespace ko

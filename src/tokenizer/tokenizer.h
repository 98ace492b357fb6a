/// @file
/// Cutting text into tokens: a line with quotes, a buffer in place, a file of lines.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "export.h"

namespace ko {

/// The tokens of a line; the object is the array of them.
///
/// @par Owns
/// Its tokens.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// A call that throws (allocation failure) leaves the tokens as they were.
///
/// @code
/// tokenizer_t words;
/// words.tokenize("set \"Town hall\" 3", " ");
/// std::cout << words[1] << '\n'; // Town hall
/// @endcode
class KO_API tokenizer_t : public std::vector<std::string> {
public:
    /// Replaces the tokens by those of `line`.
    ///
    /// Tokens are the runs of characters outside `delims`. A token that begins with a double
    /// quote runs to the next double quote, delimiters included, or to the end of the line; the
    /// quotes are no part of it, an empty pair gives no token, and there is no escape character.
    /// A quote within a token is an ordinary character. The scan stops at a zero byte.
    /// @return the number of tokens
    unsigned tokenize(const std::string& line, const std::string& delims);
};

/// Pointers to the pieces of a character buffer, in order.
///
/// @par Owns
/// The list, not the characters.
/// @par Lives
/// The buffer must outlive it.
/// @par Threads
/// Used by one thread at a time, together with the buffer.
class KO_API in_place_tokenizer_t : public std::list<const char*> {
public:
    /// Lists the zero-terminated strings of `block`, which an empty string ends: two
    /// zero bytes in a row, or one at the very start.
    /// @throws ko::exception_t when `block` is null
    explicit in_place_tokenizer_t(const char* block);

    /// Splits `text` in place: each `separator` becomes a zero byte.
    ///
    /// Empty pieces give no entry.
    /// @param text a zero-terminated buffer that is written to
    /// @param separator the character between the pieces
    /// @throws ko::exception_t when `text` is null
    in_place_tokenizer_t(char* text, char separator);
};

/// The non-empty lines of a text file.
///
/// No exception is thrown for a file that cannot be read or written; the results tell.
///
/// @par Owns
/// Its tokens, and the file during a call.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// The file is closed; a `load` that throws leaves the tokens as they were.
/// @warning `save` after a `load` that failed writes what is there, which may be nothing.
class KO_API file_tokenizer_t : public tokenizer_t {
public:
    /// Replaces the tokens by the non-empty lines of the file at `path` and remembers `path`.
    ///
    /// The quote rule of `tokenize` holds: a line that begins with a double quote runs to the
    /// next double quote, which may lie on a later line. A file that cannot be opened gives no
    /// tokens, neither does a folder.
    /// @return false when the file could not be opened, or not be read to its end; the tokens are
    ///         those of what was read
    /// @throws ko::exception_t when `path` is null
    bool load(const char* path);

    /// Writes every token and a line feed after it to the file at `path`, which is created or
    /// truncated. A file that cannot be opened is left alone. Tokens are not quoted: one with a
    /// line feed in it is loaded again as several.
    /// @return false when the file could not be opened, or not be written to its end
    /// @throws ko::exception_t when `path` is null
    bool save_as(const char* path);

    /// `save_as` to the path given to the last `load`; without one, nothing is written.
    /// @return as `save_as`
    bool save();

private:
    friend struct ko::layout_t;

    std::string file_name;
};

} // namespace ko

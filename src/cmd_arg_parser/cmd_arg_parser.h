/// @file
/// Access to the words of a command line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "export.h"

namespace ko::util {

/// The words of a command line: finds an option and reads the values after it.
///
/// A word that begins with "-" is never a value, so no negative number can be read.
///
/// @par Owns
/// Copies of the words.
/// @par Lives
/// The caller's array may go.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// A call that throws (allocation failure) may have consumed the word, and leaves the value as it
/// was.
///
/// @code
/// char words[3][8] = {"mixer", "-n", "24"};
/// char* argv[] = {words[0], words[1], words[2]};
/// util::cmd_arg_parser_t arguments(3, argv);
/// int channels = 8;
/// if (arguments.find("-n") && arguments.next(channels)) {
///     std::cout << channels << '\n'; // 24
/// }
/// @endcode
class KO_API cmd_arg_parser_t {
public:
    /// Reading begins with the word after the program name, until `find` says otherwise.
    /// @param argc number of words, the program name included; below 1 there are none
    /// @param argv the words; only `argc` of them are read
    /// @throws ko::exception_t when there are words and `argv` or one of them is null
    cmd_arg_parser_t(int argc, char** argv);

    /// Looks for the first word equal to `word` and, when found, makes the word after it the next
    /// to be read; otherwise nothing changes.
    /// @return whether it was found
    bool find(const std::string& word);

    /// Copies the next word into `value`, which stays as it was when there is none.
    /// @return false at the end and before a word that begins with "-", which stays unread
    bool next_str(std::string& value);

    /// @name Numbers
    /// Read the next word as a number, in the "C" locale: its longest valid prefix counts, and
    /// the word is consumed even when it holds none. Where there is no word to read, `value`
    /// stays as it was; a word without a number gives 0, an empty one leaves `value`.
    /// @return whether a number was read
    /// @{

    /// A decimal integer, or a hexadecimal one of up to 32 bits after "0x" or "0X".
    ///
    /// A decimal integer out of range gives the nearest `int` and false, a hexadecimal one
    /// 0xFFFFFFFF and true. A prefix without digits gives 0 and true.
    bool next(int& value);
    /// A decimal floating-point number. One out of range gives the largest float and false; an
    /// exponent letter without digits after it gives 0 and false.
    bool next(float& value);
    /// Read in single precision: `value` is rounded to it even when nothing is read. Callers rely
    /// on it (quirk "single doubles").
    bool next(double& value);
    /// The other integers are read as `int` and truncated to their type, those longer than 32
    /// bits to 32 bits.
    bool next(unsigned int& value);
    bool next(long& value);
    bool next(unsigned long& value);
    bool next(char& value); ///< a number, not a character
    bool next(unsigned char& value);
    bool next(short& value);
    bool next(unsigned short& value);
    /// @}

private:
    friend struct ko::layout_t;

    std::string program;
    int argc;
    std::vector<std::string> args;
    std::size_t cursor;
};

} // namespace ko::util

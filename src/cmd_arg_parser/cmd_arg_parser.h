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
/// It owns copies of the words. A word that begins with "-" is never a value, so no negative
/// number can be read. Used by one thread at a time.
class KO_API cmd_arg_parser_t {
public:
    /// @param argc number of words, the program name included
    /// @param argv the words; only `argc` of them are read
    cmd_arg_parser_t(int argc, char** argv);

    /// Looks for a word and, when found, makes the word after it the next to be read.
    /// @return whether it was found
    bool find(const std::string& word);

    /// Reads the next word.
    /// @return false at the end and before a word that begins with "-", which stays unread
    bool next_str(std::string& value);

    /// @name Numbers
    /// Read the next word as a number: its longest valid prefix counts, and the word is consumed
    /// even when there is none.
    /// @return whether a number was read
    /// @{

    /// A decimal integer, or a hexadecimal one after "0x" or "0X".
    bool next(int& value);
    /// A decimal floating-point number.
    bool next(float& value);
    /// Read in single precision, which callers rely on.
    bool next(double& value);
    /// The integers are read as `int` and truncated to their type.
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

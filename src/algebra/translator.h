/// @file
/// The way from a text to a program: statement reader, macros, lexer, parser, compiler. Lines
/// that need no tree go through `line_translate` instead of the last two.
///
/// The rooms that these need on the way are kept from one text to the next.
#pragma once

#include <string>

#include "algebra/compiler.h"
#include "algebra/macro_table.h"
#include "algebra/one_pass.h"
#include "algebra/parser.h"
#include "algebra/program.h"

namespace ko::alg {

/// Translates texts. Used by one thread.
class translator_t {
public:
    /// Reads the first statement of `text`.
    /// @param macros are replaced in it; null for none
    /// @return false when it is blank
    bool statement_get(const std::string& text, const macro_table_t* macros);

    /// Parses the statement and compiles what is first in it then, also after a failure and
    /// after a `ko::exception_t`. Any other exception leaves the program half done.
    /// @param program gets the code; its names may hold some already
    /// @return false with the message in `error`
    bool translate(const lexer_settings_t& settings, program_t& program, std::string& error);

    /// Parses the statement.
    /// @param target receives the tokens
    /// @return false with the message in `error`
    bool parse(const lexer_settings_t& settings, syntax_t& target, std::string& error);

    /// Compiles a tree.
    void compile(const syntax_t& tree, place_t root, bool as_list, program_t& program) {
        tree_compile(tree, root, as_list, compiler_room, program);
    }

    /// Where the token begins at which the last parse failed, in `text_get`; its size where there
    /// is none.
    std::size_t failure_offset_get() const { return failure_offset; }
    /// The text that was parsed last, without the blank that the lexer appends.
    std::string statement_text_get() const { return statement; }

private:
    void compile_first(program_t& program);
    void failure_note(const syntax_t& tree, place_t failed);

    std::string statement;
    syntax_t syntax;
    parser_room_t parser_room;
    compiler_room_t compiler_room;
    one_pass_room_t one_pass_room;
    std::size_t failure_offset = 0;
};

} // namespace ko::alg

/// @file
/// Statements of the expression language in a text or in lines of input.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// A statement without its comments, and the line on which it begins, from 1.
struct statement_t {
    std::string text;
    unsigned line;
};

/// Takes a text apart into statements, by the rules by which the evaluator finds the end of its
/// first one: a ";" ends it, unless it stands in quotes, in a comment or right behind a "/".
class statement_reader_t {
public:
    /// What the end of a line does to a statement, where it is not inside of a comment.
    enum class line_end_t {
        joins, ///< nothing, as for the evaluator
        ends   ///< ends it
    };

    explicit statement_reader_t(line_end_t rule) : line_end(rule) {}

    /// Adds a part of the text. @return the statements that it ends; blank ones are left out
    std::vector<statement_t> add(const std::string& part);
    /// Ends the text. @return the last statement, if it is not blank; an open comment or quote is
    ///         left in it, for the evaluator to complain of
    std::vector<statement_t> finish();

    /// Whether a comment is open.
    bool is_in_comment() const { return state >= state_t::comment; }

private:
    enum class state_t {
        plain,
        slash,        ///< behind a "/"
        quoted,       ///< in quotes
        line_comment, ///< in a comment "//"
        comment,      ///< in a comment "/*"
        star,         ///< there, behind a "*"
        behind_star   ///< there, behind a "*" and what is no "/": an evaluator skips that unseen
    };

    void step(char c, std::vector<statement_t>& out);
    void plain(char c, std::vector<statement_t>& out);
    void slash(char c, std::vector<statement_t>& out);
    void line_break(std::vector<statement_t>& out);
    void keep(char c);
    void end(std::vector<statement_t>& out);

    line_end_t line_end;
    state_t state = state_t::plain;
    char quote = 0;
    unsigned line = 1;
    unsigned comment_line = 0; ///< where the open comment begins
    statement_t current{"", 0};
};

} // namespace tool

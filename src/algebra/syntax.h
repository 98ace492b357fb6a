/// @file
/// The tokens of one line, and the trees that binding makes of them, without a node on the heap.
///
/// A token is an item of a vector. Binding links items to their operands by their places and
/// takes the operands out of the chain of tokens that are still side by side: `first` and `next`
/// lead through what is left, after a good parse the root alone.
///
/// What a token says lies in the text of the line; the syntax owns it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "algebra/builtins.h"
#include "algebra/function_table.h"
#include "algebra/grammar.h"

namespace ko::alg {

class token_t;

/// Place of an item.
using place_t = std::uint32_t;
constexpr place_t no_place = UINT32_MAX;

/// What an item is.
enum class item_e : unsigned char {
    integer,
    real,
    text, ///< a string literal
    name, ///< a variable
    call,
    operation,
    open, ///< a parenthesis or colon, never part of a tree
    close,
    colon,
    foreign ///< a token of the host's own class
};

/// The token of a line, and once it is bound the root of a tree.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): a union has one member at a time
struct item_t {
    item_e kind = item_e::open;
    operator_id_t operation = operators_end; ///< of an operation
    bool is_bound = false;                   ///< of an operation or call
    bool takes_nothing = false;              ///< of a call: binds without arguments
    int depth = 0;                           ///< of parentheses
    place_t text_begin = 0;                  ///< in the text; of operators, the spelling is
    place_t text_size = 0;                   ///< in the table, and this is where they stand
    union {
        int integer = 0;
        float real;
        std::uint32_t callee; ///< place in the callees
    };
    place_t operands[3] = {no_place, no_place, no_place};
    place_t next = no_place;
    place_t previous = no_place;
};

/// A function that a call names.
struct callee_t {
    std::shared_ptr<const host_record_t> host;
    const builtin_t* builtin = nullptr;
    /// Where a script function is looked up; null for those of the evaluator that runs.
    std::shared_ptr<script_table_t> scripts;
    const token_t* foreign = nullptr;

    bool is_script() const { return host == nullptr && builtin == nullptr; }
};

/// The items of one line. A plain record; the functions of lexer and parser fill it.
struct syntax_t {
    std::string text;
    std::vector<item_t> items;
    std::vector<callee_t> callees;
    place_t first = no_place; ///< the first token that is not an operand
    /// Where in the text the lexer has met what it cannot read.
    std::size_t unread = std::string::npos;

    void clear() {
        items.clear();
        callees.clear();
        first = no_place;
        unread = std::string::npos;
    }
    std::string_view text_of(const item_t& item) const {
        if (item.kind == item_e::operation) {
            return operator_get(item.operation).spelling;
        }
        return std::string_view(text).substr(item.text_begin, item.text_size);
    }
    /// True when an item still has to take its operands.
    static bool is_unbound(const item_t& item) {
        return !item.is_bound && (item.kind == item_e::operation || item.kind == item_e::call);
    }
    /// How strongly an item binds.
    static int strength_of(const item_t& item) {
        if (!is_unbound(item)) {
            return bound_strength;
        }
        return item.kind == item_e::call ? function_strength
                                         : operator_get(item.operation).strength;
    }
};

} // namespace ko::alg

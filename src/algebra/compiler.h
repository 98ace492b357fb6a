/// @file
/// The compiler: turns a tree into a program.
///
/// It walks over the tree with a stack of its own. An entry of that stack is a tree that is still
/// to be compiled, or an instruction that follows the trees above it: what comes first in the
/// program is pushed last.
#pragma once

#include <vector>

#include "algebra/code_writer.h"
#include "algebra/program.h"
#include "algebra/syntax.h"

namespace ko::alg {

/// Something that the compiler still has to do.
struct task_t {
    enum kind_e : unsigned char { value, list, emit, fork, jump, land };

    kind_e kind = value;
    place_t place = no_place;                    ///< of the tree
    instruction_t follow = {opcode_e::no_value}; ///< to emit
    std::size_t taken = 0;                       ///< slots that it takes
    std::size_t left = 0;                        ///< slots that it leaves
};

/// Memory for the compiler, which a caller may keep from one tree to the next.
struct compiler_room_t {
    std::vector<task_t> tasks;
    writer_room_t writer;
};

/// Compiles the tree at `root`.
/// @param as_list whether the values that commas separate are wanted one by one
void tree_compile(const syntax_t& syntax, place_t root, bool as_list, compiler_room_t& room,
                  program_t& program);

} // namespace ko::alg

/// @file
/// A program and what one evaluator has found out about its names.
///
/// The links of a unit hold good for the variables of one generation; a machine that meets
/// another one forgets them. Links of all kinds hold good within one family only, of which the
/// unit owns a part for as long as it has any. A unit that runs is pinned: whoever lets go of it
/// meanwhile leaves it to the last run to delete it.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "algebra/calculation.h"
#include "algebra/identity.h"
#include "algebra/program.h"
#include "algebra/variables.h"

namespace ko::alg {

struct unit_t;

/// A variable that a program names.
struct name_link_t {
    const cell_t* to_read = nullptr; ///< null until it has been looked up
    cell_t* to_write = nullptr;      ///< the same once no copy shares it
};

/// What a call of a script function compiles to depends on all of these.
struct environment_t {
    std::uint64_t hosts;
    std::uint64_t scripts;
    std::uint64_t macros;

    bool operator==(const environment_t& other) const {
        return hosts == other.hosts && scripts == other.scripts && macros == other.macros;
    }
    bool operator<(const environment_t& other) const {
        return hosts != other.hosts       ? hosts < other.hosts
               : scripts != other.scripts ? scripts < other.scripts
                                          : macros < other.macros;
    }
};

/// The environment of a state that has these tables.
template <class S> environment_t environment_of(const S& state) {
    return {state.functions.identity_get(), state.functions.scripts_identity_get(),
            state.macros.identity_get()};
}

/// A script function that a program calls.
struct call_link_t {
    /// Identity of the table that it was found in, or revision where the call has a table of its
    /// own, which may be of another family; 0 for none.
    std::uint64_t table = 0;
    const function_t* function = nullptr;
    std::uint64_t bodies = 0; ///< identity of the collection that holds the body; 0 for none
    environment_t environment = {0, 0, 0};
    unit_t* body = nullptr;
    /// The calculator's mark of a body that it has found good; 0 for none.
    std::uint64_t calculated_number = 0;
};

struct unit_t {
    unit_t() = default;
    unit_t(const unit_t&) = delete;
    unit_t& operator=(const unit_t&) = delete;
    ~unit_t();

    std::shared_ptr<program_t> program; ///< a constant once it is compiled
    family_ptr_t family;                ///< that the links belong to; null while there are none
    std::uint64_t generation = 0;       ///< of the variables that the links lead to
    std::vector<name_link_t> names;
    std::vector<call_link_t> calls;
    std::vector<std::uint32_t> parameters; ///< of a body: the places of their names
    unsigned pins = 0;
    bool is_dropped = false;
    bool is_shared = false; ///< whether another evaluator has, or had, the program
    unsigned rest = 1;      ///< number of runs that are left to the machine
    bool is_quick = false;  ///< whether the calculation is worth a try with floats alone
    std::unique_ptr<calculation_t> calculation; ///< once one has been asked for

    /// Becomes a unit whose program is still empty, and keeps what memory it can.
    void clear() {
        program->clear();
        generation = 0;
        calls.clear();
        family.reset();
        rest = 1;
        is_quick = false;
        calculation.reset();
    }
    /// Forgets links that are no longer good for an evaluator of this family and generation.
    void links_check(const family_ptr_t& of, std::uint64_t now) {
        if (generation != now || family != of) {
            links_forget(of, now);
        }
    }
    /// Forgets all links to variables, and those to functions of another family.
    void links_forget(const family_ptr_t& of, std::uint64_t now);
    void pin() { ++pins; }
    void unpin() {
        if (--pins == 0 && is_dropped) {
            delete this;
        }
    }
};

/// Lets go of a unit.
struct unit_drop_t {
    void operator()(unit_t* unit) const {
        if (unit->pins == 0) {
            delete unit;
        } else {
            unit->is_dropped = true;
        }
    }
};

/// Owns a unit, which lives on while it runs.
using unit_ptr_t = std::unique_ptr<unit_t, unit_drop_t>;

/// A unit with a program that is still empty.
unit_ptr_t unit_make();

/// A unit of its own, for another evaluator, with the program of `unit`, which may be null.
unit_ptr_t unit_share(unit_t* unit);

} // namespace ko::alg

/// @file
/// Interned strings.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "export.h"

namespace ko::lxml {

/// The library-wide empty string; as a namespace it means that there is none.
extern KO_API const std::string str_empty;

/// A table of strings that gives each an integer id, its atom.
///
/// Ids count from 0 in the order in which strings first came; 0 is the empty string.
///
/// @par Owns
/// Its texts.
/// @par Lives
/// Longer than the documents that share it. It only grows: ids, and the references it hands out,
/// stay valid as long as it lives.
/// @par Threads
/// Used by one thread at a time, together with the documents that share it.
/// @par After an exception
/// A call that throws (allocation failure) leaves the table as it was.
class KO_API atom_table_t {
public:
    /// A table that holds the empty string.
    atom_table_t();
    atom_table_t(const atom_table_t&) = delete;
    atom_table_t& operator=(const atom_table_t&) = delete;
    ~atom_table_t();

    /// The id of `text`, which is added when new.
    int get(const std::string& text);
    /// The id of `text`, or -1; never adds it.
    int find(const std::string& text) const;
    /// The text of an id, or the empty string for an unknown one.
    const std::string& text_get(int id) const;

private:
    friend struct ko::layout_t;

    int next_id;
    std::deque<std::string> by_id;
    /// Views of the texts in `by_id`. An ordered map, since names come from files: its cost
    /// cannot be driven up by names that were chosen to collide.
    std::map<std::string_view, int> by_name;
};

} // namespace ko::lxml

/// @file
/// The reader of paths: recursive descent over the rules that `lxpath/lxpath.h` lists, one
/// character ahead, recursive only where filters nest. The depth of filters is limited, and with
/// it the recursion of reading, matching and destroying a path, since all of them go down by the
/// filters.
#pragma once

#include "lxpath/flat_path.h"
#include "lxpath/lxpath.h"

namespace ko::lxml {

/// How deep filters may stand inside each other.
constexpr unsigned filter_depth_max = 200;

/// Appends the parts of a path to an array of steps. It borrows the text, as the steps do.
class path_parser_t {
public:
    /// @throws ko::exception_t "path is null"
    path_parser_t(const char* text, flat_path_t& out);

    /// Each gives the number of the step that it began with.
    std::size_t path();
    std::size_t step();
    std::size_t name_test();
    std::size_t filter();

    /// Requires that nothing follows.
    /// @throws ko::exception_t "parse error : expecting %c, got %c"
    void end() { assert_char(p, '\0'); }
    /// What follows the parts read so far.
    const char* position_get() const { return p; }

private:
    std::size_t add();
    bool take(char c);
    void read_filter(std::size_t number);

    const char* p;
    flat_path_t& steps;
    unsigned depth = 0; ///< filters that are open
};

/// A path as it would be written: reading the text gives the same path, where one can.
std::string path_text(const xpath_t& path);

} // namespace ko::lxml

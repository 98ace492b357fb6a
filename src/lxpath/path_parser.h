/// @file
/// The reader of paths: recursive descent over the rules that `lxpath/lxpath.h` lists, one
/// character ahead, recursive only where filters nest. The depth of filters is limited, and with
/// it the recursion of reading, matching and destroying a path, since all of them go down by the
/// filters.
#pragma once

#include "lxpath/lxpath.h"

namespace ko::lxml {

/// How deep filters may stand inside each other.
constexpr unsigned filter_depth_max = 200;

/// Reads parts of a path into matchers that the caller owns. It borrows the text. After an
/// exception the matcher holds what was read so far.
class path_parser_t {
public:
    /// @throws ko::exception_t "path is null"
    explicit path_parser_t(const char* text);

    void path(xpath_t& out);
    void step(xnode_t& out);
    void name_test(xname_t& out);
    void filter(xfilter_t& out);

    /// What follows the parts read so far.
    const char* position_get() const { return p; }

private:
    void filter_body(xfilter_t& out);

    const char* p;
    unsigned depth = 0; ///< filters that are open
};

/// A path as it would be written: reading the text gives the same path, where one can.
std::string path_text(const xpath_t& path);

} // namespace ko::lxml

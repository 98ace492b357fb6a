/// @file
/// Where in a configuration something happened.
#pragma once

#include <string>

namespace ko::xpp {

/// A place in a source or in an included file: a plain record.
///
/// A list of places is a trace: the innermost place first, then each "include", "insert",
/// "plugin" and loop around it.
struct place_t {
    std::string file;         ///< path that the document was loaded from; empty for none
    unsigned long line = 0;   ///< of the start tag, from 1; 0 where positions are not known
    unsigned long column = 0; ///< of the start tag, from 0, as `position_get` gives it
    /// Local name of the directive, or of the element whose attribute is computed.
    std::string directive;
    /// What tells this place from others of its kind. Where an expression is at fault, its
    /// attribute, as in `condition="n == 1 ||"`, as it is written and with nothing escaped. Else
    /// `file="..."` of an include, `name="..."` of an insert, a definition or a plug-in,
    /// `n = 3` of a loop; empty for others.
    std::string detail;
};

} // namespace ko::xpp
